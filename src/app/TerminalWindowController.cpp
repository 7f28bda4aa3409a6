#include "app/TerminalWindowController.h"

#include <utility>

namespace zolt {

TerminalWindowController::TerminalWindowController(std::unique_ptr<ContentView> rootView, Environment environment)
    : m_ownedRootView(std::move(rootView)), m_rootView(m_ownedRootView.get()), m_environment(std::move(environment)) {}

TerminalWindowController::~TerminalWindowController() = default;

void TerminalWindowController::addTab() {
  if (m_rootView->area().addTab()) return;
  m_terminals.push_back(std::make_unique<TerminalController>(std::nullopt, TerminalController::Restart::AfterFailure,
                                                             TerminalSize{}, std::string{}, m_environment));
}

}  // namespace zolt
