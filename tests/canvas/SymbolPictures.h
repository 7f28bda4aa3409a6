// A small language for what drawn symbols look like: pictures of one cell at many sizes, their edges and sums.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

#include "canvas/DrawnSymbols.h"

namespace zolt {

struct CellSize {
  int width;
  int height;

  friend std::ostream& operator<<(std::ostream& out, const CellSize& size) {
    return out << size.width << 'x' << size.height;
  }
};

inline CellMetrics metricsOf(CellSize size) {
  CellMetrics cell;
  cell.width = DevicePixels(size.width);
  cell.height = DevicePixels(size.height);
  cell.baseline = DevicePixels(size.height * 4 / 5);
  return cell;
}

/// The coverage of a cell's pixels, 0 to 255, row by row.
struct SymbolPicture {
  int width = 0;
  int height = 0;
  std::vector<int> pixels;

  int at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
  std::vector<int> row(int y) const {
    const auto begin = pixels.begin() + y * width;
    return {begin, begin + width};
  }
  std::vector<int> column(int x) const {
    std::vector<int> column;
    for (int y = 0; y < height; ++y)
      column.push_back(at(x, y));
    return column;
  }
  std::vector<int> left() const { return column(0); }
  std::vector<int> right() const { return column(width - 1); }
  std::vector<int> top() const { return row(0); }
  std::vector<int> bottom() const { return row(height - 1); }

  /// In pixels that are wholly covered.
  double area() const {
    double sum = 0;
    for (int pixel : pixels)
      sum += pixel;
    return sum / 255;
  }

  /// The picture whose pixel at x and y is that of `source`.
  template <class Source>
  static SymbolPicture of(int width, int height, Source source) {
    SymbolPicture picture{.width = width, .height = height, .pixels = {}};
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x)
        picture.pixels.push_back(source(x, y));
    }
    return picture;
  }
  SymbolPicture mirrored() const {
    return of(width, height, [&](int x, int y) { return at(width - 1 - x, y); });
  }
  SymbolPicture upsideDown() const {
    return of(width, height, [&](int x, int y) { return at(x, height - 1 - y); });
  }

  friend SymbolPicture operator+(const SymbolPicture& a, const SymbolPicture& b) {
    return of(a.width, a.height, [&](int x, int y) { return a.at(x, y) + b.at(x, y); });
  }
  /// What either covers.
  friend SymbolPicture operator|(const SymbolPicture& a, const SymbolPicture& b) {
    return of(a.width, a.height, [&](int x, int y) { return std::max(a.at(x, y), b.at(x, y)); });
  }
  friend bool operator==(const SymbolPicture&, const SymbolPicture&) = default;

  /// A character for each pixel: '.' not covered, '#' wholly, '+' in part; a line for each row.
  friend std::ostream& operator<<(std::ostream& out, const SymbolPicture& picture) {
    for (int y = 0; y < picture.height; ++y) {
      out << '\n';
      for (int pixel : picture.row(y))
        out << (pixel == 0 ? '.' : pixel == 255 ? '#' : '+');
    }
    return out;
  }
};

inline SymbolPicture drawn(char32_t symbol, CellSize size) {
  const GlyphMask mask = drawSymbol(symbol, metricsOf(size));
  EXPECT_EQ(mask.width, size.width);
  EXPECT_EQ(mask.height, size.height);
  return SymbolPicture::of(mask.width, mask.height, [&](int x, int y) { return qRed(mask.at(x, y)); });
}

/// A picture of '#' and '.' in rows that end with a space.
inline SymbolPicture picture(const std::string& rows) {
  const int width = static_cast<int>(rows.find(' '));
  const int height = static_cast<int>(std::ranges::count(rows, ' '));
  return SymbolPicture::of(width, height, [&](int x, int y) {
    return rows.at(static_cast<std::size_t>(y * (width + 1) + x)) == '#' ? 255 : 0;
  });
}

/// Whether no pixel differs by more than smoothing rounds.
inline bool nearlyEqual(const SymbolPicture& a, const SymbolPicture& b) {
  constexpr int kRounding = 8;
  return std::ranges::equal(a.pixels, b.pixels, [](int one, int other) { return std::abs(one - other) <= kRounding; });
}

/// Every pixel covered as much.
inline SymbolPicture flat(CellSize size, int coverage) {
  return SymbolPicture::of(size.width, size.height, [&](int, int) { return coverage; });
}

/// Lengths of what is covered and of what is not, along a row or column that is repeated in the next cell.
struct Runs {
  std::vector<int> covered;
  std::vector<int> gaps;
};
inline Runs runsOf(std::vector<int> pixels) {
  Runs runs;
  const auto isBegin = [&](std::size_t i) {
    return pixels[i] != 0 && pixels[(i + pixels.size() - 1) % pixels.size()] == 0;
  };
  std::size_t first = 0;
  while (first < pixels.size() && !isBegin(first))
    ++first;
  if (first == pixels.size()) return runs;
  std::ranges::rotate(pixels, pixels.begin() + static_cast<std::ptrdiff_t>(first));
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    std::vector<int>& kind = pixels[i] != 0 ? runs.covered : runs.gaps;
    if (i == 0 || (pixels[i] != 0) != (pixels[i - 1] != 0)) kind.push_back(0);
    ++kind.back();
  }
  return runs;
}

inline int unevenness(const std::vector<int>& lengths) {
  return lengths.empty() ? 0 : std::ranges::max(lengths) - std::ranges::min(lengths);
}

/// The tests of a topic, at sizes of small and large fonts, odd and even, at every scale.
class SymbolTest : public testing::TestWithParam<CellSize> {
 protected:
  SymbolPicture drawn(char32_t symbol) const { return zolt::drawn(symbol, size); }

  const CellSize size = GetParam();
  /// Of a light line.
  const int thickness = std::max(1, (size.width + 4) / 8);
};

inline const auto kCellSizes =
    testing::Values(CellSize{5, 9}, CellSize{6, 12}, CellSize{7, 15}, CellSize{8, 17}, CellSize{9, 18},
                    CellSize{10, 22}, CellSize{11, 21}, CellSize{12, 26}, CellSize{13, 27}, CellSize{16, 35},
                    CellSize{20, 20}, CellSize{24, 50}, CellSize{31, 64}, CellSize{41, 83});

inline std::string nameOfSize(const testing::TestParamInfo<CellSize>& info) {
  return std::to_string(info.param.width) + "x" + std::to_string(info.param.height);
}

}  // namespace zolt
