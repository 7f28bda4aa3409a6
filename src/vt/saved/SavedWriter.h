#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/cells/CellTables.h"
#include "vt/saved/CellPiece.h"

namespace zolt::vt {

/// Writes the fields of a terminal as bytes; SavedReader has the same functions and reads them (SavedFields). Numbers
/// are in base 128, the lowest digit first, with the highest bit set in all bytes but the last. Never fails: the limits
/// are for the reader.
class SavedWriter {
 public:
  static constexpr bool isReader = false;

  /// Of a terminal of this size, whose cells refer to `tables`.
  SavedWriter(const TerminalSize& size, const CellTables& tables) : m_size(size), m_tables(tables) {}

  const TerminalSize& size() const { return m_size; }
  std::string take() { return std::move(m_bytes); }

  /// A number from `min` to `max`, both included.
  template <class Number>
  void number(const Number& value, std::int64_t min, std::int64_t /*max*/) {
    put(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)) - static_cast<std::uint64_t>(min));
  }
  /// An enumerator up to `last`, which is included.
  template <class Enumeration>
  void choice(const Enumeration& value, Enumeration /*last*/) {
    put(static_cast<std::uint64_t>(value));
  }
  void byte(std::uint8_t value) { m_bytes.push_back(static_cast<char>(value)); }
  /// At most 32 flags, as one number.
  template <class... Flags>
  void flags(const Flags&... each) {
    static_assert((std::is_same_v<bool, Flags> && ...) && sizeof...(each) <= 32);
    std::uint64_t bits = 0;
    int at = 0;
    ((bits |= static_cast<std::uint64_t>(each) << at++), ...);
    put(bits);
  }
  /// At most `maxBytes` for which `isAllowed`.
  void text(std::string_view value, std::size_t maxBytes, bool (*isAllowed)(std::string_view));
  /// At most `max` values, each written by `each`.
  template <class Value, class Each>
  void list(const std::vector<Value>& values, std::size_t /*max*/, Each each) {
    put(values.size());
    for (const Value& value : values) {
      each(value);
    }
  }
  template <class Value, class Each>
  void optional(const std::optional<Value>& value, Each each) {
    flags(value.has_value());
    if (value) each(*value);
  }
  /// What the reader checks of what it has just read.
  void require(bool /*isValid*/) {}

  /// A link, which is written once, where it first occurs, and has a number from then on.
  void link(const LinkTarget& target);
  /// Cells with the styles, links and clusters that they refer to, which are written like links.
  void cells(std::span<const Cell> cells);

 private:
  // Values that have been written, by their numbers.
  template <class Value, class Hash>
  class Known {
   public:
    explicit Known(const Value& zero) : m_numbers{{zero, 0}} {}

    // Writes the number of `value`. Whether it is new, and must be written.
    bool put(SavedWriter& writer, const Value& value) {
      const auto [at, isNew] = m_numbers.try_emplace(value, m_numbers.size());
      writer.put(at->second);
      return isNew;
    }
    // The same for the value that has this ID in the terminal's tables, which is looked up once.
    bool put(SavedWriter& writer, std::size_t id, const Value& value) {
      if (id < m_byId.size() && m_byId[id]) {
        writer.put(*m_byId[id]);
        return false;
      }
      const bool isNew = put(writer, value);
      if (m_byId.size() <= id) m_byId.resize(id + 1);
      m_byId[id] = m_numbers.find(value)->second;
      return isNew;
    }

   private:
    std::unordered_map<Value, std::size_t, Hash> m_numbers;
    std::vector<std::optional<std::size_t>> m_byId;
  };

  void put(std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) {
      m_bytes.push_back(static_cast<char>(number | 0x80));
    }
    m_bytes.push_back(static_cast<char>(number));
  }
  void pen(Cell cell);
  void piece(const CellPiece& piece, std::span<const Cell> cells);
  void cluster(ClusterId id);

  TerminalSize m_size;
  const CellTables& m_tables;
  std::string m_bytes;
  Known<Style, StyleHash> m_styles{Style()};
  Known<LinkTarget, LinkHash> m_links{LinkTarget()};
  Known<std::u32string, std::hash<std::u32string>> m_clusters{std::u32string()};
  std::uint64_t m_attributes = 0;  // of the last cell that was written
  std::string m_scratch;           // the ASCII at the start of the cells
};

}  // namespace zolt::vt
