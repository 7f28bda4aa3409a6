#include "canvas/LetterFont.h"

#include <QByteArray>
#include <QChar>
#include <QFontDatabase>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

namespace zolt {

namespace {

// A script whose letters Qt draws only with a font that has shaping rules for it.
struct ShapedScript {
  QChar::Script script;
  QFontDatabase::WritingSystem system;
  std::array<const char*, 3> tags;  // of the rules, new and old (OpenType, script tags)
  const char* family = nullptr;     // a font for it, where Qt cannot tell which are
};

constexpr std::array kShapedScripts{
    ShapedScript{QChar::Script_Syriac, QFontDatabase::Syriac, {"syrc"}},
    ShapedScript{QChar::Script_Thaana, QFontDatabase::Thaana, {"thaa"}, "Noto Sans Thaana"},
    ShapedScript{QChar::Script_Devanagari, QFontDatabase::Devanagari, {"dev3", "dev2", "deva"}},
    ShapedScript{QChar::Script_Bengali, QFontDatabase::Bengali, {"bng3", "bng2", "beng"}},
    ShapedScript{QChar::Script_Gurmukhi, QFontDatabase::Gurmukhi, {"gur3", "gur2", "guru"}},
    ShapedScript{QChar::Script_Gujarati, QFontDatabase::Gujarati, {"gjr3", "gjr2", "gujr"}},
    ShapedScript{QChar::Script_Oriya, QFontDatabase::Oriya, {"ory3", "ory2", "orya"}},
    ShapedScript{QChar::Script_Tamil, QFontDatabase::Tamil, {"tml3", "tml2", "taml"}},
    ShapedScript{QChar::Script_Telugu, QFontDatabase::Telugu, {"tel3", "tel2", "telu"}},
    ShapedScript{QChar::Script_Kannada, QFontDatabase::Kannada, {"knd3", "knd2", "knda"}},
    ShapedScript{QChar::Script_Malayalam, QFontDatabase::Malayalam, {"mlm3", "mlm2", "mlym"}},
    ShapedScript{QChar::Script_Sinhala, QFontDatabase::Sinhala, {"sinh"}},
    ShapedScript{QChar::Script_Khmer, QFontDatabase::Khmer, {"khmr"}},
    ShapedScript{QChar::Script_Nko, QFontDatabase::Nko, {"nko "}, "Noto Sans NKo"},
};

constexpr const char* kWideCoverage[] = {"DejaVu Sans", "FreeSerif", "FreeSans"};

int number(const QByteArray& table, qsizetype at) {
  if (at + 2 > table.size()) return 0;
  return static_cast<unsigned char>(table[at]) << 8 | static_cast<unsigned char>(table[at + 1]);
}

// The table begins with the place of its list of scripts at byte 4; there, each script has a tag and a place.
bool hasRules(const QRawFont& font, const ShapedScript& script) {
  constexpr int kListAt = 4;
  constexpr int kCountSize = 2;
  constexpr int kEntrySize = 6;
  const QByteArray table = font.fontTable("GSUB");
  const int list = number(table, kListAt);
  for (int i = 0; i < number(table, list); ++i) {
    const QByteArray tag = table.mid(list + kCountSize + i * kEntrySize, 4);
    if (std::ranges::any_of(script.tags, [&](const char* each) { return each != nullptr && tag == each; })) return true;
  }
  return false;
}

QStringList candidates(const ShapedScript& script, const QFont& font) {
  QStringList families = font.families() + QFontDatabase::families(script.system);
  if (script.family != nullptr) families.append(QLatin1String(script.family));
  for (const char* family : kWideCoverage) {
    families.append(QLatin1String(family));
  }
  return families;
}

LetterFont find(char32_t letter, const QFont& font, const ShapedScript& script) {
  LetterFont found{.use = LetterFont::Use::None};
  for (const QString& family : candidates(script, font)) {
    QFont asked = font;
    asked.setFamilies({family});
    const QRawFont loaded = QRawFont::fromFont(asked);
    if (!loaded.supportsCharacter(letter)) continue;
    if (hasRules(loaded, script)) return {.use = LetterFont::Use::Shaped, .font = loaded};
    if (found.use == LetterFont::Use::None) found = {.use = LetterFont::Use::Bare, .font = loaded};
  }
  return found;
}

// One picture of both, drawn from the same point.
GlyphMask together(const GlyphMask& one, const GlyphMask& other) {
  if (one.empty() || other.empty()) return one.empty() ? other : one;
  const QPoint place(std::min(one.left, other.left), std::min(one.top, other.top));
  const QPoint end(std::max(one.left + one.width, other.left + other.width),
                   std::max(one.top + one.height, other.top + other.height));
  return GlyphMask::filled(place, QSize(end.x() - place.x(), end.y() - place.y()), [&](int x, int y) {
    std::array<QRgb, 2> parts{};
    for (const GlyphMask* part : {&one, &other}) {
      const QPoint at = place + QPoint(x - part->left, y - part->top);
      if (QRect(0, 0, part->width, part->height).contains(at)) parts[part == &other ? 1 : 0] = part->at(at.x(), at.y());
    }
    const auto [a, b] = parts;
    return qRgba(std::max(qRed(a), qRed(b)), std::max(qGreen(a), qGreen(b)), std::max(qBlue(a), qBlue(b)),
                 std::max(qAlpha(a), qAlpha(b)));
  });
}

}  // namespace

LetterFont letterFont(char32_t letter, const QFont& font) {
#ifdef Q_OS_MACOS  // which knows by itself what its fonts have
  Q_UNUSED(letter)
  Q_UNUSED(font)
  return {};
#else
  const auto* script = std::ranges::find(kShapedScripts, QChar::script(letter), &ShapedScript::script);
  return script == kShapedScripts.end() ? LetterFont() : find(letter, font, *script);
#endif
}

GlyphMask bareCluster(const QString& cluster, const QRawFont& font, const ClusterRoom& room) {
  QRawFont fitting = font;
  const QList<quint32> glyphs = font.glyphIndexesForString(cluster);
  if (glyphs.isEmpty()) return {};
  const auto wide = static_cast<double>(room.width.value);
  double advance = font.advancesForGlyphIndexes(glyphs).front().x();
  if (advance > wide) {
    fitting.setPixelSize(font.pixelSize() * wide / advance);
    advance = wide;
  }
  GlyphMask mask;
  for (const quint32 glyph : glyphs) {
    if (glyph != 0) mask = together(mask, GlyphMask::of(fitting, glyph));
  }
  mask.left += static_cast<int>(std::floor((wide - advance) / 2));
  return mask;
}

}  // namespace zolt
