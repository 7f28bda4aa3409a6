#include "emulation/RenditionTable.h"

#include <bit>

#include "emulation/SGR.h"
#include "text/Hashing.h"

namespace zolt {

namespace {

// At most 8 bytes as one number.
inline std::uint64_t bigEndian(std::string_view bytes) {
  std::uint64_t number = 0;
  for (const char c : bytes) {
    number = number << 8 | static_cast<unsigned char>(c);
  }
  return number;
}

std::size_t hashOf(const Rendition& rendition) {
  Hasher hasher;
  hasher.add(rendition.currentForeground);
  hasher.add(rendition.currentBackground);
  std::uint64_t flags = 0;
  for (const bool flag : {rendition.isBold, rendition.isDim, rendition.isItalic, rendition.isUnderline,
                          rendition.isReverse, rendition.isHidden, rendition.isStrikethrough}) {
    flags = flags << 1 | static_cast<std::uint64_t>(flag);
  }
  hasher.add(flags);
  return hasher.value();
}

}  // namespace

RenditionTable::RenditionTable() {
  startAnew();
}

RenditionTable::Id RenditionTable::after(Id from, std::string_view params) {
  if (params.size() > longestRemembered) return apply(from, params);
  const std::uint64_t head = bigEndian(params.substr(0, 8));
  const std::uint64_t tail = params.size() > 8 ? bigEndian(params.substr(8)) : 0;
  const std::uint64_t origin = std::uint64_t{from} << 32 | params.size();
  const std::uint64_t mixed = (head ^ std::rotl(tail, 29) ^ std::rotl(origin, 15)) * 0x9E3779B97F4A7C15ULL;
  Transition& known = m_transitions[mixed >> 56];
  if (known.origin == origin && known.head == head && known.tail == tail) return known.to;
  const std::uint64_t generation = m_generation;
  const Id to = apply(from, params);
  if (m_generation == generation) known = {.head = head, .tail = tail, .origin = origin, .to = to};
  return to;
}

RenditionTable::Id RenditionTable::apply(Id from, std::string_view params) {
  m_codes.clear();
  parseSGRCodes(params, m_codes);
  Rendition rendition = m_entries[from].rendition;
  rendition.apply(m_codes);
  return idOf(rendition);
}

RenditionTable::Id RenditionTable::idOf(const Rendition& rendition) {
  if (m_entries.size() == limit) startAnew();
  std::size_t bucket = hashOf(rendition) % m_buckets.size();
  while (m_buckets[bucket] != 0) {
    const Id id = m_buckets[bucket] - 1U;
    if (m_entries[id].rendition == rendition) return id;
    bucket = (bucket + 1) % m_buckets.size();
  }
  m_entries.push_back({.rendition = rendition, .attributes = rendition.attributes()});
  m_buckets[bucket] = static_cast<std::uint16_t>(m_entries.size());
  return static_cast<Id>(m_entries.size() - 1);
}

void RenditionTable::startAnew() {
  m_entries.clear();
  m_buckets.fill(0);
  m_transitions.fill({});
  ++m_generation;
  idOf(Rendition{});
}

}  // namespace zolt
