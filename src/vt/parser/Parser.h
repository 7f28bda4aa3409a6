#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/Utf8Decoder.h"
#include "vt/parser/ControlSequence.h"
#include "vt/parser/ParserTable.h"

namespace zolt::vt {

/// What a parser reports. The arguments are valid only during the call.
class ParserEvents {
 public:
  virtual ~ParserEvents() = default;

  /// Printable characters, U+0020 to U+007E. Never empty.
  virtual void printAscii(std::string_view text) = 0;
  /// Printable characters, none of them ASCII. Never empty.
  virtual void print(std::u32string_view text) = 0;
  /// A C0 or C1 control, except those that introduce or terminate sequences and strings.
  virtual void execute(char32_t control) = 0;
  virtual void escape(const EscapeSequence& sequence) = 0;
  virtual void control(const ControlSequence& sequence) = 0;
  /// An operating system command, terminated by BEL or ST.
  virtual void operatingSystemCommand(std::string_view text, bool endedByBell) = 0;
  /// A device control string, terminated by ST.
  virtual void deviceControl(const ControlSequence& head, std::string_view text) = 0;
};

/// Parses what programs write: UTF-8, control characters and escape sequences, by ECMA-48 and the state diagram of
/// DEC's terminals (ParserTable).
///
/// Input may be any bytes, split anywhere: that changes only how printed text is divided into calls. C1 controls are
/// U+0080 to U+009F, encoded in UTF-8; invalid UTF-8 is printed as U+FFFD. A string that is not terminated properly, or
/// exceeds its limit, has no effect. Takes time linear in the input, and memory bounded by the longest string allowed.
/// One thread at a time.
class Parser {
 public:
  static constexpr std::size_t maxCommandBytes = 2 << 10;        ///< an operating system command
  static constexpr std::size_t maxPayloadBytes = 8 << 20;        ///< OSC 52, which carries the clipboard
  static constexpr std::size_t maxLinkBytes = 4 << 10;           ///< OSC 8, whose URI alone may have 2083
  static constexpr std::size_t maxDeviceControlBytes = 1 << 20;  ///< a device control string

  /// `events` must outlive the parser.
  explicit Parser(ParserEvents& events) : m_events(events) {}

  void feed(std::string_view bytes);
  /// Like `feed`, without its fast paths. For tests, which compare the two.
  void feedByTable(std::string_view bytes);

  /// Forgets a sequence, a string or a character that is incomplete, without any effect of it.
  void reset();

  ParserState state() const { return m_state; }
  /// Whether the parser is between sequences and between characters.
  bool isIdle() const { return m_state == ParserState::Ground && !m_decoder.isInside(); }

 private:
  friend struct SavedFields;

  enum class OpenString { None, Command, DeviceControl };

  std::size_t takeRun(std::string_view bytes);
  std::size_t sequenceRun(std::string_view bytes);
  std::size_t printRun(std::string_view bytes);
  void takeByte(char byte);
  void take(char32_t character);
  void perform(Action action, char32_t character);
  void begin();
  void collect(char character);
  void addParameter(char character);
  void put(char32_t character);
  void endString(bool byBell);
  std::size_t maxStringBytes() const;

  ParserEvents& m_events;
  ParserState m_state = ParserState::Ground;
  Utf8Decoder m_decoder;

  ControlSequence m_sequence;
  bool m_tooManyIntermediates = false;
  bool m_tooManyParameters = false;
  OpenString m_open = OpenString::None;
  bool m_stringSuspended = false;  // by an ESC, which may be the start of ST
  bool m_stringTooLong = false;
  std::string m_string;
};

}  // namespace zolt::vt
