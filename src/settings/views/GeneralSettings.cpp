#include "settings/views/GeneralSettings.h"

#include <QSignalBlocker>

#include "controls/TextField.h"
#include "settings/Config.h"
#include "settings/views/ShellPicker.h"

namespace zolt {

namespace {

// Keeps a field and a stored text in sync, in both directions.
void bind(TextField& field, StoredString& stored) {
  const auto show = [&field, &stored] {
    const QString value = QString::fromStdString(stored.value());
    if (value == field.text()) return;
    const QSignalBlocker silent(field);
    field.setText(value);
  };
  show();
  QObject::connect(&stored, &StoredString::changed, &field, show);
  QObject::connect(&field, &QLineEdit::textChanged, &stored,
                   [&stored](const QString& text) { stored.setValue(text.toStdString()); });
}

}  // namespace

GeneralSettings::GeneralSettings(UserDefaults& defaults, ShellManager& shells, EmulationSettingsStore& emulation,
                                 QWidget* parent)
    : SettingsForm(emulation, parent),
      m_shells(shells),
      m_startupShell(defaults, kStartupShell.key, kStartupShell.absent),
      m_startupCommand(defaults, kStartupCommand.key, kStartupCommand.absent) {
  setObjectName(QStringLiteral("general"));
  GeneralSettings::build();
}

void GeneralSettings::build() {
  addSection(QStringLiteral("Shell"));
  auto* shell = new ShellPicker(m_startupShell, m_shells);
  shell->setObjectName(QLatin1String(kStartupShell.key));
  addEmulationRow(QStringLiteral("Default Shell"), shell);
  auto* command = new TextField;
  command->setObjectName(QLatin1String(kStartupCommand.key));
  const QString help = QStringLiteral("Command to run when terminal starts (optional)");
  bind(*command, m_startupCommand);
  addEmulationRow(QStringLiteral("Startup Command"), command, help);
  // The words of the field are fixed as long as nothing reads it.
  if (!isForFullEmulation()) command->setToolTip(help);

  addSection(QStringLiteral("Behavior"));
  addFixedSwitches({{.label = "Close window when shell exits",
                     .objectName = "closeWindowWhenShellExits",
                     .isOn = true,
                     .setting = &EmulationSettings::closeWindowWhenShellExits},
                    {.label = "Warn before closing",
                     .objectName = "warnBeforeClosing",
                     .isOn = true,
                     .setting = &EmulationSettings::warnBeforeClosing},
                    {.label = "Restore previous session",
                     .objectName = "restorePreviousSession",
                     .isOn = false,
                     .setting = &EmulationSettings::restorePreviousSession}});
}

}  // namespace zolt
