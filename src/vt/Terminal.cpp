#include "vt/Terminal.h"

#include <algorithm>

#include "vt/functions/Csi.h"
#include "vt/functions/Dcs.h"
#include "vt/functions/Esc.h"
#include "vt/functions/Modes.h"
#include "vt/functions/Osc.h"

namespace zolt::vt {

// Looks up and runs the functions that the parser reports.
class Terminal::Dispatcher : public ParserEvents {
 public:
  explicit Dispatcher(TerminalState& state) : m_state(state) {}

  void printAscii(std::string_view text) override { m_state.screen.printAscii(text); }
  void print(std::u32string_view text) override { m_state.screen.print(text); }

  void execute(char32_t control) override {
    m_state.screen.endCluster();
    if (control >= 0x80) {
      // A C1 control stands for ESC and a letter (ECMA-35 13.2.1).
      return escape({.intermediates = {}, .final = static_cast<char>(control - 0x40)});
    }
    if (const C0Control* const found = findC0(control)) found->run(m_state);
  }

  void escape(const EscapeSequence& sequence) override {
    m_state.screen.endCluster();
    if (const EscFunction* const found = findEsc(sequence)) found->run(m_state, sequence);
  }

  void control(const ControlSequence& sequence) override {
    m_state.screen.endCluster();
    // SGR makes up half of all sequences, so it skips the look-up.
    if (sequence.final == 'm' && sequence.prefix == 0 && sequence.intermediateCount == 0) {
      return selectRendition(m_state, sequence);
    }
    const CsiFunction* const found = findCsi(sequence);
    if (found == nullptr || (!takesSubParameters(sequence) && hasSubParameters(sequence))) return;
    found->run(m_state, sequence);
  }

  void operatingSystemCommand(std::string_view text, bool endedByBell) override {
    m_state.screen.endCluster();
    m_state.endedByBell = endedByBell;
    runOsc(m_state, text);
  }

  void deviceControl(const ControlSequence& head, std::string_view text) override {
    m_state.screen.endCluster();
    runDcs(m_state, head, text);
  }

 private:
  static bool hasSubParameters(const ControlSequence& sequence) {
    const auto end = sequence.parameters.begin() + sequence.parameterCount;
    return std::any_of(sequence.parameters.begin(), end, [](const Parameter& each) { return each.isSub; });
  }
  // DECCARA and DECRARA take SGR parameters. Any other sequence with a colon is unknown, and ignored.
  static bool takesSubParameters(const ControlSequence& sequence) { return sequence.intermediateText() == "$"; }

  TerminalState& m_state;
};

Terminal::Terminal(const TerminalSize& size) : Terminal(size, TerminalSettings()) {}

Terminal::Terminal(const TerminalSize& size, TerminalSettings settings)
    : m_state(size, std::move(settings)),
      m_dispatcher(std::make_unique<Dispatcher>(m_state)),
      m_parser(*m_dispatcher) {}

Terminal::~Terminal() = default;

void Terminal::feed(std::string_view bytes, Milliseconds now) {
  if (bytes.empty()) return;
  m_state.now = std::max(m_state.now, now);
  holdsFrame(now);
  while (bytes.size() >= m_state.settings.bulkBytes) {
    const std::size_t taken = feedBulk(bytes);
    bytes.remove_prefix(taken);
  }
  m_parser.feed(bytes);
}

// Processes the start of a flood of output, on the bulk path if possible. Returns the bytes processed, never 0.
std::size_t Terminal::feedBulk(std::string_view bytes) {
  Screen& screen = m_state.screen;
  if (!m_parser.isIdle() || !screen.canPrintBulk()) {
    const std::size_t line = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    m_parser.feed(bytes.substr(0, line));
    bytes.remove_prefix(line);
    if (!m_parser.isIdle() || !screen.canPrintBulk()) {
      const std::size_t more = std::min(bytes.size(), m_state.settings.bulkBytes);
      m_parser.feed(bytes.substr(0, more));
      return line + more;
    }
    return line;
  }
  const auto [printed, scanned] = screen.printBulk(bytes);
  const std::size_t end = scanned == 0 ? std::min(bytes.size(), m_state.settings.bulkBytes) : scanned;
  m_parser.feed(bytes.substr(printed, end - printed));
  return end;
}

void Terminal::startOver() {
  m_parser.reset();
  m_mouse = MouseReporter();
  m_state.startOver();
}

void Terminal::resize(const TerminalSize& size) {
  m_state.setSize(size);
  reportSize(m_state);
}

bool Terminal::holdsFrame(Milliseconds now) {
  if (!m_state.modes.synchronizedUpdate) return false;
  if (now - m_state.updateBegan >= maxUpdate) endSynchronizedUpdate(m_state);
  return m_state.modes.synchronizedUpdate;
}

void Terminal::setPrefersDark(bool prefersDark) {
  const bool isNew = std::exchange(m_state.prefersDark, prefersDark) != prefersDark;
  if (isNew && m_state.modes.colorSchemeReports) reportColorScheme(m_state);
}

void Terminal::reportClipboard(ClipboardTarget target, std::string_view text) {
  if (m_state.settings.allowClipboardReads) m_state.reply(clipboardReport(target, text));
}

}  // namespace zolt::vt
