#include "terminal/hints/HintMode.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>
#include <ranges>
#include <utility>

#include "terminal/hints/HintLabels.h"
#include "terminal/input/PcKeyboard.h"

namespace zolt {

namespace {

// The letter of a key, in lower case whatever is held: of the layout if that has Latin letters, or else of the key's
// place. 0: none.
char letterOf(const QKeyEvent& event) {
  if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) return static_cast<char>('a' + event.key() - Qt::Key_A);
  const QString text = event.text();
  const bool isOtherScript = !text.isEmpty() && text.front().isLetter();
  const PcKey* key = isOtherScript ? pcKeyOf(event, kKeyboardSystem) : nullptr;
  return key != nullptr && key->plain >= 'a' && key->plain <= 'z' ? key->plain : '\0';
}

// What a program may have put into the target of a link is never typed as a key.
std::string withoutControls(std::string text) {
  std::erase_if(text, [](unsigned char c) { return c < 0x20 || c == 0x7F; });
  return text;
}

// The file that a path means in `folder`; empty if there is none.
QString fileOf(const std::string& path, const std::string& folder) {
  QString name = QString::fromStdString(path);
  if (name.startsWith(QLatin1String("~/"))) name.replace(0, 1, QDir::homePath());
  for (const QString& each : {name, QString::fromUtf8(pathWithoutLine(name.toStdString()))}) {
    const QFileInfo file(QDir(QString::fromStdString(folder)), each);
    if (file.exists()) return QDir::cleanPath(file.absoluteFilePath());
  }
  return {};
}

}  // namespace

HintMode::HintMode(EmulationDisplay& display, std::function<std::string()> folder)
    : m_display(display), m_canvas(display.canvas()), m_folder(std::move(folder)) {
  connect(&m_canvas, &TextCanvas::frameChanged, this, [this] {
    if (m_isOn && !isAsShown()) end();
  });
  m_canvas.installEventFilter(this);
}

HintMode::~HintMode() {
  HintMode::end();
}

void HintMode::toggle() {
  if (m_isOn) return end();
  m_display.input().endMode();
  m_canvas.holdView(true);  // with a frame of what is there now
  m_hints = hintsInView();
  // What was printed last is wanted most often: it has the labels that are typed most easily.
  const std::size_t count = std::min(m_hints.size(), kMaxHintLabels);
  m_hints.erase(m_hints.begin(), m_hints.end() - static_cast<std::ptrdiff_t>(count));
  if (m_hints.empty()) {
    m_canvas.holdView(false);
    return QApplication::beep();
  }
  for (const Hint& hint : m_hints) {
    m_places.push_back(placeOf(hint.range));
  }
  m_labels = hintLabels(m_hints.size());
  std::ranges::reverse(m_labels);
  m_typed.clear();
  showLabels();
  m_isOn = true;
  m_display.input().setMode(this);
  m_canvas.makeFrameNow();
}

void HintMode::end() {
  if (!std::exchange(m_isOn, false)) return;
  m_display.input().setMode(nullptr);
  m_canvas.setLabels({});
  m_canvas.holdView(false);
  m_hints.clear();
  m_places.clear();
}

std::vector<HintMode::Hint> HintMode::hintsInView() {
  const TextInView view = m_canvas.textInView();
  if (view.rowCount() == 0) return {};
  const TextRange inView{.begin = view.row(0).range.begin, .end = view.row(view.rowCount() - 1).range.end};
  std::vector<Hint> hints;
  for (const EmulationSource::LinePart& line : m_display.source().linesIn(inView)) {
    std::vector<ByteRange> taken;
    const auto first = static_cast<std::ptrdiff_t>(hints.size());
    const auto add = [&](TextRange range, HintKind kind, std::string text) {
      if (range.end > inView.begin && range.begin < inView.end) hints.push_back({range, kind, std::move(text)});
    };
    for (const CanvasLink& link : line.markedLinks) {
      const TextRange range{.begin = std::max(link.range.begin, line.range.begin),
                            .end = std::min(link.range.end, line.range.end)};
      if (range.empty()) continue;
      taken.push_back({.begin = range.begin - line.range.begin, .end = range.end - line.range.begin});
      add(link.range, HintKind::Link, withoutControls(link.target));
    }
    for (const FoundHint& found : findHints(line.text, taken)) {
      add({.begin = line.range.begin + found.range.begin, .end = line.range.begin + found.range.end}, found.kind,
          line.text.substr(found.range.begin, found.range.end - found.range.begin));
    }
    std::ranges::sort(hints.begin() + first, hints.end(), {}, [](const Hint& each) { return each.range.begin; });
  }
  return hints;
}

// Whether each label that is shown is on the same text as at first, and in the same place of the view.
bool HintMode::isAsShown() {
  const std::vector<Hint> now = hintsInView();
  const std::vector<CanvasLabel>& labels = m_canvas.labels();
  for (std::size_t i = 0; i < m_hints.size(); ++i) {
    const Hint expected{.range = labels[i].on, .kind = m_hints[i].kind, .text = m_hints[i].text};
    if (std::ranges::find(now, expected) == now.end()) return false;
    if (placeOf(labels[i].on) != m_places[i]) return false;
  }
  return true;
}

// Of its first character in view.
QRectF HintMode::placeOf(TextRange hint) {
  return m_canvas.rectOf(std::max(hint.begin, m_canvas.firstInView()));
}

void HintMode::showLabels() {
  std::vector<CanvasLabel> labels;
  for (std::size_t i = 0; i < m_hints.size(); ++i) {
    const bool isMeant = m_labels[i].starts_with(m_typed);
    const TextRange on = m_canvas.labels().size() == m_hints.size() ? m_canvas.labels()[i].on : m_hints[i].range;
    labels.push_back({.on = on, .letters = isMeant ? m_labels[i] : std::string(), .typed = m_typed.size()});
  }
  m_canvas.setLabels(std::move(labels));
}

void HintMode::keyPressed(const QKeyEvent& event, bool repeats) {
  // What has arrived since the last frame may have changed the text under a label.
  m_canvas.makeFrameNow();
  if (m_isOn && !isAsShown()) end();
  if (!m_isOn || repeats) return;
  const char letter = letterOf(event);
  const Qt::KeyboardModifiers held = event.modifiers();
  const bool isLetter = letter != '\0' && !(held & (Qt::ControlModifier | Qt::MetaModifier));
  m_typed += isLetter ? letter : ' ';
  const auto meant =
      std::ranges::find_if(m_labels, [this](const std::string& label) { return label.starts_with(m_typed); });
  if (meant == m_labels.end()) return end();
  if (*meant != m_typed) return showLabels();
  const Hint hint = m_hints[static_cast<std::size_t>(meant - m_labels.begin())];
  end();
  if (held.testFlag(Qt::AltModifier)) {
    m_display.input().textPasted(QString::fromStdString(hint.text));
  } else if (held.testFlag(Qt::ShiftModifier)) {
    QApplication::clipboard()->setText(QString::fromStdString(hint.text));
  } else {
    open(hint);
  }
}

void HintMode::open(const Hint& hint) {
  if (hint.kind == HintKind::Link) return m_display.input().linkOpened(hint.text);
  const QString file = hint.kind == HintKind::Path ? fileOf(hint.text, m_folder()) : QString();
  if (file.isEmpty()) return QApplication::clipboard()->setText(QString::fromStdString(hint.text));
  m_display.input().linkOpened(QUrl::fromLocalFile(file).toEncoded().toStdString());
}

bool HintMode::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) end();
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
