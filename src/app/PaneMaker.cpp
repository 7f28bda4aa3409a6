#include "app/PaneMaker.h"

#include <QCoreApplication>
#include <utility>

#include "app/MessageIdentity.h"
#include "app/NewShell.h"
#include "app/PaneLife.h"
#include "app/PaneNotices.h"
#include "platform/CacheFolder.h"
#include "session/ShellIntegration.h"
#include "session/ShellManager.h"
#include "view/EmulationSurface.h"

namespace zolt {

PaneMaker::PaneMaker(EmulationSettingsStore& settings, DesktopNotifications& desktop, Environment environment)
    : m_settings(settings), m_desktop(desktop), m_environment(std::move(environment)) {}

TerminalSize PaneMaker::sizeIn(QSize area, double scale) const {
  return TextCanvas::gridSizeFor(area, scale, emulationFont(m_settings.current()));
}

std::unique_ptr<TerminalPane> PaneMaker::make(const Wanted& wanted) {
  const EmulationSettings settings = m_settings.current();
  const std::optional<Shell>& given = wanted.program ? wanted.program : wanted.shell;
  const NewShell chosen = given ? NewShell{.shell = *given} : newShell(settings.startupShell, ShellManager::shared());
  const bool isShell = !wanted.isForProgram && !wanted.program;
  Shell shell = chosen.shell;
  Environment environment = m_environment;
  const std::string id = MessageIdentity::newId();
  environment[kTerminalVariable] = id;
  if (settings.shellIntegration && isShell) {
    ShellStart start = integratedStart(shell, environment, installShellIntegration(cacheFolder()));
    shell.args = std::move(start.args);
    environment = std::move(start.environment);
  }
  auto terminal = std::make_unique<TerminalController>(shell, TerminalController::Restart::Never, wanted.size,
                                                       wanted.folder, environment);
  MessageIdentity::give(*terminal, id);
  auto pane = std::make_unique<TerminalPane>(
      std::move(terminal), [&](TerminalController& controller, QWidget* parent) -> std::unique_ptr<TerminalSurface> {
        return std::make_unique<EmulationSurface>(controller, wanted.size, m_settings, parent, wanted.earlier);
      });
  if (chosen.isRefused) {
    static_cast<EmulationSurface&>(pane->surface())
        .addFirstNotice(
            QCoreApplication::translate("PaneMaker",
                                        "“%1” is not a program that can be run. This is %2, the default shell.")
                .arg(QString::fromStdString(settings.startupShell), QString::fromStdString(chosen.shell.name)));
  }
  new PaneNotices(*pane, m_settings, m_desktop);
  if (wanted.isForProgram) return pane;
  auto* life = new PaneLife(*pane, m_settings);
  isShell ? life->typeFirst(settings.startupCommand) : life->setRunsProgram();
  return pane;
}

}  // namespace zolt
