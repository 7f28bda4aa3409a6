#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace zolt {

/// Names a pane within its layout.
enum class PaneId : std::uint64_t {};

enum class Direction { Left, Right, Up, Down };
/// How the parts of a split stand: side by side, or one above the other.
enum class SplitAxis { SideBySide, Stacked };

/// In logical pixels; both at least 0.
struct PaneSize {
  int width = 0;
  int height = 0;

  friend bool operator==(const PaneSize&, const PaneSize&) = default;
};
struct PaneRect {
  int x = 0;
  int y = 0;
  PaneSize size;

  friend bool operator==(const PaneRect&, const PaneRect&) = default;
};

/// Where the panes of a tab stand: one pane, or parts side by side or one above the other, each again a pane or parts
/// in the other direction. A part has a share of the length, and keeps it when the whole changes its size.
///
/// A value without side effects; any thread.
class SplitLayout {
 public:
  /// The line between two parts, and what can be grabbed around it.
  static constexpr int dividerBreadth = 5;
  /// No part is made narrower or shorter than this by hand.
  static constexpr PaneSize smallestPane{.width = 60, .height = 40};

  /// A pane, or two parts or more.
  struct Part {
    std::optional<PaneId> pane;
    SplitAxis axis = SplitAxis::SideBySide;  ///< of the parts
    std::vector<Part> parts;
    double share = 1;  ///< of the split that it is in, above 0; those of all parts add up to 1
  };

  /// One pane fills everything.
  explicit SplitLayout(PaneId only);
  /// The panes stand as these parts do, each of which is a pane of its own or two parts or more. The shares, above 0,
  /// need not add up.
  explicit SplitLayout(Part root);

  /// From left to right and from the top down. Never empty.
  std::vector<PaneId> panes() const;
  bool contains(PaneId pane) const;

  /// `added` takes half of the room of `beside`, on that side of it. `beside` must be there, `added` not.
  void split(PaneId beside, Direction side, PaneId added);
  /// The same for panes that stand as in `added`.
  void split(PaneId beside, Direction side, const SplitLayout& added);
  /// Gives the room of `pane`, which must not be the only one, to its neighbours in proportion.
  void remove(PaneId pane);
  /// The two change places; sizes stay.
  void swap(PaneId one, PaneId other);
  /// Gives each part room in proportion to the number of panes it has along its split's axis.
  void equalise();

  /// The pane next to `pane` in that direction: of several, the one at its middle. None at the edge.
  std::optional<PaneId> neighbour(PaneId pane, Direction direction, const PaneSize& whole) const;
  /// Moves the divider that bounds `pane` in the direction's axis, the one after it if there is one, by `pixels`. False
  /// if there is none, or it cannot be moved further.
  bool moveEdge(PaneId pane, Direction direction, int pixels, const PaneSize& whole);

  struct Place {
    PaneId pane;
    PaneRect rect;
  };
  /// Between part `part` of a split and the next.
  struct Divider {
    std::vector<std::size_t> path;  ///< to the split: the numbers of the parts, from the outermost
    std::size_t part;
    SplitAxis axis;
    int splitLength;  ///< of the whole split, along its axis
    PaneRect rect;
  };
  struct Places {
    std::vector<Place> panes;  ///< in the order of `panes()`
    std::vector<Divider> dividers;
  };
  /// Everything in an area of that size, without gaps or overlaps. Where there is too little room some panes may be
  /// empty.
  Places places(const PaneSize& whole) const;
  /// Moves a divider of `places(whole)` so that it begins `position` pixels from the left or the top of the area, as
  /// near as the smallest panes allow. False if it stays where it was.
  bool moveDivider(const Divider& divider, int position, const PaneSize& whole);

  const Part& root() const { return m_root; }

 private:
  Part m_root;
};

}  // namespace zolt
