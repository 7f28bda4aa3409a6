#pragma once

#include <QFrame>
#include <QKeySequence>
#include <QString>
#include <optional>
#include <vector>

class QLabel;
class QListView;

namespace zolt {

class CommandListModel;
class TextField;

/// A command as the palette shows it.
struct PaletteCommand {
  QString title{};
  QString place{};     ///< where else it is: the title of its menu; may be empty
  QString shortcut{};  ///< as the user reads it; may be empty
  bool isEnabled = true;
  bool isOn = false;  ///< what it turns on and off
};

/// Lists commands over a window, narrows them down by what is typed, and says which one the user has chosen, or which
/// shortcut a command shall have. Goes when it loses the keyboard. Main thread.
class CommandPalette : public QFrame {
  Q_OBJECT

 public:
  /// A child of `over`, in the middle of its upper part. Deletes itself when it goes.
  CommandPalette(std::vector<PaletteCommand> commands, QWidget& over);

  const PaletteCommand& command(int index) const { return m_commands[static_cast<std::size_t>(index)]; }
  /// Shows other facts of a command, as of a shortcut that has changed.
  void setCommand(int index, const PaletteCommand& command);
  /// Says something about a shortcut below the list, until the next key.
  void tell(const QString& text);

  /// Waits for the keys of the current command's shortcut.
  void askForShortcut();
  bool asksForShortcut() const { return m_asked.has_value(); }

 Q_SIGNALS:
  /// The palette is gone from the screen, and the keyboard where it was before.
  void chosen(int command);
  /// The user has pressed these keys for the command; empty: it shall have none; nothing: its usual ones.
  void shortcutWanted(int command, std::optional<QKeySequence> keys);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void narrow();
  void place();
  void choose();
  void leave();
  void showHelp();
  int current() const;
  bool movesBy(const QKeyEvent& event);
  bool takesShortcut(const QKeyEvent& event);

  std::vector<PaletteCommand> m_commands;
  TextField* m_field;  // children
  CommandListModel* m_model;
  QListView* m_list;
  QLabel* m_help;
  std::optional<int> m_asked;  // the command whose shortcut is being entered
};

}  // namespace zolt
