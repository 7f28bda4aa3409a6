#include "canvas/Syllables.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <cstddef>

#include "text/Utf8.h"

namespace zolt {

namespace {

// A script with signs that take cells. After its joiner the next letter changes its form, or stands below.
struct Script {
  char32_t first;
  char32_t last;  // included
  char32_t joiner = 0;
};

// In order. Tamil and Sinhala show the sign that would join letters.
constexpr std::array kScripts{
    Script{0x0900, 0x097F, 0x094D},  // Devanagari
    Script{0x0980, 0x09FF, 0x09CD},  // Bengali
    Script{0x0A00, 0x0A7F, 0x0A4D},  // Gurmukhi
    Script{0x0A80, 0x0AFF, 0x0ACD},  // Gujarati
    Script{0x0B00, 0x0B7F, 0x0B4D},  // Oriya
    Script{0x0B80, 0x0BFF},          // Tamil
    Script{0x0C00, 0x0C7F, 0x0C4D},  // Telugu
    Script{0x0C80, 0x0CFF, 0x0CCD},  // Kannada
    Script{0x0D00, 0x0D7F, 0x0D4D},  // Malayalam
    Script{0x0D80, 0x0DFF},          // Sinhala
    Script{0x0E00, 0x0E7F},          // Thai
    Script{0x0E80, 0x0EFF},          // Lao
    Script{0x0F00, 0x0FFF},          // Tibetan
    Script{0x1000, 0x109F, 0x1039},  // Myanmar
    Script{0x1780, 0x17FF, 0x17D2},  // Khmer
    Script{0x1A20, 0x1AAF, 0x1A60},  // Tai Tham
    Script{0x1B00, 0x1B7F, 0x1B44},  // Balinese
    Script{0x1B80, 0x1BBF, 0x1BAB},  // Sundanese
    Script{0xA880, 0xA8DF, 0xA8C4},  // Saurashtra
    Script{0xA980, 0xA9DF, 0xA9C0},  // Javanese
    Script{0xAA00, 0xAA5F},          // Cham
    Script{0xABC0, 0xABFF},          // Meetei Mayek
};

constexpr char32_t kZeroWidthJoiner = 0x200D;
constexpr char32_t kThaiSaraAm = 0x0E33;
constexpr char32_t kLaoAm = 0x0EB3;

// A sign of a syllable: a mark, or one of two letters that are a mark and a vowel.
bool isSign(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
      return true;
    default:
      return character == kThaiSaraAm || character == kLaoAm;
  }
}

// Null if there is none.
const Script* scriptOf(char32_t character) {
  const auto* script = std::ranges::lower_bound(kScripts, character, {}, &Script::last);
  return script == kScripts.end() || character < script->first ? nullptr : script;
}

}  // namespace

bool makesSyllables(char32_t character) {
  return scriptOf(character) != nullptr;
}

bool continuesSyllable(std::string_view before, std::string_view next) {
  std::size_t length = 0;
  const char32_t character = scalarAt(next, 0, length);
  const Script* script = scriptOf(character);
  if (script == nullptr || scriptOf(scalarAt(before, 0, length)) != script) return false;
  if (isSign(character)) return true;
  const char32_t end = scalarBefore(before, before.size());
  return QChar::isLetter(character) && (end == kZeroWidthJoiner || (end == script->joiner && script->joiner != 0));
}

}  // namespace zolt
