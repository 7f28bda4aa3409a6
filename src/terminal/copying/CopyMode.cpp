#include "terminal/copying/CopyMode.h"

#include <algorithm>
#include <cmath>

#include "terminal/ShellMarks.h"

namespace zolt {

namespace {

constexpr int kMaxCount = 9999;
// Right of every row: "$" keeps to the ends of rows.
constexpr CanvasColumn kRightmost(1 << 20);

#ifdef Q_OS_MACOS
constexpr Qt::KeyboardModifier kControl = Qt::MetaModifier;  // as Qt calls the Control key there
#else
constexpr Qt::KeyboardModifier kControl = Qt::ControlModifier;
#endif

}  // namespace

// What the keys do, each with a count, which is 1 where none was typed.
struct CopyKeys {
  using Action = void (*)(CopyMode& mode, int count);

  template <CopyMotion motion>
  static void moves(CopyMode& mode, int count) {
    mode.move(motion, count);
  }
  template <int direction>
  static void movesRows(CopyMode& mode, int count) {
    mode.moveRows(static_cast<std::int64_t>(direction) * count);
  }
  template <int halves>
  static void movesPages(CopyMode& mode, int count) {
    mode.movePages(halves * 0.5 * count);
  }
  static void goesToTop(CopyMode& mode, int count) {
    const TextCanvas::WholeRows rows = mode.m_canvas.wholeRowsInView();
    mode.goToRow(std::min(rows.first + (count - 1), rows.last));
  }
  static void goesToMiddle(CopyMode& mode, int) {
    const TextCanvas::WholeRows rows = mode.m_canvas.wholeRowsInView();
    mode.goToRow(rows.first + (rows.last - rows.first) / 2);
  }
  static void goesToBottom(CopyMode& mode, int count) {
    const TextCanvas::WholeRows rows = mode.m_canvas.wholeRowsInView();
    mode.goToRow(std::max(rows.last + (1 - count), rows.first));
  }
  template <bool later>
  static void goesToPrompt(CopyMode& mode, int count) {
    mode.goToPrompt(later, count);
  }
  template <CopyMode::Selects kind>
  static void selects(CopyMode& mode, int) {
    mode.toggleSelection(kind);
  }
  static void swaps(CopyMode& mode, int) { mode.swapEnds(); }
  static void copies(CopyMode& mode, int) { mode.copy(); }
  static void leaves(CopyMode& mode, int) { mode.end(); }
  template <bool backward>
  static void finds(CopyMode& mode, int) {
    mode.find(backward);
  }
  template <bool reversed>
  static void findsAgain(CopyMode& mode, int) {
    mode.findAgain(reversed);
  }

  struct Typed {
    char16_t character;
    Action act;
  };
  // By what a key types.
  static constexpr Typed kTyped[] = {
      {u'h', moves<CopyMotion::Left>},
      {u'l', moves<CopyMotion::Right>},
      {u' ', moves<CopyMotion::Right>},
      {u'w', moves<CopyMotion::WordStart>},
      {u'e', moves<CopyMotion::WordEnd>},
      {u'b', moves<CopyMotion::WordBack>},
      {u'W', moves<CopyMotion::BigWordStart>},
      {u'E', moves<CopyMotion::BigWordEnd>},
      {u'B', moves<CopyMotion::BigWordBack>},
      {u'0', moves<CopyMotion::LineStart>},
      {u'^', moves<CopyMotion::LineText>},
      {u'$', moves<CopyMotion::LineEnd>},
      {u'{', moves<CopyMotion::ParagraphBack>},
      {u'}', moves<CopyMotion::ParagraphForward>},
      {u'g', moves<CopyMotion::TextStart>},
      {u'G', moves<CopyMotion::TextEnd>},
      {u'j', movesRows<1>},
      {u'k', movesRows<-1>},
      {u'H', goesToTop},
      {u'M', goesToMiddle},
      {u'L', goesToBottom},
      {u'[', goesToPrompt<false>},
      {u']', goesToPrompt<true>},
      {u'v', selects<CopyMode::Selects::Characters>},
      {u'V', selects<CopyMode::Selects::Lines>},
      {u'o', swaps},
      {u'y', copies},
      {u'q', leaves},
      {u'/', finds<false>},
      {u'?', finds<true>},
      {u'n', findsAgain<false>},
      {u'N', findsAgain<true>},
  };

  struct Named {
    int key;
    Action act;
  };
  static constexpr Named kWithControl[] = {
      {Qt::Key_U, movesPages<-1>},
      {Qt::Key_D, movesPages<1>},
      {Qt::Key_B, movesPages<-2>},
      {Qt::Key_F, movesPages<2>},
      {Qt::Key_V, selects<CopyMode::Selects::Rectangle>},
  };
  static constexpr Named kNamed[] = {
      {Qt::Key_Left, moves<CopyMotion::Left>},
      {Qt::Key_Right, moves<CopyMotion::Right>},
      {Qt::Key_Up, movesRows<-1>},
      {Qt::Key_Down, movesRows<1>},
      {Qt::Key_Home, moves<CopyMotion::LineStart>},
      {Qt::Key_End, moves<CopyMotion::LineEnd>},
      {Qt::Key_PageUp, movesPages<-2>},
      {Qt::Key_PageDown, movesPages<2>},
      {Qt::Key_Return, copies},
      {Qt::Key_Enter, copies},
      {Qt::Key_Escape, leaves},
  };

  static Action actionOf(const QKeyEvent& event) {
    const auto named = [&event](const auto& table) {
      const auto* row = std::ranges::find(table, event.key(), &Named::key);
      return row == std::end(table) ? nullptr : row->act;
    };
    const Qt::KeyboardModifiers held = event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier);
    if (held == kControl) return named(kWithControl);
    if (held != Qt::NoModifier) return nullptr;
    if (const Action action = named(kNamed)) return action;
    if (event.text().size() != 1) return nullptr;
    const auto* row = std::ranges::find(kTyped, event.text().front().unicode(), &Typed::character);
    return row == std::end(kTyped) ? nullptr : row->act;
  }
};

CopyMode::CopyMode(EmulationDisplay& display)
    : m_display(display), m_canvas(display.canvas()), m_source(display.source()) {
  connect(&display, &EmulationDisplay::screenChanged, this, [this] {
    if (!m_isOn) return;
    m_cursor = m_source.moved(m_cursor);
    m_origin = m_source.moved(m_origin);
    m_canvas.setCaret(m_cursor);
  });
  connect(&m_canvas, &TextCanvas::frameChanged, this, [this] {
    if (!m_isOn) return;
    if (m_source.screen()->isAlternate != m_isAlternate) return end();  // another text
    Q_EMIT changed();
  });
}

CopyMode::~CopyMode() {
  CopyMode::end();
}

void CopyMode::toggle() {
  m_isOn ? end() : begin();
}

void CopyMode::begin() {
  m_display.input().endMode();
  m_canvas.makeFrameNow();
  const bool isAtEnd = m_canvas.isAtEnd();
  m_canvas.holdView(true);
  m_canvas.clearSelection();
  m_isOn = true;
  m_isAlternate = m_source.screen()->isAlternate;
  m_selects = Selects::Nothing;
  m_count = 0;
  m_display.input().setMode(this);
  const std::optional<CanvasCursor> cursor = m_source.cursor();
  if (isAtEnd && cursor) {
    placeCursor(m_source.content(cursor->row)->positionAt(cursor->columns.begin));
  } else {
    placeCursor(m_source.rowRange(m_canvas.wholeRowsInView().last).begin);
  }
}

void CopyMode::end() {
  if (!m_isOn) return;
  m_isOn = false;
  m_display.input().setMode(nullptr);
  m_canvas.setCaret(std::nullopt);
  m_canvas.clearSelection();
  m_canvas.holdView(false);
  m_canvas.scrollToEndOfDocument();
  Q_EMIT changed();
}

void CopyMode::keyPressed(const QKeyEvent& event, bool /*repeats*/) {
  m_canvas.makeFrameNow();
  if (!m_isOn) return;  // the text is another one
  const QString typed = event.text();
  const int digit =
      typed.size() == 1 && !event.modifiers().testFlag(Qt::ControlModifier) ? typed.front().digitValue() : -1;
  if (digit > 0 || (digit == 0 && m_count > 0)) {
    m_count = std::min(m_count * 10 + digit, kMaxCount);
    return;
  }
  const int count = std::max(std::exchange(m_count, 0), 1);
  if (const CopyKeys::Action act = CopyKeys::actionOf(event)) act(*this, count);
}

void CopyMode::goTo(TextPosition place) {
  placeCursor(place);
}

void CopyMode::move(CopyMotion motion, int count) {
  placeCursor(moved(text(), m_cursor, motion, count));
  if (motion == CopyMotion::LineEnd) m_column = kRightmost;
}

void CopyMode::moveRows(std::int64_t rows) {
  goToRow(CanvasRow(std::max<std::int64_t>(m_source.rowAt(m_cursor).value + rows, 0)));
}

void CopyMode::movePages(double pages) {
  const TextCanvas::WholeRows view = m_canvas.wholeRowsInView();
  const auto rows = static_cast<std::int64_t>(std::lround(pages * static_cast<double>(view.last - view.first + 1)));
  m_canvas.scrollTo(m_canvas.scrollOffset() + m_canvas.cellMetrics().height * rows);
  moveRows(rows);
}

// In the column from which the cursor has come.
void CopyMode::goToRow(CanvasRow row) {
  const CanvasColumn column = m_column;
  row = std::min(row, m_source.rowAt(m_source.end()));
  const std::shared_ptr<const RowContent> content = m_source.content(row);
  TextPosition place = content->positionAt(column);
  const bool isWithin = content->columnOf(place) > column || (place >= content->range.end && !content->range.empty());
  if (isWithin) place = content->characterAt(place - 1).begin;
  placeCursor(place);
  m_column = column;
}

void CopyMode::goToPrompt(bool later, int count) {
  const vt::ScrollbackText all = text();
  const ShellMarks marks(all);
  TextPosition place = m_cursor;
  for (; count > 0; --count) {
    const std::optional<ShellMark> prompt = later ? marks.promptAfter(place) : marks.promptBefore(place);
    if (!prompt) break;
    place = prompt->position;
  }
  placeCursor(place);
}

void CopyMode::find(bool backward) {
  m_findsBackward = backward;
  Q_EMIT findWanted(FindStep::Open);
}

void CopyMode::findAgain(bool reversed) {
  Q_EMIT findWanted(m_findsBackward == reversed ? FindStep::Next : FindStep::Previous);
}

void CopyMode::toggleSelection(Selects kind) {
  if (m_selects == Selects::Nothing) m_origin = m_cursor;
  m_selects = m_selects == kind ? Selects::Nothing : kind;
  showSelection();
  Q_EMIT changed();
}

void CopyMode::swapEnds() {
  if (m_selects == Selects::Nothing) return;
  const TextPosition origin = m_origin;
  m_origin = m_cursor;
  placeCursor(origin);
}

void CopyMode::copy() {
  m_canvas.copy();
  end();
}

void CopyMode::placeCursor(TextPosition place) {
  m_cursor = cursorPlace(text(), place);
  m_column = columnOf(m_cursor);
  m_canvas.setCaret(m_cursor);
  m_canvas.scrollIntoView(m_cursor);
  showSelection();
  Q_EMIT changed();
}

CanvasColumn CopyMode::columnOf(TextPosition place) {
  return m_source.content(m_source.rowAt(place))->columnOf(place);
}

void CopyMode::showSelection() {
  if (m_selects == Selects::Nothing) return m_canvas.clearSelection();
  const vt::ScrollbackText all = text();
  const TextPosition first = std::min(m_origin, m_cursor);
  const TextPosition last = std::max(m_origin, m_cursor);
  Selection selection;
  if (m_selects == Selects::Characters) {
    const TextPosition end = characterEnd(all, last);
    // A line end that the cursor is on is selected, too.
    selection.begin(SelectionUnit::Character,
                    TextRange{.begin = first, .end = end == last && end < all.end() ? end + 1 : end});
  } else if (m_selects == Selects::Lines) {
    selection.begin(SelectionUnit::Line,
                    TextRange{.begin = m_source.lineAt(first).begin, .end = m_source.lineAt(last).end});
  } else {
    const auto right = [&](TextPosition place) {
      const std::shared_ptr<const RowContent> row = m_source.content(m_source.rowAt(place));
      return std::max(row->columnOf(characterEnd(all, place)), row->columnOf(place) + 1);
    };
    const CanvasColumn begin = std::min(columnOf(first), columnOf(last));
    const CanvasColumn end = std::max(right(first), right(last));
    selection.begin(SelectionUnit::Rectangle, SelectionEnd{.text = {.begin = first, .end = first}, .column = begin});
    selection.extend(SelectionEnd{.text = {.begin = last, .end = last}, .column = end});
  }
  m_canvas.setSelection(selection);
}

}  // namespace zolt
