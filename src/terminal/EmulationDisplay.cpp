#include "terminal/EmulationDisplay.h"

#include <QApplication>
#include <QClipboard>
#include <chrono>
#include <string>
#include <utility>

#include "platform/CacheFolder.h"
#include "platform/MainQueue.h"
#include "terminal/TranslucentWindow.h"
#include "terminal/VisibleText.h"
#include "terminal/WindowRequests.h"
#include "vt/theme/Theme.h"

namespace zolt {

namespace {

constexpr std::chrono::milliseconds kSettlePoll{1};
// What has been fed is processed in no time, but a process may print for ever.
constexpr std::chrono::seconds kSettleLimit{5};

vt::CursorShape shapeOf(Config::CursorStyle style) {
  switch (style) {
    case Config::CursorStyle::Block:
      return vt::CursorShape::Block;
    case Config::CursorStyle::Line:
      return vt::CursorShape::Underline;
    case Config::CursorStyle::Bar:
      return vt::CursorShape::Bar;
  }
  return vt::CursorShape::Block;
}

vt::TerminalSettings engineSettings(bool isDark) {
  vt::TerminalSettings settings;
  settings.version = ZOLT_VERSION;
  settings.prefersDark = isDark;
  settings.history.folder = cacheFolder();
  return settings;
}

std::unique_ptr<vt::Terminal> makeEngine(const TerminalSize& size, vt::TerminalSettings settings,
                                         const EarlierText& earlier) {
  auto restored = earlier.terminal ? vt::Terminal::restored(*earlier.terminal, settings)
                                   : Result<std::unique_ptr<vt::Terminal>>(Failure{});
  std::string notice = earlier.notice;
  if (earlier.terminal && !restored) notice = lostTextNotice(restored.reason());
  std::unique_ptr<vt::Terminal> engine =
      restored ? std::move(restored.value()) : std::make_unique<vt::Terminal>(size, std::move(settings));
  if (restored) {
    engine->startOver();
    engine->resize(size);
    engine->takeReplies();  // which the program before has waited for
  }
  if (!notice.empty()) engine->feed(visibleText(notice) + "\r\n");
  return engine;
}

const vt::Theme& themeFor(bool isDark) {
  return isDark ? vt::darkTheme() : vt::lightTheme();
}

}  // namespace

std::string lostTextNotice(const std::string& reason) {
  return QCoreApplication::translate("EmulationDisplay", "What was shown here before is lost: %1.")
      .arg(QString::fromStdString(reason))
      .toStdString();
}

CanvasFont emulationFont(const EmulationSettings& settings) {
  return {.family = QString::fromStdString(settings.fontFamily),
          .size = settings.fontSize,
          .lineSpacing = settings.lineSpacing,
          .ligatures = settings.ligatures};
}

EmulationDisplay::EmulationDisplay(TerminalController& terminal, const TerminalSize& size,
                                   const EmulationSettings& settings, bool isDark, QWidget* parent, Clock& clock,
                                   const EarlierText& earlier)
    : m_terminal(terminal) {
  const MainQueue::Owner self(this);
  m_emulator = std::make_unique<Emulator>(
      makeEngine(size, engineSettings(isDark), earlier),
      Emulator::Handlers{.changed =
                             [this, self] {
                               MainQueue::async(self, [this] {
                                 if (m_canvas != nullptr) m_canvas->showChange();
                               });
                             },
                         .replied =
                             [this, self](const std::string& bytes) {
                               MainQueue::async(self, [this, bytes] { m_terminal.ptySession().write(bytes); });
                             }});
  auto source = std::make_unique<EmulationSource>(*m_emulator);
  m_source = source.get();
  m_source->onEvents = [this](const vt::TerminalEvents& events) { takeEvents(events); };
  m_source->onScreen = [this] {
    updateColors();
    Q_EMIT screenChanged();
  };
  m_canvas = new TextCanvas(std::move(source), parent, clock);
  m_canvas->setAccessibleName(QCoreApplication::translate("zolt::TerminalNSTextView", "Terminal"));
  m_canvas->setSizeRest(std::chrono::milliseconds(0));
  m_canvas->setPointerFollowed(true);
  m_canvas->setAcceptDrops(true);
  m_canvas->installEventFilter(this);
  m_input = std::make_unique<EmulationInput>(*m_source, *m_canvas,
                                             [this](std::string_view bytes) { m_terminal.ptySession().write(bytes); });
  m_canvas->setInput(m_input.get());
  connect(m_canvas, &TextCanvas::gridSizeChanged, this, [this](const TerminalSize& wanted) {
    m_emulator->change([wanted](vt::Terminal& engine) { engine.resize(wanted); });
    m_terminal.ptySession().resize(wanted);  // the grid of the log is not used
  });
  setSettings(settings, isDark);
  m_terminal.ptySession().setOutputTap([emulator = m_emulator.get()](const Bytes& bytes) { emulator->feed(bytes); });
}

EmulationDisplay::~EmulationDisplay() {
  m_terminal.ptySession().setOutputTap(nullptr);
  delete m_canvas;  // which reads the engine's snapshots
}

void EmulationDisplay::setSettings(const EmulationSettings& settings, bool isDark) {
  m_settings = settings;
  m_input->setSettings(settings);
  m_source->setWordSeparators(" \t" + settings.wordSeparators);
  m_canvas->setTextFont(emulationFont(settings));
  const vt::Theme& theme = themeFor(isDark);
  m_emulator->change([&theme, isDark, limit = settings.scrollbackLines,
                      allowsAlternate = settings.useAlternateScreenBuffer,
                      allowsRequests = settings.allowWindowRequests,
                      cursor = vt::CursorStyle{.shape = shapeOf(settings.cursorStyle), .blinks = settings.cursorBlink}](
                         vt::Terminal& engine) {
    vt::applyTheme(engine.palette(), theme);
    engine.setPrefersDark(isDark);
    engine.allowAlternateScreen(allowsAlternate);
    engine.allowWindowRequests(allowsRequests);
    engine.setUserCursor(cursor);
    engine.screen().scrollback().setLimit(limit ? std::optional(static_cast<std::uint64_t>(*limit)) : std::nullopt);
  });
  m_selection = toRgb(theme.selectionBackground);
  m_selectedText = toRgb(theme.selectionText.value_or(theme.foreground));
  applyLooks();
}

// A full screen is opaque, as the preferences say: "Disable transparency for fullscreen" is always on.
void EmulationDisplay::applyLooks() {
  const double opacity = m_canvas->window()->isFullScreen() ? 1 : m_settings.opacity;
  m_source->looks().setOptions({.boldIsBright = m_settings.boldIsBright, .minimumContrast = m_settings.minimumContrast},
                               opacity);
  updateColors();
  m_canvas->contentChanged();
}

bool EmulationDisplay::eventFilter(QObject* watched, QEvent* event) {
  // The canvas comes into its window after it was made.
  const bool comesIntoWindow = watched == m_canvas && event->type() == QEvent::Show;
  if (comesIntoWindow) m_canvas->window()->installEventFilter(this);
  if (comesIntoWindow || event->type() == QEvent::WindowStateChange) applyLooks();
  return QObject::eventFilter(watched, event);
}

void EmulationDisplay::updateColors() {
  CanvasColors colors = m_source->looks().colors(m_selection);
  // Programs have colours of their own: none of them is sure to be read on the selection.
  colors.selectedText = m_selectedText;
  if (colors == m_canvas->colors()) return;
  m_canvas->setColors(colors);
  // Not within a frame, or before the canvas is in its window.
  if (qAlpha(colors.background) < 255) {
    MainQueue::async(MainQueue::Owner(this), [this] { makeTranslucent(*m_canvas->window()); });
  }
}

void EmulationDisplay::takeEvents(const vt::TerminalEvents& events) {
  // Within a frame: what these do must not come back to the canvas at once.
  const MainQueue::Owner self(this);
  if (events.titleChanged) {
    MainQueue::async(self,
                     [this, title = m_source->screen()->title] { Q_EMIT titleChanged(QString::fromStdString(title)); });
  }
  if (events.bells > 0) {
    MainQueue::async(self, [this] {
      if (m_settings.audibleBell) QApplication::beep();
      if (m_settings.visualBell) m_canvas->flash();
      Q_EMIT bellRang();
    });
  }
  for (const vt::Notification& each : events.notifications) {
    MainQueue::async(self, [this, each] {
      Q_EMIT notificationWanted(QString::fromStdString(each.title), QString::fromStdString(each.body));
    });
  }
  for (const vt::EndedCommand& command : events.endedCommands) {
    MainQueue::async(self, [this, command] { Q_EMIT commandEnded(command); });
  }
  for (const vt::WindowRequest& request : events.windowRequests) {
    MainQueue::async(self, [this, request] { applyWindowRequest(request, *m_canvas); });
  }
  for (const vt::ClipboardWrite& write : events.clipboardWrites) {
    MainQueue::async(self, [write] {
      QClipboard* clipboard = QApplication::clipboard();
      const bool isPrimary = write.target == vt::ClipboardTarget::Primary;
      if (isPrimary && !clipboard->supportsSelection()) return;
      clipboard->setText(QString::fromStdString(write.text), isPrimary ? QClipboard::Selection : QClipboard::Clipboard);
    });
  }
}

void EmulationDisplay::whenSettled(std::function<void()> shown) {
  settle(std::move(shown), std::chrono::steady_clock::now() + kSettleLimit);
}

void EmulationDisplay::settle(std::function<void()> shown, std::chrono::steady_clock::time_point deadline) {
  m_canvas->makeFrameNow();
  if (m_emulator->isSettled() || std::chrono::steady_clock::now() >= deadline) {
    shown();
    return;
  }
  MainQueue::after(MainQueue::Owner(this), kSettlePoll,
                   [this, shown = std::move(shown), deadline] { settle(shown, deadline); });
}

// The cursor's line becomes the first, where the program goes on as if it had scrolled there.
void EmulationDisplay::clear() {
  m_emulator->change([](vt::Terminal& engine) {
    if (!engine.screen().showsAlternate()) engine.screen().clearButCursorLine();
  });
}

// A program that was killed leaves its screen and modes behind. CAN ends a sequence that it was in the middle of. Mode
// 47 leaves the alternate screen without restoring a cursor that may never have been saved.
void EmulationDisplay::addNotice(const QString& line) {
  m_emulator->change([text = line.toStdString()](vt::Terminal& engine) {
    engine.feed("\x18\033[?47l\033[!p\033[?2026l\033[?9l\033[?25l");
    const std::shared_ptr<const vt::ScreenSnapshot> screen = engine.snapshot();
    std::size_t row = screen->rows.size();
    while (row > 1 && screen->rows[row - 1]->text.empty()) {
      --row;
    }
    engine.feed("\033[" + std::to_string(row) + "H\r\n" + text + "\r\n");
  });
}

}  // namespace zolt
