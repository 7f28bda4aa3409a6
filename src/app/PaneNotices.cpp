#include "app/PaneNotices.h"

#include <QCoreApplication>

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("PaneNotices", text);
}

QString durationText(vt::Milliseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  if (seconds < kMinute) return tr("%1 s").arg(seconds);
  if (seconds < kHour) return tr("%1 min %2 s").arg(seconds / kMinute).arg(seconds % kMinute);
  return tr("%1 h %2 min").arg(seconds / kHour).arg(seconds % kHour / kMinute);
}

}  // namespace

DesktopNotification noticeOf(const vt::EndedCommand& command, const QString& line) {
  const QString time = durationText(command.took);
  const bool isDone = command.exitStatus == 0;
  return {.title = isDone ? tr("Command finished after %1").arg(time)
                          : tr("Command failed with status %1 after %2").arg(command.exitStatus).arg(time),
          .body = line};
}

PaneNotices::PaneNotices(TerminalPane& pane, const EmulationSettingsStore& settings, DesktopNotifications& desktop)
    : QObject(&pane), m_pane(pane), m_settings(settings), m_desktop(desktop) {
  auto& surface = static_cast<EmulationSurface&>(pane.surface());
  connect(&surface, &EmulationSurface::notificationWanted, this,
          [this, &surface](const QString& title, const QString& body) {
            // One with a body only has the name of who sent it for a title.
            const QString name = surface.title().isEmpty() ? QStringLiteral("Zolt") : surface.title();
            show({.title = title.isEmpty() ? name : title, .body = body});
          });
  connect(&surface, &EmulationSurface::commandEnded, this, [this, &surface](const vt::EndedCommand& command) {
    if (command.took > longCommand) show(noticeOf(command, surface.lastCommand()));
  });
}

void PaneNotices::show(const DesktopNotification& notice) {
  // What was closed is in no window, or in one that is hidden.
  const QWidget& window = *m_pane.window();
  if (!window.isVisible() || window.isActiveWindow() || !m_settings.current().desktopNotifications) return;
  m_desktop.show(*this, notice, [this](const QString& token) { Q_EMIT clicked(token); });
}

}  // namespace zolt
