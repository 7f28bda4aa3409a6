#include "app/LauncherProgress.h"

#include <QEvent>
#include <algorithm>
#include <optional>

namespace zolt {

namespace {

// None for what has no end that is known: a dock has nothing to show for it.
std::optional<double> partOf(const TabProgress& progress) {
  using Kind = TabProgress::Kind;
  if (progress.kind == Kind::None || progress.kind == Kind::Indeterminate) return std::nullopt;
  return progress.percent / 100.0;
}

}  // namespace

void LauncherProgress::follow(TerminalTabs& tabs) {
  std::erase_if(m_followed, [](const QPointer<TerminalTabs>& each) { return each.isNull(); });
  m_followed.emplace_back(&tabs);
  connect(&tabs, &TerminalTabs::progressChanged, this, &LauncherProgress::update);
  connect(&tabs, &TerminalTabs::arrangementChanged, this, &LauncherProgress::update);
  connect(&tabs, &QObject::destroyed, this, &LauncherProgress::update);
  tabs.installEventFilter(this);
  update();
}

// A window that was closed may be kept for a while.
bool LauncherProgress::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::Hide) update();
  return QObject::eventFilter(watched, event);
}

void LauncherProgress::update() {
  std::optional<double> least;
  for (const QPointer<TerminalTabs>& tabs : m_followed) {
    if (tabs.isNull() || !tabs->isVisible()) continue;
    for (const TabProgress& progress : tabs->progress()) {
      const std::optional<double> part = partOf(progress);
      if (part) least = std::min(least.value_or(1), *part);
    }
  }
  m_entry.setProgress(least);
}

}  // namespace zolt
