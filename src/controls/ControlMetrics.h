#pragma once

namespace zolt {

/// The distance from the border of a field or picker to its text, in logical pixels. One value, so that texts in a
/// column line up.
inline constexpr int kControlTextInset = 10;

}  // namespace zolt
