#include "vt/Terminal.h"

#include <algorithm>

#include "vt/ControlFunctions.h"
#include "vt/Modes.h"
#include "vt/StringFunctions.h"

namespace zolt::vt {

// Finds the function for what the parser tells.
class Terminal::Dispatcher : public ParserEvents {
 public:
  explicit Dispatcher(TerminalState& state) : m_state(state) {}

  void printAscii(std::string_view text) override { m_state.screen.printAscii(text); }
  void print(std::u32string_view text) override { m_state.screen.print(text); }

  void execute(char32_t control) override {
    m_state.screen.endCluster();
    if (control >= 0x80) {
      // A C1 control is ESC and a letter in one (ECMA-35 13.2.1).
      return escape({.intermediates = {}, .final = static_cast<char>(control - 0x40)});
    }
    if (const ControlCharacter* const found = findControlCharacter(control)) found->run(m_state);
  }

  void escape(const EscapeSequence& sequence) override {
    m_state.screen.endCluster();
    if (const EscapeFunction* const found = findEscapeFunction(sequence)) found->run(m_state, sequence);
  }

  void control(const ControlSequence& sequence) override {
    m_state.screen.endCluster();
    // Every other sequence is SGR: it needs no looking up.
    if (sequence.final == 'm' && sequence.prefix == 0 && sequence.intermediateCount == 0) {
      return selectRendition(m_state, sequence);
    }
    const ControlFunction* const found = findControlFunction(sequence);
    if (found == nullptr || (!takesSubParameters(sequence) && hasSubParameters(sequence))) return;
    found->run(m_state, sequence);
  }

  void operatingSystemCommand(std::string_view text, bool endedByBell) override {
    m_state.screen.endCluster();
    m_state.endedByBell = endedByBell;
    runCommand(m_state, text);
  }

  void deviceControl(const ControlSequence& head, std::string_view text) override {
    m_state.screen.endCluster();
    runDeviceControl(m_state, head, text);
  }

 private:
  static bool hasSubParameters(const ControlSequence& sequence) {
    const auto end = sequence.parameters.begin() + sequence.parameterCount;
    return std::any_of(sequence.parameters.begin(), end, [](const Parameter& each) { return each.isSub; });
  }
  // What changes renditions in a rectangle does, as SGR; a colon elsewhere makes a sequence that nobody knows.
  static bool takesSubParameters(const ControlSequence& sequence) { return sequence.intermediateText() == "$"; }

  TerminalState& m_state;
};

Terminal::Terminal(int rows, int columns) : Terminal(rows, columns, TerminalSettings()) {}

Terminal::Terminal(int rows, int columns, TerminalSettings settings)
    : m_state(rows, columns, std::move(settings)),
      m_dispatcher(std::make_unique<Dispatcher>(m_state)),
      m_parser(*m_dispatcher) {}

Terminal::~Terminal() = default;

void Terminal::feed(std::string_view bytes, Milliseconds now) {
  if (bytes.empty()) return;
  m_state.now = std::max(m_state.now, now);
  holdsPicture(now);
  while (bytes.size() >= m_state.settings.rushBytes) {
    const std::size_t taken = feedRush(bytes);
    bytes.remove_prefix(taken);
  }
  m_parser.feed(bytes);
}

// Of a flood of lines only the last can be seen: the others go by the screen. How many bytes it took, never 0.
std::size_t Terminal::feedRush(std::string_view bytes) {
  Screen& screen = m_state.screen;
  if (!m_parser.isIdle() || !screen.isAtNewLine()) {
    const std::size_t line = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    m_parser.feed(bytes.substr(0, line));
    bytes.remove_prefix(line);
    if (!m_parser.isIdle() || !screen.isAtNewLine()) {
      const std::size_t more = std::min(bytes.size(), m_state.settings.rushBytes);
      m_parser.feed(bytes.substr(0, more));
      return line + more;
    }
    return line;
  }
  const Screen::Rush rush = screen.printLines(bytes);
  const std::size_t end = rush.seen == 0 ? std::min(bytes.size(), m_state.settings.rushBytes) : rush.seen;
  m_parser.feed(bytes.substr(rush.printed, end - rush.printed));
  return end;
}

void Terminal::resize(int rows, int columns, int cellWidth, int cellHeight) {
  m_state.cellWidth = std::clamp(cellWidth, 0, 1000);
  m_state.cellHeight = std::clamp(cellHeight, 0, 1000);
  m_state.screen.resize(rows, columns);
  reportSize(m_state);
}

bool Terminal::holdsPicture(Milliseconds now) {
  if (!m_state.modes.synchronizedUpdate) return false;
  if (now - m_state.updateBegan >= longestUpdate) endSynchronizedUpdate(m_state);
  return m_state.modes.synchronizedUpdate;
}

void Terminal::setPrefersDark(bool prefersDark) {
  const bool isNew = std::exchange(m_state.prefersDark, prefersDark) != prefersDark;
  if (isNew && m_state.modes.colorSchemeReports) reportColorScheme(m_state);
}

void Terminal::tellClipboard(ClipboardTarget target, std::string_view text) {
  if (m_state.settings.allowClipboardReads) m_state.reply(clipboardReport(target, text));
}

}  // namespace zolt::vt
