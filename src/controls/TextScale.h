#pragma once

#include <QFont>

namespace zolt {

/// How much larger than usual the text of `font` is: 1 for anything up to 15 pixels, in proportion to the text beyond.
/// Sizes that are laid down for the usual text are multiplied by it, so that larger text has as much room.
double textScale(const QFont& font);

/// `length`, which is laid down for the usual text, for the text of `font`. In logical pixels.
int scaledToText(int length, const QFont& font);

}  // namespace zolt
