#include "settings/views/KeybindingsSettings.h"

#include <QVBoxLayout>
#include <array>

#include "settings/views/KeybindingRow.h"

namespace zolt {

namespace {

constexpr int kBetweenRows = 8;

struct Mapping {
  const char* action;
  const char16_t* shortcut;
};
constexpr std::array<Mapping, 8> kMappings{{{"Copy", u"\u2318\u21E7C"},
                                            {"Paste", u"\u2318\u21E7V"},
                                            {"Clear Screen", u"\u2318K"},
                                            {"New Tab", u"\u2318T"},
                                            {"New Window", u"\u2318N"},
                                            {"Close Tab", u"\u2318W"},
                                            {"Find", u"\u2318F"},
                                            {"Preferences", u"\u2318,"}}};

constexpr const char* kOptionExplanation =
    "With a letter, Option (Alt on other keyboards than a Mac's) sends ESC and the letter. If this is off, a Mac types "
    "the layout's other character, and other systems send the letter alone";

}  // namespace

KeybindingsSettings::KeybindingsSettings(EmulationSettingsStore& emulation, QWidget* parent)
    : SettingsForm(emulation, parent) {
  setObjectName(QStringLiteral("keys"));
  KeybindingsSettings::build();
}

void KeybindingsSettings::build() {
  addSection(QStringLiteral("Key Mappings"));
  auto* table = new QWidget;
  auto* rows = new QVBoxLayout(table);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(kBetweenRows);
  for (const Mapping& each : kMappings) {
    rows->addWidget(new KeybindingRow(QLatin1String(each.action), QString::fromUtf16(each.shortcut)));
  }
  addWideRow(table);

  addSection(QStringLiteral("Modifiers"));
  addFixedSwitches({{.label = "Option sends Meta",
                     .objectName = "optionSendsMeta",
                     .isOn = false,
                     .setting = &EmulationSettings::optionSendsMeta,
                     .explanation = kOptionExplanation},
                    {.label = "Command acts as Meta",
                     .objectName = "commandActsAsMeta",
                     .isOn = false,
                     .setting = &EmulationSettings::commandActsAsMeta}});
}

}  // namespace zolt
