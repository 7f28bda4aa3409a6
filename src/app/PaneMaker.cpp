#include "app/PaneMaker.h"

#include <QCoreApplication>
#include <utility>

#include "app/NewShell.h"
#include "app/PaneLife.h"
#include "platform/CacheFolder.h"
#include "session/ShellIntegration.h"
#include "session/ShellManager.h"
#include "view/EmulationSurface.h"

namespace zolt {

PaneMaker::PaneMaker(EmulationSettingsStore& settings, Environment environment)
    : m_settings(settings), m_environment(std::move(environment)) {}

TerminalSize PaneMaker::sizeIn(QSize area, double scale) const {
  return TextCanvas::gridSizeFor(area, scale, emulationFont(m_settings.current()));
}

std::unique_ptr<TerminalPane> PaneMaker::make(const Wanted& wanted) {
  const EmulationSettings settings = m_settings.current();
  const NewShell chosen =
      wanted.shell ? NewShell{.shell = *wanted.shell} : newShell(settings.startupShell, ShellManager::shared());
  Shell shell = chosen.shell;
  Environment environment = m_environment;
  if (settings.shellIntegration && !wanted.isForProgram) {
    ShellStart start = integratedStart(shell, environment, installShellIntegration(cacheFolder()));
    shell.args = std::move(start.args);
    environment = std::move(start.environment);
  }
  auto terminal = std::make_unique<TerminalController>(shell, TerminalController::Restart::Never, wanted.size,
                                                       wanted.folder, environment);
  auto pane = std::make_unique<TerminalPane>(
      std::move(terminal), [&](TerminalController& controller, QWidget* parent) -> std::unique_ptr<TerminalSurface> {
        return std::make_unique<EmulationSurface>(controller, wanted.size, m_settings, parent);
      });
  if (chosen.isRefused) {
    static_cast<EmulationSurface&>(pane->surface())
        .addFirstNotice(
            QCoreApplication::translate("PaneMaker",
                                        "“%1” is not a program that can be run. This is %2, the default shell.")
                .arg(QString::fromStdString(settings.startupShell), QString::fromStdString(chosen.shell.name)));
  }
  if (!wanted.isForProgram) (new PaneLife(*pane, m_settings))->typeFirst(settings.startupCommand);
  return pane;
}

}  // namespace zolt
