#include "app/TerminalWindowController.h"

#include <utility>

namespace zolt {

TerminalWindowController::TerminalWindowController(std::unique_ptr<ContentView> rootView)
    : m_ownedRootView(std::move(rootView)), m_rootView(m_ownedRootView.get()) {}

TerminalWindowController::~TerminalWindowController() = default;

void TerminalWindowController::addTab() {
  m_terminals.push_back(std::make_unique<TerminalController>(std::nullopt));
}

}  // namespace zolt
