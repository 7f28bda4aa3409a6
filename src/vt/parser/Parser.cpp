#include "vt/parser/Parser.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "text/TextScan.h"
#include "text/Utf8.h"
#include "vt/parser/SequenceScan.h"

namespace zolt::vt {

namespace {

constexpr char32_t kFirstNonAscii = 0x80;
// The first character after the C1 controls.
constexpr char32_t kFirstPrinted = 0xA0;
constexpr char32_t kBell = 0x07;
constexpr std::uint8_t kEscape = 0x1B;

}  // namespace

void Parser::reset() {
  m_state = ParserState::Ground;
  m_decoder = {};
  m_open = OpenString::None;
  m_stringSuspended = false;
  m_stringTooLong = false;
  m_string.clear();
}

void Parser::feed(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t taken = m_state == ParserState::Ground && !m_decoder.isInside() ? takeRun(bytes) : 0;
    bytes.remove_prefix(taken);
    if (bytes.empty()) return;
    takeByte(bytes.front());
    bytes.remove_prefix(1);
  }
}

// The fast path for text, controls and complete control sequences, in the ground state and between characters. Returns
// how many bytes it has taken; the state machine takes over from there.
std::size_t Parser::takeRun(std::string_view bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::string_view rest = bytes.substr(done);
    const auto first = static_cast<std::uint8_t>(rest.front());
    std::size_t taken = 0;
    if (first == kEscape) {
      taken = sequenceRun(rest);
    } else if (first < ' ') {
      m_events.execute(first);
      taken = 1;
    } else {
      taken = printRun(rest);
    }
    if (taken == 0) break;
    done += taken;
  }
  return done;
}

// Runs the control sequence at the start of `bytes` if it is complete and usual. Returns its length, or 0.
std::size_t Parser::sequenceRun(std::string_view bytes) {
  const std::size_t taken = scanControlSequence(bytes, m_sequence);
  if (taken != 0) m_events.control(m_sequence);
  return taken;
}

void Parser::feedByTable(std::string_view bytes) {
  for (const char byte : bytes) {
    takeByte(byte);
  }
}

// Prints the text at the start of `bytes`, in the ground state and between characters. Returns its length.
std::size_t Parser::printRun(std::string_view bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    if (const std::size_t ascii = printablePrefix(bytes.substr(done)); ascii != 0) {
      m_events.printAscii(bytes.substr(done, ascii));
      done += ascii;
      continue;
    }
    // Only complete and well-formed characters: the rest of the last one may be in the next chunk.
    std::array<char32_t, 256> run;
    std::size_t length = 0;
    std::size_t at = done;
    while (at < bytes.size() && length < run.size()) {
      const DecodedScalar character = decodeUtf8(bytes.data() + at, bytes.data() + bytes.size());
      if (character.scalar < kFirstPrinted) break;
      run[length++] = character.scalar;
      at += character.length;
    }
    if (length == 0) break;
    m_events.print({run.data(), length});
    done = at;
  }
  return done;
}

void Parser::takeByte(char byte) {
  Utf8Decoder::Outcome outcome = Utf8Decoder::Outcome::Refused;
  while (outcome == Utf8Decoder::Outcome::Refused) {
    outcome = m_decoder.take(static_cast<std::uint8_t>(byte));
    if (outcome != Utf8Decoder::Outcome::NeedsMore) take(m_decoder.scalar());
  }
}

void Parser::take(char32_t character) {
  const Transition transition = kTransitions[static_cast<std::size_t>(m_state)][characterClass(character)];
  // Set before the event, whose receiver may ask for the state.
  m_state = transition.next;
  perform(transition.action, character);
}

void Parser::perform(Action action, char32_t character) {
  switch (action) {
    case Action::Ignore:
      break;
    case Action::Print:
      if (character < kFirstNonAscii) {
        const char ascii = static_cast<char>(character);
        m_events.printAscii({&ascii, 1});
      } else {
        m_events.print({&character, 1});
      }
      break;
    case Action::Execute:
      m_events.execute(character);
      break;
    case Action::Begin:
      begin();
      break;
    case Action::Collect:
      collect(static_cast<char>(character));
      break;
    case Action::Parameter:
      addParameter(static_cast<char>(character));
      break;
    case Action::DispatchEscape:
      if (m_stringSuspended && character == '\\') {
        endString(false);
        break;
      }
      if (m_stringSuspended) begin();
      if (!m_tooManyIntermediates) {
        m_events.escape({.intermediates = m_sequence.intermediateText(), .final = static_cast<char>(character)});
      }
      break;
    case Action::DispatchCsi:
      m_sequence.final = static_cast<char>(character);
      if (!m_tooManyIntermediates) m_events.control(m_sequence);
      break;
    case Action::BeginDcs:
      m_sequence.final = static_cast<char>(character);
      m_open = m_tooManyIntermediates ? OpenString::None : OpenString::DeviceControl;
      break;
    case Action::BeginOsc:
      begin();
      m_open = OpenString::Command;
      break;
    case Action::Put:
      put(character);
      break;
    case Action::EndString:
      endString(character == kBell);
      break;
    case Action::SuspendString:
      // Keep what was collected until the next character shows whether this ESC is part of ST.
      m_stringSuspended = true;
      break;
  }
}

void Parser::begin() {
  m_sequence.prefix = 0;
  m_sequence.final = 0;
  m_sequence.intermediateCount = 0;
  m_sequence.parameterCount = 0;
  m_tooManyIntermediates = false;
  m_tooManyParameters = false;
  m_open = OpenString::None;
  m_stringSuspended = false;
  m_stringTooLong = false;
  // Free the memory of a long string.
  if (m_string.capacity() > maxCommandBytes) m_string = std::string();
  m_string.clear();
}

void Parser::collect(char character) {
  // The ESC was not part of ST: it starts a new escape sequence.
  if (m_stringSuspended) begin();
  if (character >= '<' && character <= '?') {
    m_sequence.prefix = character;
  } else if (m_sequence.intermediateCount < ControlSequence::maxIntermediates) {
    m_sequence.intermediates[m_sequence.intermediateCount++] = character;
  } else {
    m_tooManyIntermediates = true;
  }
}

void Parser::addParameter(char character) {
  std::uint8_t& count = m_sequence.parameterCount;
  if (count == 0) m_sequence.parameters[count++] = {};
  if (m_tooManyParameters) return;
  if (character == ';' || character == ':') {
    m_tooManyParameters = count == ControlSequence::maxParameters;
    if (!m_tooManyParameters) m_sequence.parameters[count++] = {.isSub = character == ':'};
    return;
  }
  std::int32_t& value = m_sequence.parameters[count - 1U].value;
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  const std::int32_t before = std::max(value, 0);
  const std::int32_t digit = character - '0';
  value = before > (kMax - digit) / 10 ? kMax : before * 10 + digit;
}

std::size_t Parser::maxStringBytes() const {
  if (m_open == OpenString::DeviceControl) return maxDeviceControlBytes;
  if (m_string.starts_with("8;")) return maxLinkBytes;
  return m_string.starts_with("52;") ? maxPayloadBytes : maxCommandBytes;
}

void Parser::put(char32_t character) {
  if (m_open == OpenString::None || m_stringTooLong) return;
  appendUtf8(m_string, character);
  if (m_string.size() <= maxStringBytes()) return;
  m_stringTooLong = true;
  m_string = std::string();
}

void Parser::endString(bool byBell) {
  const bool counts = !m_stringTooLong;
  const OpenString open = std::exchange(m_open, OpenString::None);
  m_stringSuspended = false;
  if (counts && open == OpenString::Command) m_events.operatingSystemCommand(m_string, byBell);
  if (counts && open == OpenString::DeviceControl) m_events.deviceControl(m_sequence, m_string);
}

}  // namespace zolt::vt
