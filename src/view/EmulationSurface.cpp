#include "view/EmulationSurface.h"

#include <algorithm>
#include <utility>

#include "desktop/SystemScheme.h"
#include "platform/HostName.h"
#include "platform/ProcessFolder.h"
#include "terminal/CellLooks.h"
#include "terminal/ShellMarks.h"
#include "terminal/VisibleText.h"
#include "view/CopyModeBar.h"
#include "vt/history/ScrollbackStyles.h"
#include "vt/theme/Theme.h"

namespace zolt {

namespace {

vt::ScrollbackView noText() {
  return vt::Scrollback(HistorySettings()).view();
}

}  // namespace

EmulationSurface::EmulationSurface(TerminalController& terminal, const TerminalSize& size,
                                   EmulationSettingsStore& settings, QWidget* parent, const EarlierText& earlier)
    : m_settings(settings), m_terminal(terminal), m_scheme(std::make_unique<SystemScheme>()) {
  const EmulationSettings current = settings.current();
  m_display = std::make_unique<EmulationDisplay>(terminal, size, current, isDark(), parent, Clock::steady(), earlier);
  m_hints = std::make_unique<HintMode>(*m_display, [this] { return folder(); });
  m_copyMode = std::make_unique<CopyMode>(*m_display);
  m_copyModeBar = std::make_unique<CopyModeBar>(*m_copyMode, m_display->canvas());
  m_text = std::make_unique<vt::ScrollbackText>(noText());
  connect(&settings, &EmulationSettingsStore::changed, this, &EmulationSurface::applySettings);
  connect(m_scheme.get(), &SystemScheme::changed, this, &EmulationSurface::applySettings);
  connect(m_display.get(), &EmulationDisplay::screenChanged, this, &EmulationSurface::updateText);
  connect(m_display.get(), &EmulationDisplay::screenChanged, this, &EmulationSurface::screenChanged);
  connect(m_display.get(), &EmulationDisplay::titleChanged, this, &EmulationSurface::titleChanged);
  connect(m_display.get(), &EmulationDisplay::bellRang, this, &EmulationSurface::bellRang);
  connect(m_display.get(), &EmulationDisplay::notificationWanted, this, &EmulationSurface::notificationWanted);
  connect(m_display.get(), &EmulationDisplay::commandEnded, this, &EmulationSurface::commandEnded);
  connect(m_copyMode.get(), &CopyMode::findWanted, this, [this](CopyMode::FindStep step) {
    switch (step) {
      case CopyMode::FindStep::Open:
        return findWanted();
      case CopyMode::FindStep::Next:
        return findNextWanted();
      case CopyMode::FindStep::Previous:
        return findPreviousWanted();
    }
  });
}

EmulationSurface::~EmulationSurface() = default;

void EmulationSurface::applySettings() {
  const EmulationSettings current = m_settings.current();
  m_display->setSettings(current, isDark());
  Q_EMIT themeChanged();
}

bool EmulationSurface::isDark() const {
  return zolt::isDark(m_settings.current().colorScheme, m_scheme->isDark());
}

QColor EmulationSurface::ground() const {
  return toRgb((isDark() ? vt::darkTheme() : vt::lightTheme()).background);
}

bool EmulationSurface::isUntouched() const {
  return m_display->source().screen()->cursor.position == vt::Position();
}

void EmulationSurface::addFirstNotice(const QString& line) {
  m_display->emulator().feed(Bytes(visibleText(line.toStdString()) + "\r\n"));
}

void EmulationSurface::addLastNotice(const QString& line) {
  m_display->addNotice(QString::fromStdString(visibleText(line.toStdString())));
}

QString EmulationSurface::title() const {
  return QString::fromStdString(m_display->source().screen()->title).simplified();
}

std::string EmulationSurface::folder() const {
  const vt::ScreenSnapshot& screen = *m_display->source().screen();
  const bool isHere = isThisHost(screen.workingDirectoryHost);
  if (isHere && canEnter(screen.workingDirectory)) return screen.workingDirectory;
  const PTYSession& session = m_terminal.ptySession();
  const auto shell = session.shellProcess();
  const std::string folder = shell ? processFolder(*shell) : std::string();
  return canEnter(folder) ? folder : session.workingDirectory;
}

void EmulationSurface::showPrompt(PromptDirection direction) {
  canvas().makeFrameNow();
  const vt::ScrollbackText text(m_display->source().shownText());
  const TextPosition top = canvas().rangeInView().begin;
  const ShellMarks marks(text);
  const auto prompt = direction == PromptDirection::Earlier ? marks.promptBefore(top) : marks.promptAfter(top);
  if (prompt) {
    canvas().scrollToTop(prompt->position);
  } else if (direction == PromptDirection::Later) {
    canvas().scrollToEndOfDocument();
  }
}

bool EmulationSurface::selectCommandOutput() {
  canvas().makeFrameNow();
  const vt::ScrollbackText text(m_display->source().shownText());
  const auto output = ShellMarks(text).outputAt(canvas().isAtEnd() ? text.end() : canvas().rangeInView().begin);
  if (!output || output->empty()) return false;
  canvas().select(*output);
  return true;
}

QString EmulationSurface::lastCommand() const {
  const vt::ScrollbackText text(m_display->source().shownText());
  const auto command = ShellMarks(text).lastCommand();
  constexpr std::uint64_t kMostBytes = 4096;
  if (!command) return {};
  const TextRange shown{.begin = command->begin, .end = std::min(command->end, command->begin + kMostBytes)};
  return QString::fromStdString(m_display->source().text(shown)).simplified();
}

void EmulationSurface::takeMatch(TextRange match) {
  if (m_copyMode->isOn()) m_copyMode->goTo(match.begin);
}

// A view that is not followed would keep what the history drops.
void EmulationSurface::followText(bool followed) {
  m_isFollowed = followed;
  if (!followed) m_text->show(noText());
  updateText();
}

void EmulationSurface::updateText() {
  if (!m_isFollowed) return;
  const EmulationSource& source = m_display->source();
  m_text->show(source.shownText());
  const bool wasAlternate = std::exchange(m_isAlternate, source.screen()->isAlternate);
  if (m_isAlternate != wasAlternate) {
    Q_EMIT textReplaced();
  } else {
    Q_EMIT textChanged();
  }
}

TextSnapshot EmulationSurface::excerpt() const {
  const vt::ScrollbackText text(m_display->source().wholeText());
  return text.snapshot(text.firstBlock(), text.endBlock());
}

std::unique_ptr<OutputStyles> EmulationSurface::outputStyles() const {
  return std::make_unique<vt::ScrollbackStyles>();
}

}  // namespace zolt
