#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>

#include "canvas/GlyphMask.h"

namespace zolt {

/// Pictures by a text: the latest ones, and the ones before them until as many others have been used since. So what a
/// row needs stays while it is painted, however many there are.
class MaskCache {
 public:
  /// A text has a few hundred different clusters, and a row fewer than this.
  static constexpr std::size_t kGeneration = 2048;

  /// Null if there is none. Valid until as many others have been asked for.
  const GlyphMask* find(const std::string& key) {
    if (const auto known = m_latest.find(key); known != m_latest.end()) return &known->second;
    auto older = m_older.extract(key);
    return older.empty() ? nullptr : &add(key, std::move(older.mapped()));
  }
  const GlyphMask& add(const std::string& key, GlyphMask mask) {
    if (m_latest.size() >= kGeneration) m_older = std::exchange(m_latest, {});
    return m_latest.insert_or_assign(key, std::move(mask)).first->second;
  }

 private:
  std::unordered_map<std::string, GlyphMask> m_latest;
  std::unordered_map<std::string, GlyphMask> m_older;
};

}  // namespace zolt
