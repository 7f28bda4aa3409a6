#include "view/CommandPalette.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "controls/ControlColors.h"
#include "controls/TextField.h"
#include "controls/ThinScrollBar.h"
#include "view/CommandMatch.h"

namespace zolt {

namespace {

constexpr int kWidth = 560;
constexpr int kMargin = 8;
constexpr int kRowPadding = 6;
constexpr int kMostRows = 12;
constexpr int kRadius = 8;

// What a row is, for the delegate.
enum Role { CommandRole = Qt::UserRole };

}  // namespace

/// The commands that match, the best first.
class CommandListModel : public QAbstractListModel {
 public:
  CommandListModel(const std::vector<PaletteCommand>& commands, QObject* parent)
      : QAbstractListModel(parent), m_commands(commands) {}

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
  }
  // A screen reader reads the text; the rest is painted from the command.
  QVariant data(const QModelIndex& index, int role) const override {
    const int number = m_rows[static_cast<std::size_t>(index.row())];
    if (role == CommandRole) return number;
    const PaletteCommand& command = m_commands[static_cast<std::size_t>(number)];
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
    return command.shortcut.isEmpty() ? command.title : command.title + QStringLiteral(", ") + command.shortcut;
  }
  Qt::ItemFlags flags(const QModelIndex&) const override { return Qt::ItemIsSelectable | Qt::ItemIsEnabled; }

  void show(std::vector<int> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
  }
  void changed(int row) { Q_EMIT dataChanged(index(row), index(row)); }

 private:
  const std::vector<PaletteCommand>& m_commands;
  std::vector<int> m_rows;
};

namespace {

/// Paints a command: its title and where else it is on the left, its shortcut on the right.
class CommandDelegate : public QStyledItemDelegate {
 public:
  CommandDelegate(const CommandPalette& palette, QObject* parent) : QStyledItemDelegate(parent), m_palette(palette) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {0, option.fontMetrics.height() + 2 * kRowPadding};
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const PaletteCommand& command = m_palette.command(index.data(CommandRole).toInt());
    const ControlColors colors(option.palette);
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (isSelected) {
      painter->setPen(Qt::NoPen);
      painter->setBrush(colors.accent);
      painter->drawRoundedRect(QRectF(option.rect).adjusted(kMargin, 0, -kMargin, 0), kRadius / 2.0, kRadius / 2.0);
    }
    const QColor onAccent = option.palette.color(QPalette::HighlightedText);
    const QColor ground = isSelected ? colors.accent : colors.window;
    const QColor text = isSelected ? onAccent : colors.text;
    const QColor weaker = readable(mixed(ground, text, 0.6), {ground}, text);
    QRect area = option.rect.adjusted(2 * kMargin, 0, -2 * kMargin, 0);
    painter->setPen(weaker);
    const int shortcutWidth = option.fontMetrics.horizontalAdvance(command.shortcut);
    painter->drawText(area, Qt::AlignRight | Qt::AlignVCenter, command.shortcut);
    area.setRight(area.right() - shortcutWidth - 2 * kMargin);
    painter->setPen(command.isEnabled ? text : weaker);
    const QString mark = command.isOn ? QStringLiteral("✓ ") : QString();
    const QString title = option.fontMetrics.elidedText(mark + command.title, Qt::ElideRight, area.width());
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter, title);
    area.setLeft(area.left() + option.fontMetrics.horizontalAdvance(title) + kMargin);
    painter->setPen(weaker);
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                      option.fontMetrics.elidedText(command.place, Qt::ElideRight, area.width()));
    painter->restore();
  }

 private:
  const CommandPalette& m_palette;
};

}  // namespace

CommandPalette::CommandPalette(std::vector<PaletteCommand> commands, QWidget& over)
    : QFrame(&over),
      m_commands(std::move(commands)),
      m_field(new TextField(this)),
      m_model(new CommandListModel(m_commands, this)),
      m_list(new QListView(this)),
      m_help(new QLabel(this)) {
  setObjectName(QStringLiteral("commandPalette"));
  setAccessibleName(tr("Commands"));
  m_field->setPlaceholderText(tr("Type a command"));
  m_field->setAccessibleName(tr("Command"));
  m_field->installEventFilter(this);
  m_list->setModel(m_model);
  m_list->setItemDelegate(new CommandDelegate(*this, this));
  m_list->setFocusPolicy(Qt::NoFocus);
  m_list->setFrameShape(QFrame::NoFrame);
  m_list->setUniformItemSizes(true);
  m_list->setVerticalScrollBar(new ThinScrollBar(ThinScrollBar::Ground::Window, m_list));
  m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_list->setMouseTracking(true);
  m_list->viewport()->setAutoFillBackground(false);
  m_list->setAccessibleName(tr("Commands"));
  m_help->setTextFormat(Qt::PlainText);
  m_help->setWordWrap(true);
  m_help->setContentsMargins(kMargin, 0, kMargin, 0);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, kMargin, 0, kMargin);
  column->setSpacing(kMargin);
  auto* row = new QVBoxLayout;
  row->setContentsMargins(kMargin, 0, kMargin, 0);
  row->addWidget(m_field);
  column->addLayout(row);
  column->addWidget(m_list, 1);
  auto* foot = new QVBoxLayout;
  foot->setContentsMargins(kMargin, 0, kMargin, 0);
  foot->addWidget(m_help);
  column->addLayout(foot);
  connect(m_field, &QLineEdit::textChanged, this, &CommandPalette::narrow);
  connect(m_list, &QListView::clicked, this, &CommandPalette::choose);
  over.installEventFilter(this);
  showHelp();
  narrow();
  show();
  raise();
  m_field->setFocus();
}

void CommandPalette::narrow() {
  struct Match {
    int command;
    int score;
  };
  std::vector<Match> matches;
  for (int i = 0; i < static_cast<int>(m_commands.size()); ++i) {
    if (const auto score = matchOf(m_field->text(), command(i).title)) matches.push_back({i, *score});
  }
  std::ranges::stable_sort(matches, std::ranges::greater(), &Match::score);
  std::ranges::stable_partition(matches, [this](const Match& each) { return command(each.command).isEnabled; });
  std::vector<int> rows(matches.size());
  std::ranges::transform(matches, rows.begin(), &Match::command);
  m_model->show(std::move(rows));
  m_list->setCurrentIndex(m_model->index(0));
  place();
}

void CommandPalette::place() {
  const QSize room = parentWidget()->size();
  const int rows = std::clamp(m_model->rowCount(), 1, kMostRows);
  const int rowHeight = fontMetrics().height() + 2 * kRowPadding;
  m_list->setMinimumHeight(std::min(rowHeight, room.height() / 3));
  const int width = std::min(kWidth, room.width() - 2 * kMargin);
  m_help->setFixedWidth(std::max(width - 2 * kMargin, 1));
  const int others = m_field->sizeHint().height() + m_help->heightForWidth(m_help->width()) + 4 * kMargin;
  const int height = std::min(others + rows * rowHeight, room.height() - 2 * kMargin);
  setGeometry((room.width() - width) / 2, std::min(room.height() / 10, std::max(room.height() - height, 0)), width,
              height);
}

int CommandPalette::current() const {
  const QModelIndex index = m_list->currentIndex();
  return index.isValid() ? index.data(CommandRole).toInt() : -1;
}

void CommandPalette::setCommand(int index, const PaletteCommand& changed) {
  m_commands[static_cast<std::size_t>(index)] = changed;
  m_asked.reset();
  for (int row = 0; row < m_model->rowCount(); ++row) {
    m_model->changed(row);
  }
}

void CommandPalette::tell(const QString& text) {
  m_help->setText(text);
  place();
}

void CommandPalette::showHelp() {
  tell(m_asked
           ? tr("Press the new shortcut of “%1”. Backspace: none. Delete: the usual one. Escape: leave it as it is.")
                 .arg(command(*m_asked).title)
           : tr("Return runs it, Tab changes its shortcut, Escape goes back."));
}

void CommandPalette::askForShortcut() {
  if (current() < 0) return;
  m_asked = current();
  showHelp();
}

// Only then, so that what it does finds the keyboard where it was.
void CommandPalette::choose() {
  const int wanted = current();
  if (wanted < 0 || !command(wanted).isEnabled) return QApplication::beep();
  leave();
  Q_EMIT chosen(wanted);
}

void CommandPalette::leave() {
  if (isHidden()) return;
  hide();
  parentWidget()->setFocus();
  deleteLater();
}

bool CommandPalette::movesBy(const QKeyEvent& event) {
  const int rows = m_model->rowCount();
  int row = m_list->currentIndex().row();
  switch (event.key()) {
    case Qt::Key_Up:
      row = row <= 0 ? rows - 1 : row - 1;
      break;
    case Qt::Key_Down:
      row = row + 1 >= rows ? 0 : row + 1;
      break;
    case Qt::Key_PageUp:
      row = std::max(row - kMostRows, 0);
      break;
    case Qt::Key_PageDown:
      row = std::min(row + kMostRows, rows - 1);
      break;
    default:
      return false;
  }
  m_list->setCurrentIndex(m_model->index(row));
  return true;
}

bool CommandPalette::takesShortcut(const QKeyEvent& event) {
  const int key = event.key();
  const bool isModifier = key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
                          key == Qt::Key_AltGr || key == Qt::Key_unknown || key == 0;
  if (isModifier) return true;
  const int asked = *m_asked;
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
  if (modifiers == Qt::NoModifier && key == Qt::Key_Escape) {
    m_asked.reset();
    showHelp();
  } else if (modifiers == Qt::NoModifier && key == Qt::Key_Backspace) {
    Q_EMIT shortcutWanted(asked, QKeySequence());
  } else if (modifiers == Qt::NoModifier && key == Qt::Key_Delete) {
    Q_EMIT shortcutWanted(asked, std::nullopt);
  } else {
    Q_EMIT shortcutWanted(asked, QKeySequence(static_cast<int>(modifiers) | key));
  }
  return true;
}

bool CommandPalette::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget()) {
    if (event->type() == QEvent::Resize) place();
    return false;
  }
  if (event->type() == QEvent::FocusOut) {
    if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) leave();
    return false;
  }
  // While a shortcut is entered, no other shortcut is to act.
  if (event->type() == QEvent::ShortcutOverride && m_asked) {
    event->accept();
    return true;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto& press = static_cast<QKeyEvent&>(*event);
  if (m_asked) return takesShortcut(press);
  switch (press.key()) {
    case Qt::Key_Escape:
      leave();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      choose();
      return true;
    case Qt::Key_Tab:
      askForShortcut();
      return true;
    default:
      return movesBy(press);
  }
}

void CommandPalette::paintEvent(QPaintEvent*) {
  const ControlColors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(mixed(colors.window, colors.text, 0.3));
  painter.setBrush(colors.window);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

}  // namespace zolt
