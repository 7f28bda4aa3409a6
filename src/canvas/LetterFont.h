#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>

#include "canvas/GlyphMask.h"

namespace zolt {

/// From which font a letter is drawn.
struct LetterFont {
  enum class Use {
    Any,     ///< whichever font Qt finds
    Shaped,  ///< this one, which has rules for the letter's script
    Bare,    ///< this one, glyph by glyph: it has no such rules, and Qt would not use it
    None,    ///< no font has the letter
  };
  Use use = Use::Any;
  QRawFont font = {};
};

/// The font for a letter in text of `font`. For scripts that need shaping rules (OpenType, GSUB), Qt loads one
/// installed font after the other until one has them, and warns of each that has not; here only those are asked that
/// are known to be for the script. Main thread.
LetterFont letterFont(char32_t letter, const QFont& font);

/// A cluster drawn with a font's glyphs on top of each other, as its combining marks are made to stand; smaller where
/// it would not fit its cells.
GlyphMask bareCluster(const QString& cluster, const QRawFont& font, const ClusterRoom& room);

}  // namespace zolt
