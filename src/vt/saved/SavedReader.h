#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/cells/CellTables.h"
#include "vt/saved/CellPiece.h"

namespace zolt::vt {

/// Reads what a SavedWriter wrote. Safe for any bytes: whatever is not as it should be is noted, and from then on
/// nothing but the smallest valid values is read. Takes memory in proportion to the bytes, and to cells that the caller
/// has made.
class SavedReader {
 public:
  static constexpr bool isReader = true;

  /// `bytes` must outlive the reader.
  explicit SavedReader(std::string_view bytes) : m_bytes(bytes), m_rest(bytes) {}

  /// The size of the terminal, which must be set before any other field is read, and the tables for its cells, before
  /// these are. The tables must outlive the reader.
  void setSize(const TerminalSize& size) { m_size = size; }
  void setTables(CellTables& tables) { m_tables = &tables; }
  const TerminalSize& size() const { return m_size; }

  std::size_t remaining() const { return m_rest.size(); }
  /// What is wrong with the bytes: the first that was found.
  const std::optional<std::string>& error() const { return m_error; }

  template <class Number>
  void number(Number& value, std::int64_t min, std::int64_t max) {
    const auto span = static_cast<std::uint64_t>(max) - static_cast<std::uint64_t>(min);
    value = static_cast<Number>(static_cast<std::int64_t>(static_cast<std::uint64_t>(min) + upTo(span)));
  }
  template <class Enumeration>
  void choice(Enumeration& value, Enumeration last) {
    value = static_cast<Enumeration>(upTo(static_cast<std::uint64_t>(last)));
  }
  void byte(std::uint8_t& value) {
    const std::string_view one = take(1);
    value = one.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(one.front());
  }
  template <class... Flags>
  void flags(Flags&... each) {
    static_assert((std::is_same_v<bool, Flags> && ...) && sizeof...(each) <= 32);
    const std::uint64_t bits = upTo((std::uint64_t{1} << sizeof...(each)) - 1);
    int at = 0;
    ((each = (bits >> at++ & 1) != 0), ...);
  }
  void text(std::string& value, std::size_t maxBytes, bool (*isAllowed)(std::string_view));
  template <class Value, class Each>
  void list(std::vector<Value>& values, std::size_t max, Each each) {
    values.clear();
    // Grows with what is read: a count alone takes no memory.
    for (std::uint64_t count = upTo(max); count > 0 && !m_error; --count) {
      each(values.emplace_back());
    }
  }
  template <class Value, class Each>
  void optional(std::optional<Value>& value, Each each) {
    bool has = false;
    flags(has);
    value.reset();
    if (has) each(value.emplace());
  }
  void require(bool isValid) {
    if (!isValid) fail("a value that no terminal has");
  }

  void link(LinkTarget& target);
  /// All of `cells`, which must be blank.
  void cells(std::span<Cell> cells);
  /// Notes what is wrong, unless something was wrong before.
  void fail(std::string_view what);

 private:
  // Values that have been read, by their numbers, and the IDs that they got in the terminal's tables.
  template <class Value>
  struct Known {
    struct Entry {
      Value value;
      std::optional<std::uint32_t> id;
    };
    std::vector<Entry> entries = std::vector<Entry>(1);
  };

  std::string_view take(std::size_t size);
  std::uint64_t upTo(std::uint64_t max);
  char32_t printable();
  template <class Value, class Read>
  typename Known<Value>::Entry& known(Known<Value>& values, Read read);
  template <class Value, class Table>
  std::uint32_t idOf(typename Known<Value>::Entry& entry, Table& table);
  void pen(bool isProtected);
  void piece(const CellPiece& piece, std::span<Cell> cells);
  std::uint32_t cluster();

  std::string_view m_bytes;
  std::string_view m_rest;
  std::optional<std::string> m_error;
  TerminalSize m_size;
  CellTables* m_tables = nullptr;
  Known<Style> m_styles;
  Known<LinkTarget> m_links;
  Known<std::u32string> m_clusters;
  std::uint64_t m_attributes = 0;
};

}  // namespace zolt::vt
