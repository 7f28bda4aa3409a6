#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "text/Utf8.h"
#include "vt/cells/Cell.h"
#include "vt/cells/Interned.h"
#include "vt/cells/Style.h"

namespace zolt::vt {

/// The target of a hyperlink (OSC 8). Cells with equal targets belong to one link.
struct LinkTarget {
  static constexpr std::size_t maxIdBytes = 250;
  static constexpr std::size_t maxUriBytes = 2083;

  std::string id;   ///< given by the program, or empty
  std::string uri;  ///< see isUri; empty: none

  /// Whether `text` can be a link's target: printable ASCII without spaces, at most `maxUriBytes`.
  static bool isUri(std::string_view text) {
    return text.size() <= maxUriBytes && std::ranges::all_of(text, [](char c) { return c > 0x20 && c < 0x7F; });
  }

  friend bool operator==(const LinkTarget&, const LinkTarget&) = default;
};

struct LinkHash {
  std::size_t operator()(const LinkTarget& target) const {
    return std::hash<std::string>()(target.uri) * 31 + std::hash<std::string>()(target.id);
  }
};

/// What cells refer to by ID. The tables are bounded: a full one is swept of entries that no cell refers to any more.
struct CellTables {
  static constexpr std::size_t maxStyles = 65535;
  static constexpr std::size_t maxClusters = 65535;
  static constexpr std::size_t maxLinks = 16383;
  /// In a cluster; further ones are dropped.
  static constexpr std::size_t maxScalars = 24;

  Interned<Style, StyleHash> styles{maxStyles, Style()};
  Interned<std::u32string, std::hash<std::u32string>> clusters{maxClusters, std::u32string()};
  Interned<LinkTarget, LinkHash> links{maxLinks, LinkTarget()};

  /// Appends the text of a cell: a space for an erased one, nothing for the tail of a wide one.
  void appendText(Cell cell, std::string& text) const {
    if (cell.isCluster()) {
      for (const char32_t scalar : clusters[cell.clusterId()]) {
        appendUtf8(text, scalar);
      }
    } else if (cell.character() != 0) {
      appendUtf8(text, cell.character());
    } else if (cell.width() == Cell::Width::Narrow) {
      text.push_back(' ');
    }
  }
};

}  // namespace zolt::vt
