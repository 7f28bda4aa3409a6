#pragma once

#include <QStringList>

class QFont;

namespace zolt {

inline constexpr int kMaxToolTipWidth = 420;

/// Plain paragraphs as markup for a tooltip, in lines of at most `width` logical pixels in `font`, broken inside a word
/// if the word itself is longer. Very long paragraphs are truncated.
QString toolTipText(const QStringList& paragraphs, const QFont& font, int width = kMaxToolTipWidth);

}  // namespace zolt
