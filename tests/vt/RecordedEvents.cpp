#include "vt/RecordedEvents.h"

#include <utility>

namespace zolt::vt {

namespace {

std::string utf8(char32_t c) {
  std::string bytes;
  const auto put = [&](unsigned value) { bytes += static_cast<char>(value); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 + c / 64);
    put(0x80 + c % 64);
  } else if (c < 0x10000) {
    put(0xE0 + c / 4096);
    put(0x80 + c / 64 % 64);
    put(0x80 + c % 64);
  } else {
    put(0xF0 + c / 262144);
    put(0x80 + c / 4096 % 64);
    put(0x80 + c / 64 % 64);
    put(0x80 + c % 64);
  }
  return bytes;
}

// "?25;1:2 $ p": prefix, parameters, intermediates and final.
std::string described(const ControlSequence& sequence) {
  std::string text;
  if (sequence.prefix != 0) text += sequence.prefix;
  for (std::size_t i = 0; i < sequence.parameterCount; ++i) {
    const Parameter& parameter = sequence.parameters[i];
    if (i > 0) text += parameter.isSub ? ':' : ';';
    if (parameter.value != Parameter::omitted) text += std::to_string(parameter.value);
  }
  return text + ' ' + std::string(sequence.intermediateText()) + sequence.final;
}

}  // namespace

void RecordedEvents::add(std::string line) {
  lines.push_back(std::move(line));
  m_printing = false;
}

void RecordedEvents::addPrinted(std::string_view text) {
  if (!m_printing) add("print ");
  m_printing = true;
  lines.back() += text;
}

void RecordedEvents::printAscii(std::string_view text) {
  addPrinted(text);
}

void RecordedEvents::print(std::u32string_view text) {
  for (const char32_t c : text) {
    addPrinted(utf8(c));
  }
}

void RecordedEvents::execute(char32_t control) {
  add("execute " + std::to_string(static_cast<unsigned>(control)));
}

void RecordedEvents::escape(const EscapeSequence& sequence) {
  add("escape " + std::string(sequence.intermediates) + sequence.final);
}

void RecordedEvents::control(const ControlSequence& sequence) {
  add("control " + described(sequence));
}

void RecordedEvents::operatingSystemCommand(std::string_view text, bool endedByBell) {
  add((endedByBell ? "command by bell " : "command ") + std::string(text));
}

void RecordedEvents::deviceControl(const ControlSequence& head, std::string_view text) {
  add("device " + described(head) + " " + std::string(text));
}

std::vector<std::string> eventsOf(std::string_view bytes) {
  RecordedEvents events;
  Parser(events).feed(bytes);
  return events.lines;
}

}  // namespace zolt::vt
