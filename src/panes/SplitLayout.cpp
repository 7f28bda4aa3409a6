#include "panes/SplitLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <numeric>

namespace zolt {

namespace {

using Part = SplitLayout::Part;
using Path = std::vector<std::size_t>;

constexpr SplitAxis axisOf(Direction direction) {
  return direction == Direction::Left || direction == Direction::Right ? SplitAxis::SideBySide : SplitAxis::Stacked;
}

constexpr bool isForward(Direction direction) {
  return direction == Direction::Right || direction == Direction::Down;
}

int lengthOf(const PaneSize& size, SplitAxis axis) {
  return axis == SplitAxis::SideBySide ? size.width : size.height;
}

PaneSize withLength(PaneSize size, SplitAxis axis, int length) {
  (axis == SplitAxis::SideBySide ? size.width : size.height) = length;
  return size;
}

int startOf(const PaneRect& rect, SplitAxis axis) {
  return axis == SplitAxis::SideBySide ? rect.x : rect.y;
}

int endOf(const PaneRect& rect, SplitAxis axis) {
  return startOf(rect, axis) + lengthOf(rect.size, axis);
}

PaneRect moved(PaneRect rect, SplitAxis axis, int start) {
  (axis == SplitAxis::SideBySide ? rect.x : rect.y) = start;
  return rect;
}

constexpr SplitAxis other(SplitAxis axis) {
  return axis == SplitAxis::SideBySide ? SplitAxis::Stacked : SplitAxis::SideBySide;
}

template <typename Visit>
void eachPane(const Part& part, const Visit& visit) {
  if (part.pane) visit(*part.pane);
  for (const Part& each : part.parts) {
    eachPane(each, visit);
  }
}

// The way from `part` down to a pane.
std::optional<Path> pathTo(const Part& part, PaneId pane) {
  if (part.pane == pane) return Path();
  for (std::size_t i = 0; i < part.parts.size(); ++i) {
    if (auto path = pathTo(part.parts[i], pane)) {
      path->insert(path->begin(), i);
      return path;
    }
  }
  return std::nullopt;
}

Part& partAt(Part& root, const Path& path) {
  Part* part = &root;
  for (const std::size_t number : path) {
    part = &part->parts[number];
  }
  return *part;
}

// A split of one part is that part, and a split within one of the same axis belongs to it.
void normalise(Part& part) {
  for (Part& each : part.parts) {
    normalise(each);
  }
  if (part.parts.size() == 1) {
    const double share = part.share;
    part = Part(std::move(part.parts.front()));
    part.share = share;
  }
  std::vector<Part> flat;
  for (Part& each : part.parts) {
    if (each.parts.empty() || each.axis != part.axis) {
      flat.push_back(std::move(each));
      continue;
    }
    for (Part& inner : each.parts) {
      inner.share *= each.share;
      flat.push_back(std::move(inner));
    }
  }
  part.parts = std::move(flat);
}

void makeSharesAddUp(Part& split) {
  const double all = std::accumulate(split.parts.begin(), split.parts.end(), 0.0,
                                     [](double sum, const Part& part) { return sum + part.share; });
  for (Part& part : split.parts) {
    part.share /= all;
    makeSharesAddUp(part);
  }
}

// How many panes stand in one line along the axis, at most.
int panesAlong(const Part& part, SplitAxis axis) {
  if (part.pane) return 1;
  int total = 0;
  for (const Part& each : part.parts) {
    const int here = panesAlong(each, axis);
    total = part.axis == axis ? total + here : std::max(total, here);
  }
  return total;
}

// The least length that a part can be made by hand.
int leastLength(const Part& part, SplitAxis axis) {
  if (part.pane) return lengthOf(SplitLayout::smallestPane, axis);
  int total = 0;
  for (const Part& each : part.parts) {
    const int here = leastLength(each, axis);
    total = part.axis == axis ? total + here : std::max(total, here);
  }
  const int gaps = static_cast<int>(part.parts.size()) - 1;
  return part.axis == axis ? total + gaps * SplitLayout::dividerBreadth : total;
}

int roomFor(const Part& split, int length) {
  const int gaps = static_cast<int>(split.parts.size()) - 1;
  return std::max(length - gaps * SplitLayout::dividerBreadth, 0);
}

// The lengths of the parts, which add up to the room: every end is where the shares before it say.
std::vector<int> lengths(const Part& split, int length) {
  const int room = roomFor(split, length);
  std::vector<int> result;
  double shares = 0;
  int before = 0;
  for (const Part& part : split.parts) {
    shares += part.share;
    const bool isLast = result.size() + 1 == split.parts.size();
    const int end = isLast ? room : std::clamp(static_cast<int>(std::lround(shares * room)), before, room);
    result.push_back(end - before);
    before = end;
  }
  return result;
}

void place(const Part& part, const PaneRect& rect, const Path& path, SplitLayout::Places& places) {
  if (part.pane) {
    places.panes.push_back({.pane = *part.pane, .rect = rect});
    return;
  }
  const std::vector<int> each = lengths(part, lengthOf(rect.size, part.axis));
  int at = startOf(rect, part.axis);
  const int end = endOf(rect, part.axis);
  for (std::size_t i = 0; i < part.parts.size(); ++i) {
    Path inner = path;
    inner.push_back(i);
    place(part.parts[i],
          moved({.x = rect.x, .y = rect.y, .size = withLength(rect.size, part.axis, each[i])}, part.axis, at), inner,
          places);
    at += each[i];
    if (i + 1 == part.parts.size()) break;
    const int breadth = std::clamp(end - at, 0, SplitLayout::dividerBreadth);
    places.dividers.push_back(
        {.path = path,
         .part = i,
         .axis = part.axis,
         .splitLength = lengthOf(rect.size, part.axis),
         .rect = moved({.x = rect.x, .y = rect.y, .size = withLength(rect.size, part.axis, breadth)}, part.axis, at)});
    at += breadth;
  }
}

}  // namespace

SplitLayout::SplitLayout(PaneId only) : m_root{.pane = only, .parts = {}} {}

SplitLayout::SplitLayout(Part root) : m_root(std::move(root)) {
  m_root.share = 1;
  makeSharesAddUp(m_root);
  normalise(m_root);
}

std::vector<PaneId> SplitLayout::panes() const {
  std::vector<PaneId> found;
  eachPane(m_root, [&found](PaneId pane) { found.push_back(pane); });
  return found;
}

bool SplitLayout::contains(PaneId pane) const {
  return pathTo(m_root, pane).has_value();
}

void SplitLayout::split(PaneId beside, Direction side, PaneId added) {
  split(beside, side, SplitLayout(added));
}

void SplitLayout::split(PaneId beside, Direction side, const SplitLayout& added) {
  Part& part = partAt(m_root, *pathTo(m_root, beside));
  Part kept{.pane = beside, .parts = {}, .share = 0.5};
  Part fresh = added.root();
  fresh.share = 0.5;
  part.pane.reset();
  part.axis = axisOf(side);
  part.parts = isForward(side) ? std::vector{kept, fresh} : std::vector{fresh, kept};
  normalise(m_root);
}

void SplitLayout::remove(PaneId pane) {
  Path path = *pathTo(m_root, pane);
  const std::size_t number = path.back();
  path.pop_back();
  Part& split = partAt(m_root, path);
  const double left = 1 - split.parts[number].share;
  split.parts.erase(split.parts.begin() + static_cast<std::ptrdiff_t>(number));
  for (Part& part : split.parts) {
    part.share /= left;
  }
  normalise(m_root);
}

void SplitLayout::swap(PaneId one, PaneId two) {
  std::swap(partAt(m_root, *pathTo(m_root, one)).pane, partAt(m_root, *pathTo(m_root, two)).pane);
}

void SplitLayout::equalise() {
  const auto equaliseIn = [](auto& self, Part& split) -> void {
    const double all = panesAlong(split, split.axis);
    for (Part& part : split.parts) {
      part.share = panesAlong(part, split.axis) / all;
      self(self, part);
    }
  };
  equaliseIn(equaliseIn, m_root);
}

std::optional<PaneId> SplitLayout::neighbour(PaneId pane, Direction direction, const PaneSize& whole) const {
  const std::vector<Place> all = places(whole).panes;
  const auto self = std::ranges::find(all, pane, &Place::pane);
  if (self == all.end()) return std::nullopt;
  const SplitAxis along = axisOf(direction);
  const SplitAxis across = other(along);
  const int middle = startOf(self->rect, across) + lengthOf(self->rect.size, across) / 2;
  const int edge =
      isForward(direction) ? endOf(self->rect, along) + dividerBreadth : startOf(self->rect, along) - dividerBreadth;
  std::optional<PaneId> nearest;
  int leastDistance = 0;
  for (const Place& each : all) {
    const bool touches = (isForward(direction) ? startOf(each.rect, along) : endOf(each.rect, along)) == edge;
    if (!touches) continue;
    const int distance = std::max({startOf(each.rect, across) - middle, middle - endOf(each.rect, across) + 1, 0});
    if (nearest && distance >= leastDistance) continue;
    nearest = each.pane;
    leastDistance = distance;
  }
  return nearest;
}

bool SplitLayout::moveEdge(PaneId pane, Direction direction, int pixels, const PaneSize& whole) {
  auto path = pathTo(m_root, pane);
  if (!path) return false;
  // The innermost split along the axis.
  while (!path->empty()) {
    const std::size_t number = path->back();
    path->pop_back();
    if (partAt(m_root, *path).axis != axisOf(direction)) continue;
    const bool isLast = number + 1 == partAt(m_root, *path).parts.size();
    const std::size_t before = isLast ? number - 1 : number;
    const std::vector<Divider> dividers = places(whole).dividers;
    const auto divider =
        std::ranges::find_if(dividers, [&](const Divider& each) { return each.path == *path && each.part == before; });
    const int at = startOf(divider->rect, divider->axis);
    return moveDivider(*divider, isForward(direction) ? at + pixels : at - pixels, whole);
  }
  return false;
}

SplitLayout::Places SplitLayout::places(const PaneSize& whole) const {
  Places result;
  place(m_root, {.size = whole}, {}, result);
  return result;
}

// Only the two parts beside the divider change.
bool SplitLayout::moveDivider(const Divider& divider, int position, const PaneSize& whole) {
  const std::vector<Divider> all = places(whole).dividers;
  const auto now = std::ranges::find_if(
      all, [&](const Divider& each) { return each.path == divider.path && each.part == divider.part; });
  if (now == all.end()) return false;
  Part& split = partAt(m_root, divider.path);
  Part& before = split.parts[divider.part];
  Part& after = split.parts[divider.part + 1];
  const std::vector<int> each = lengths(split, now->splitLength);
  const int length = each[divider.part];
  const int least = leastLength(before, split.axis);
  const int most = length + each[divider.part + 1] - leastLength(after, split.axis);
  if (least > most) return false;  // there is no room to give
  const int wanted = std::clamp(length + position - startOf(now->rect, split.axis), least, most);
  if (wanted == length) return false;
  const auto first = each.begin() + static_cast<std::ptrdiff_t>(divider.part);
  const double end = std::accumulate(each.begin(), first, wanted);
  const double sharesBefore = std::accumulate(split.parts.begin(), split.parts.begin() + (first - each.begin()), 0.0,
                                              [](double sum, const Part& part) { return sum + part.share; });
  const double both = before.share + after.share;
  before.share = end / roomFor(split, now->splitLength) - sharesBefore;
  after.share = both - before.share;
  return true;
}

}  // namespace zolt
