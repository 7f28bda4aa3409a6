#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vt/Parser.h"

namespace zolt::vt {

/// Writes down what a parser tells, one line each; printed text that comes in several pieces is one line.
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

/// What a parser tells of `bytes`.
std::vector<std::string> eventsOf(std::string_view bytes);

}  // namespace zolt::vt
