#include "emulation/ReferenceParser.h"

#include <utf8proc.h>

#include <cstdlib>
#include <limits>

#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

std::vector<std::string> charactersOf(std::string_view text) {
  std::vector<std::string> characters;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t end = longClusterEnd(text, position);
    characters.emplace_back(text.substr(position, end - position));
    position = end;
  }
  return characters;
}

// The canonical composition; its bytes order like its scalars.
std::string composed(const std::string& character) {
  utf8proc_uint8_t* result = nullptr;
  const auto size = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(character.data()),
                                 static_cast<utf8proc_ssize_t>(character.size()), &result,
                                 static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
  std::string copy(reinterpret_cast<const char*>(result), static_cast<std::size_t>(size));
  std::free(result);
  return copy;
}

bool equals(const std::string& character, const char* ascii) {
  return composed(character) == ascii;
}

// An optionally signed decimal number that fits 64 bits.
std::optional<std::int64_t> numberIn(const std::string& field) {
  std::size_t i = 0;
  const bool negative = !field.empty() && field[0] == '-';
  if (negative || (!field.empty() && field[0] == '+')) i = 1;
  if (i == field.size()) return std::nullopt;
  const std::uint64_t limit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
  std::uint64_t value = 0;
  for (; i < field.size(); ++i) {
    if (field[i] < '0' || field[i] > '9') return std::nullopt;
    const auto digit = static_cast<std::uint64_t>(field[i] - '0');
    if (value > (limit - digit) / 10) return std::nullopt;
    value = value * 10 + digit;
  }
  return static_cast<std::int64_t>(negative ? 0 - value : value);
}

constexpr Color kStandard[8] = {{0, 0, 0, 1},   {0.8, 0, 0, 1},   {0, 0.8, 0, 1},   {0.8, 0.8, 0, 1},
                                {0, 0, 0.8, 1}, {0.8, 0, 0.8, 1}, {0, 0.8, 0.8, 1}, {0.75, 0.75, 0.75, 1}};
constexpr Color kBright[8] = {{0.5, 0.5, 0.5, 1}, {1, 0.33, 0.33, 1}, {0.33, 1, 0.33, 1}, {1, 1, 0.33, 1},
                              {0.33, 0.33, 1, 1}, {1, 0.33, 1, 1},    {0.33, 1, 1, 1},    {1, 1, 1, 1}};

}  // namespace

StyledRuns ReferenceParser::parse(std::string_view whole) {
  const Characters text = charactersOf(whole);
  StyledRuns result;
  std::string pending;
  std::size_t position = 0;
  while (position < text.size()) {
    const std::string& character = text[position];
    if (character == "\x1B") {
      if (!pending.empty()) result.push_back(makeRun(pending));
      pending.clear();
      if (const Position after = parseEscapeSequence(text, position)) {
        position = *after;
        continue;
      }
    }
    const bool singleAscii = character.size() == 1 && static_cast<unsigned char>(character[0]) < 0x80;
    if ((singleAscii && character[0] >= 32) || character == "\n" || character == "\r" || character == "\t") {
      pending += character;
    }
    ++position;
  }
  if (!pending.empty()) result.push_back(makeRun(pending));
  return result;
}

ReferenceParser::Position ReferenceParser::parseEscapeSequence(const Characters& text, std::size_t escape) {
  const std::size_t next = escape + 1;
  if (next == text.size()) return std::nullopt;
  if (equals(text[next], "[")) return parseCSI(text, next);
  if (equals(text[next], "]")) return parseOSC(text, next);
  for (const char* designation : {"(", ")", "*", "+"}) {
    if (equals(text[next], designation)) return std::min(next + 2, text.size());
  }
  return next + 1;
}

ReferenceParser::Position ReferenceParser::parseCSI(const Characters& text, std::size_t bracket) {
  Characters params;
  for (std::size_t position = bracket + 1; position < text.size(); ++position) {
    const std::string ordered = composed(text[position]);
    if (ordered >= "@" && ordered <= "~") {
      if (ordered == "m") handleSGR(params);
      return position + 1;
    }
    params.push_back(text[position]);
  }
  return std::nullopt;
}

ReferenceParser::Position ReferenceParser::parseOSC(const Characters& text, std::size_t bracket) {
  for (std::size_t position = bracket + 1; position < text.size(); ++position) {
    if (equals(text[position], "\x07")) return position + 1;
    if (equals(text[position], "\x1B") && position + 1 < text.size() && equals(text[position + 1], "\\")) {
      return position + 2;
    }
  }
  return text.size();
}

void ReferenceParser::handleSGR(const Characters& params) {
  std::vector<std::int64_t> codes;
  if (params.empty()) {
    codes.push_back(0);
  } else {
    Characters fields(1);
    for (const std::string& character : params) {
      if (equals(character, ";")) {
        fields.emplace_back();
      } else {
        fields.back() += character;
      }
    }
    for (const std::string& field : fields) {
      if (const auto code = numberIn(field)) codes.push_back(*code);
    }
  }
  const std::size_t n = codes.size();
  for (std::size_t i = 0; i < n; ++i) {
    const std::int64_t code = codes[i];
    if (code == 0) {
      const bool stops = m_stops;
      *this = ReferenceParser();
      m_stops = stops;
    }
    if (code == 1) m_bold = true;
    if (code == 2) m_dim = true;
    if (code == 3) m_italic = true;
    if (code == 4) m_underline = true;
    if (code == 7) m_reverse = true;
    if (code == 8) m_hidden = true;
    if (code == 9) m_strikethrough = true;
    if (code == 22) m_bold = m_dim = false;
    if (code == 23) m_italic = false;
    if (code == 24) m_underline = false;
    if (code == 27) m_reverse = false;
    if (code == 28) m_hidden = false;
    if (code == 29) m_strikethrough = false;
    if (code >= 30 && code <= 37) m_foreground = kStandard[code - 30];
    if (code == 39) m_foreground = {1, 1, 1, 1};
    if (code >= 40 && code <= 47) m_background = kStandard[code - 40];
    if (code == 49) m_background = {0, 0, 0, 0};
    if (code >= 90 && code <= 97) m_foreground = kBright[code - 90];
    if (code >= 100 && code <= 107) m_background = kBright[code - 100];
    if (code == 38 || code == 48) {
      Color& color = code == 38 ? m_foreground : m_background;
      if (i + 1 >= n) continue;
      if (codes[i + 1] == 5) {
        if (i + 2 >= n) continue;
        color = color256(codes[i + 2]);
        i += 2;
      } else if (codes[i + 1] == 2) {
        if (i + 4 >= n) continue;
        color = {static_cast<double>(codes[i + 2]) / 255.0, static_cast<double>(codes[i + 3]) / 255.0,
                 static_cast<double>(codes[i + 4]) / 255.0, 1.0};
        i += 4;
      }
    }
  }
}

Color ReferenceParser::color256(std::int64_t n) {
  if (n < 0 || n - 232 > (std::numeric_limits<std::int64_t>::max() - 8) / 10) {
    m_stops = true;
    return {};
  }
  if (n <= 7) return kStandard[n];
  if (n <= 15) return kBright[n - 8];
  if (n <= 231) {
    const std::int64_t k = n - 16;
    const auto level = [](std::int64_t v) { return v == 0 ? 0.0 : static_cast<double>(v * 40 + 55) / 255.0; };
    return {level(k / 36), level((k / 6) % 6), level(k % 6), 1.0};
  }
  const double white = static_cast<double>((n - 232) * 10 + 8) / 255.0;
  return {white, white, white, 1.0};
}

StyledRun ReferenceParser::makeRun(const std::string& text) const {
  StyledRun run{.text = text, .attributes = {}};
  run.attributes.font = {14, m_bold ? FontWeight::Bold : FontWeight::Regular,
                         m_italic ? FontSlant::Italic : FontSlant::Upright};
  const Color foreground = m_reverse ? m_background : m_foreground;
  const Color background = m_reverse ? m_foreground : m_background;
  run.attributes.foreground = foreground;
  if (m_dim) run.attributes.foreground.alpha = 0.5;
  if (m_hidden) run.attributes.foreground = {0, 0, 0, 0};
  if (!(background == Color{0, 0, 0, 0})) run.attributes.background = background;
  if (m_underline) run.attributes.underline = Line::Single;
  if (m_strikethrough) run.attributes.strikethrough = Line::Single;
  return run;
}

}  // namespace zolt
