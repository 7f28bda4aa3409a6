#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "emulation/Rendition.h"

namespace zolt {

/// The renditions that have come up, each once, and which SGR sequence leads from which to which.
///
/// Programs repeat a few sequences over and over: a sequence seen before costs one look-up instead of being read and
/// applied. Bounded: past `limit` renditions the table starts anew. Not synchronised: one thread at a time.
class RenditionTable {
 public:
  using Id = std::uint32_t;

  static constexpr std::size_t limit = 1024;

  RenditionTable();

  /// The initial rendition, always there.
  static constexpr Id initial = 0;

  std::size_t size() const { return m_entries.size(); }
  const Rendition& rendition(Id id) const { return m_entries[id].rendition; }
  const TextAttributes& attributes(Id id) const { return m_entries[id].attributes; }

  /// The rendition after an SGR sequence with these parameters; stops the program as Rendition::apply does.
  ///
  /// When the table starts anew, all ids from before are void, which `generation` tells.
  Id after(Id from, std::string_view params);
  std::uint64_t generation() const { return m_generation; }

 private:
  struct Entry {
    Rendition rendition;
    TextAttributes attributes;
  };

  /// Parameters of at most this many bytes are remembered.
  static constexpr std::size_t longestRemembered = 16;

  struct Transition {
    std::uint64_t head = 0;             // the first 8 bytes of the parameters
    std::uint64_t tail = 0;             // the others
    std::uint64_t origin = UINT64_MAX;  // the rendition it starts from, and the parameters' length
    Id to = 0;
  };

  Id apply(Id from, std::string_view params);
  Id idOf(const Rendition& rendition);

  void startAnew();

  std::vector<Entry> m_entries;
  std::array<std::uint16_t, 4 * limit> m_buckets;  // hash -> id + 1; 0 for none
  std::array<Transition, 256> m_transitions;       // by hash; a newer one takes the place of an older
  std::vector<std::int64_t> m_codes;               // kept only to spare an allocation for each sequence
  std::uint64_t m_generation = 0;
};

}  // namespace zolt
