#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zolt::vt {

/// Keeps each different value once and names it by a small number. There is room for a few at first, so that they lie
/// close together, and for `most` at last: when it is full, its owner takes out those that nobody uses, and it grows
/// where that was less than half. Number 0 is the value it is made with, for good.
template <class Value, class Hash>
class Interned {
 public:
  using Id = std::uint32_t;

  Interned(std::size_t most, Value zero)
      : m_most(most), m_capacity(std::min(most, kFirstCapacity)), m_buckets(kFirstBuckets, kNone) {
    add(std::move(zero));
  }

  const Value& operator[](Id id) const { return m_values[id]; }
  /// Numbers ever given are below this.
  std::size_t idLimit() const { return m_values.size(); }
  std::size_t size() const { return m_values.size() - m_free.size(); }

  /// What `intern` gives where there is no room: a plain number, for an optional one costs a detour through memory.
  static constexpr Id noRoom = UINT32_MAX;

  /// The number of `value`, new where it has none. The last of the room is only for those that `mayUseReserve`.
  Id intern(const Value& value, bool mayUseReserve = true) {
    for (std::size_t bucket = bucketOf(value);; bucket = next(bucket)) {
      const Id id = m_buckets[bucket];
      if (id == kNone) break;
      if (m_values[id] == value) return id;
    }
    if (size() >= m_capacity - (mayUseReserve ? 0 : m_capacity / kReserve)) return noRoom;
    return add(value);
  }

  /// Whether taking out what nobody uses is worth it: the table can grow, or the last time gave room.
  bool isWorthSweeping() const { return m_capacity != m_most || m_lastSweepHelped; }
  /// Takes out every value whose number `isUsed(id)` denies.
  template <class IsUsed>
  void keepOnly(IsUsed isUsed) {
    m_free.clear();
    for (Id id = static_cast<Id>(m_values.size()); id-- > 1;) {
      if (isUsed(id)) continue;
      m_values[id] = m_values[0];
      m_free.push_back(id);
    }
    m_lastSweepHelped = size() <= m_most - m_most / kReserve;
    if (size() > m_capacity / 2) m_capacity = std::min(m_most, m_capacity * 2);
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
  static constexpr Id kNone = noRoom;
  static constexpr std::size_t kFirstBuckets = 64;
  static constexpr std::size_t kFirstCapacity = 16384;
  static constexpr std::size_t kReserve = 8;  // a part of the room

  std::size_t bucketOf(const Value& value) const { return Hash()(value) & (m_buckets.size() - 1); }
  std::size_t next(std::size_t bucket) const { return (bucket + 1) & (m_buckets.size() - 1); }

  void enter(Id id) {
    std::size_t bucket = bucketOf(m_values[id]);
    while (m_buckets[bucket] != kNone) {
      bucket = next(bucket);
    }
    m_buckets[bucket] = id;
  }

  Id add(Value value) {
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
      // Only what is free may stand in the table without being in the buckets: there is none while it grows.
      for (Id each = 0; each < m_values.size(); ++each) {
        enter(each);
      }
    } else {
      enter(id);
    }
    return id;
  }

  std::size_t m_most;
  std::size_t m_capacity;
  bool m_lastSweepHelped = true;
  std::vector<Value> m_values;
  std::vector<Id> m_free;
  std::vector<Id> m_buckets;  // numbers by hash, a power of two of them, at most half full
};

}  // namespace zolt::vt
