#include "app/Commands.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "app/MenuItems.h"
#include "app/OwnShortcuts.h"
#include "view/CommandPalette.h"

namespace zolt {

namespace {

constexpr std::string_view kSelf = "showCommands";

QString withoutMnemonic(QString title) {
  return title.remove(QLatin1Char('&'));
}

PaletteCommand toCommand(const MenuItem& item, const MenuContext& context) {
  const QList<QKeySequence> shortcuts = shortcutsOf(item, context.defaults);
  return {.title = withoutMnemonic(QMenu::tr(item.title)),
          .place = QMenu::tr(item.menu),
          .shortcut = shortcuts.isEmpty() ? QString() : shortcuts.front().toString(QKeySequence::NativeText),
          .isEnabled = !isAction(item) || context.actions.isEnabled(item.name),
          .isOn = item.does == Does::Toggle && context.actions.isOn(item.name)};
}

/// Gives commands the shortcuts that the user enters in the palette. One that another command has is taken only when
/// it is pressed twice. A child of the palette.
class ShortcutEntry : public QObject {
 public:
  ShortcutEntry(CommandPalette& palette, std::vector<const MenuItem*> items, const MenuContext& context)
      : QObject(&palette), m_palette(palette), m_items(std::move(items)), m_context(context) {
    connect(&palette, &CommandPalette::shortcutWanted, this, &ShortcutEntry::enter);
  }

 private:
  void enter(int command, const std::optional<QKeySequence>& keys) {
    const MenuItem& item = *m_items[static_cast<std::size_t>(command)];
    if (keys && !keys->isEmpty() && !canBeShortcut(*keys)) {
      return m_palette.tell(CommandPalette::tr("“%1” types something. A shortcut has Ctrl, Alt or Super, or is a "
                                               "function key.")
                                .arg(keys->toString(QKeySequence::NativeText)));
    }
    for (const QKeySequence& each : keys ? QList{*keys} : item.shortcuts()) {
      const MenuItem* other = otherItemWith(each, item, m_context.defaults);
      if (other == nullptr) continue;
      if (m_contested != each) {
        m_contested = each;
        return m_palette.tell(
            CommandPalette::tr("“%1” is the shortcut of “%2”. Press it again to take it from there.")
                .arg(each.toString(QKeySequence::NativeText), withoutMnemonic(QMenu::tr(other->title))));
      }
      change(*other, QKeySequence());
    }
    m_contested.reset();
    change(item, keys);
    m_palette.tell(said(item));
  }

  void change(const MenuItem& item, const std::optional<QKeySequence>& keys) {
    setShortcut(item, keys, m_context.defaults);
    const auto at = std::ranges::find(m_items, &item);
    if (at == m_items.end()) return;
    const int command = static_cast<int>(at - m_items.begin());
    PaletteCommand changed = m_palette.command(command);
    changed.shortcut = toCommand(item, m_context).shortcut;
    m_palette.setCommand(command, changed);
  }

  QString said(const MenuItem& item) const {
    const PaletteCommand now = toCommand(item, m_context);
    return now.shortcut.isEmpty() ? CommandPalette::tr("“%1” has no shortcut.").arg(now.title)
                                  : CommandPalette::tr("The shortcut of “%1” is %2.").arg(now.title, now.shortcut);
  }

  CommandPalette& m_palette;
  std::vector<const MenuItem*> m_items;
  const MenuContext& m_context;
  std::optional<QKeySequence> m_contested;
};

}  // namespace

void showCommands(TerminalWindow& window, const MenuContext& context) {
  std::vector<const MenuItem*> items;
  std::vector<PaletteCommand> commands;
  for (const MenuItem& item : menuItems()) {
    if (item.does == Does::Separate || item.name == kSelf || !isIn(item, Display::FullEmulation)) continue;
    items.push_back(&item);
    commands.push_back(toCommand(item, context));
  }
  auto* palette = new CommandPalette(std::move(commands), window.contentViewController().rootView());
  new ShortcutEntry(*palette, items, context);
  QObject::connect(palette, &CommandPalette::chosen, &window, [items, &window, &context](int command) {
    perform(*items[static_cast<std::size_t>(command)], window, context);
  });
}

}  // namespace zolt
