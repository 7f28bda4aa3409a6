#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vt/parser/Parser.h"

namespace zolt::vt {

/// Records a parser's events, one per line; consecutive printed text is joined into one line.
class RecordedEvents : public ParserEvents {
 public:
  void printAscii(std::string_view text) override;
  void print(std::u32string_view text) override;
  void execute(char32_t control) override;
  void escape(const EscapeSequence& sequence) override;
  void control(const ControlSequence& sequence) override;
  void operatingSystemCommand(std::string_view text, bool endedByBell) override;
  void deviceControl(const ControlSequence& head, std::string_view text) override;

  std::vector<std::string> lines;

 private:
  void addPrinted(std::string_view text);
  void add(std::string line);

  bool m_printing = false;
};

/// The events that a parser reports for `bytes`.
std::vector<std::string> eventsOf(std::string_view bytes);

}  // namespace zolt::vt
