#pragma once

#include <cstdint>

#include "vt/cells/Cell.h"

namespace zolt::vt {

/// What stands at the head of a piece of saved cells: `count` cells of one kind, whose content follows; or a pen, which
/// holds for the cells after it. A value.
struct CellPiece {
  enum class Content : std::uint8_t {
    None,
    Ascii,    ///< narrow characters U+0020 to U+007E, a byte each
    Scalar,   ///< other characters, in UTF-8
    Cluster,  ///< by number
    Pen,      ///< a style and a link, by number; `count` is 1 if it is protected
  };
  enum class Shape : std::uint8_t {
    Narrow,
    WideAndTail,  ///< two cells; the tail has the pen of the wide one
    Wide,         ///< without its tail
    Tail,
    Filler,
  };

  Content content = Content::None;
  Shape shape = Shape::Narrow;
  std::uint64_t count = 0;

  /// The number that it is saved as: small for short pieces.
  constexpr std::uint64_t head() const {
    return (count * kShapes + static_cast<std::uint64_t>(shape)) * kContents + static_cast<std::uint64_t>(content);
  }
  static constexpr CellPiece fromHead(std::uint64_t head) {
    return {.content = static_cast<Content>(head % kContents),
            .shape = static_cast<Shape>(head / kContents % kShapes),
            .count = head / kContents / kShapes};
  }

  /// The number of cells that each of `count` stands for.
  constexpr int cellsEach() const { return shape == Shape::WideAndTail ? 2 : 1; }
  constexpr Cell::Width width() const {
    if (shape == Shape::WideAndTail || shape == Shape::Wide) return Cell::Width::Wide;
    if (shape == Shape::Tail) return Cell::Width::Tail;
    return shape == Shape::Filler ? Cell::Width::Filler : Cell::Width::Narrow;
  }

 private:
  static constexpr std::uint64_t kContents = 5;
  static constexpr std::uint64_t kShapes = 5;
};

}  // namespace zolt::vt
