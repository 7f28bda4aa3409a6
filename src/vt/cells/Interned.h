#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zolt::vt {

/// Stores each distinct value once, under a small ID. ID 0 is the value given to the constructor, and is never freed.
///
/// Capacity starts small, to keep the entries close together in memory. When the table is full its owner frees the
/// entries that are no longer used (`keepOnly`); if that leaves it more than half full, the capacity doubles, up to
/// `maxSize`, at most 65535.
template <class Value, class Hash>
class Interned {
 public:
  using Id = std::uint32_t;

  Interned(std::size_t maxSize, const Value& zero)
      : m_maxSize(std::min(maxSize, kMaxSize)),
        m_capacity(std::min(m_maxSize, kFirstCapacity)),
        m_buckets(kFirstBuckets, kNone) {
    intern(zero);
  }

  const Value& operator[](Id id) const { return m_values[id]; }
  /// Every ID handed out so far is below this.
  std::size_t idLimit() const { return m_values.size(); }
  std::size_t size() const { return m_values.size() - m_free.size(); }

  /// Returned by `intern` when the table is full. Not an std::optional, which would be returned through memory.
  static constexpr Id noRoom = UINT32_MAX;

  /// The ID of `value`, which is added if it is new. The last eighth of the capacity is reserved for callers that
  /// `mayUseReserve`.
  Id intern(const Value& value, bool mayUseReserve = true) {
    const std::size_t hash = Hash()(value);
    std::size_t bucket = bucketOf(hash);
    for (; m_buckets[bucket] != kNone; bucket = next(bucket)) {
      const Entry entry = m_buckets[bucket];
      if (tagOf(entry) == tagOf(hash) && m_values[idOf(entry)] == value) return idOf(entry);
    }
    if (size() >= m_capacity - (mayUseReserve ? 0 : m_capacity / kReserve)) return noRoom;
    return add(value, hash, bucket);
  }

  /// Whether calling `keepOnly` is likely to make room: the table can still grow, or the last call freed enough.
  bool isWorthSweeping() const { return m_capacity != m_maxSize || m_lastSweepHelped; }
  /// Frees every ID for which `isUsed(id)` is false.
  template <class IsUsed>
  void keepOnly(IsUsed isUsed) {
    m_free.clear();
    for (Id id = static_cast<Id>(m_values.size()); id-- > 1;) {
      if (isUsed(id)) continue;
      m_values[id] = m_values[0];
      m_free.push_back(id);
    }
    // It must have freed at least as much as the reserve: otherwise the next few values would fill the table again, and
    // each would pay for a sweep.
    m_lastSweepHelped = size() <= m_maxSize - 2 * (m_maxSize / kReserve);
    if (size() > m_capacity / 2) m_capacity = std::min(m_maxSize, m_capacity * 2);
    std::vector<bool> isFree(m_values.size());
    for (const Id id : m_free) {
      isFree[id] = true;
    }
    m_buckets.assign(m_buckets.size(), kNone);
    for (Id id = 0; id < m_values.size(); ++id) {
      if (!isFree[id]) enter(id);
    }
  }

 private:
  static constexpr std::size_t kMaxSize = UINT16_MAX;  // IDs have 16 bits, and kNone is no entry

  // An ID in the lower half, bits of the value's hash in the upper: most values that differ are told apart by those,
  // without a look at the value.
  using Entry = std::uint32_t;
  static constexpr Entry kNone = UINT32_MAX;
  static constexpr Id idOf(Entry entry) { return entry & 0xFFFF; }
  static constexpr Entry tagOf(Entry entry) { return entry & 0xFFFF0000; }
  static constexpr Entry tagOf(std::size_t hash) { return static_cast<Entry>(hash >> 16) & 0xFFFF0000; }

  static constexpr std::size_t kFirstBuckets = 64;
  static constexpr std::size_t kFirstCapacity = 16384;
  static constexpr std::size_t kReserve = 8;  // one part in this many

  std::size_t bucketOf(std::size_t hash) const { return hash & (m_buckets.size() - 1); }
  std::size_t next(std::size_t bucket) const { return (bucket + 1) & (m_buckets.size() - 1); }

  void enter(Id id) {
    const std::size_t hash = Hash()(m_values[id]);
    std::size_t bucket = bucketOf(hash);
    while (m_buckets[bucket] != kNone) {
      bucket = next(bucket);
    }
    m_buckets[bucket] = tagOf(hash) | id;
  }

  // `bucket` is the empty one that was found for the value.
  Id add(Value value, std::size_t hash, std::size_t bucket) {
    Id id = static_cast<Id>(m_values.size());
    if (m_free.empty()) {
      m_values.push_back(std::move(value));
    } else {
      id = m_free.back();
      m_free.pop_back();
      m_values[id] = std::move(value);
    }
    if (size() * 2 > m_buckets.size()) {
      m_buckets.assign(m_buckets.size() * 2, kNone);
      // No ID is free here: the table grows only after all free IDs have been reused.
      for (Id each = 0; each < m_values.size(); ++each) {
        enter(each);
      }
    } else {
      m_buckets[bucket] = tagOf(hash) | id;
    }
    return id;
  }

  std::size_t m_maxSize;
  std::size_t m_capacity;
  bool m_lastSweepHelped = true;
  std::vector<Value> m_values;
  std::vector<Id> m_free;
  std::vector<Entry> m_buckets;  // by hash: open addressing, a power of two in size, at most half full
};

}  // namespace zolt::vt
