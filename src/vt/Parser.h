#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vt/ControlSequence.h"
#include "vt/ParserTable.h"
#include "vt/Utf8Decoder.h"

namespace zolt::vt {

/// What a parser makes of the bytes it is fed. The texts given last as long as the call.
class ParserEvents {
 public:
  virtual ~ParserEvents() = default;

  /// Characters to show: U+0020 to U+007E. Never empty.
  virtual void printAscii(std::string_view text) = 0;
  /// Characters to show, none of them ASCII or a control. Never empty.
  virtual void print(std::u32string_view text) = 0;
  /// A C0 or C1 control, those that begin or end sequences and strings excepted.
  virtual void execute(char32_t control) = 0;
  virtual void escape(const EscapeSequence& sequence) = 0;
  virtual void control(const ControlSequence& sequence) = 0;
  /// An operating system command that was ended properly, by BEL or by ST.
  virtual void operatingSystemCommand(std::string_view text, bool endedByBell) = 0;
  /// A device control string that was ended properly.
  virtual void deviceControl(const ControlSequence& head, std::string_view text) = 0;
};

/// Takes a terminal's input apart: UTF-8, control characters, and sequences by ECMA-48 and DEC's diagram (ParserTable).
///
/// The bytes may be any, and may be cut anywhere: it makes no difference to what is told, but to how printed text is
/// split. C1 controls are those of Unicode, U+0080 to U+009F; a byte that is not UTF-8 is U+FFFD. A string that is not
/// ended properly, or is longer than it may be, has no effect. Work is in proportion to the bytes, and memory bounded
/// by the longest string. One thread at a time.
class Parser {
 public:
  /// The most bytes of a string: an operating system command, one that carries a payload (52), a device control string.
  static constexpr std::size_t maxCommandBytes = 2 << 10;
  static constexpr std::size_t maxPayloadBytes = 8 << 20;
  static constexpr std::size_t maxLinkBytes = 4 << 10;  ///< a hyperlink (8), whose address alone may have 2083
  static constexpr std::size_t maxDeviceControlBytes = 1 << 20;

  /// `events` must outlive the parser.
  explicit Parser(ParserEvents& events) : m_events(events) {}

  void feed(std::string_view bytes);
  /// As `feed`, each byte by the table. For tests: it makes no difference.
  void feedByTable(std::string_view bytes);

  State state() const { return m_state; }
  /// Whether what comes begins anew: no sequence and no character has begun.
  bool isIdle() const { return m_state == State::Ground && !m_decoder.isInside(); }

 private:
  enum class OpenString { None, Command, DeviceControl };

  std::size_t takeRun(std::string_view bytes);
  std::size_t controlRun(std::string_view bytes);
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
  State m_state = State::Ground;
  Utf8Decoder m_decoder;

  ControlSequence m_sequence;
  bool m_overfull = false;        // more intermediates than there is room for
  bool m_parametersFull = false;  // more parameters
  OpenString m_open = OpenString::None;
  bool m_suspended = false;  // the string is followed by ESC
  bool m_tooLong = false;    // the string
  std::string m_string;
};

}  // namespace zolt::vt
