#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace zolt {

/// A list that grows at its end and is trimmed at its front, and whose copies cost little and share its elements. An
/// element keeps its index, and never changes. A copy may be read by one thread while another appends to the list it
/// was made from. T is default constructible.
template <class T>
class SharedList {
 public:
  /// The first index, and the one after the last.
  std::size_t begin() const { return m_begin; }
  std::size_t end() const { return m_end; }
  const T& operator[](std::size_t index) const { return (*(*m_chunks)[index / kChunk - m_firstChunk])[index % kChunk]; }

  /// Only in one of the copies.
  void push_back(const T& element) {
    if (m_end % kChunk == 0) setChunks(m_end / kChunk + 1);
    (*m_chunks->back())[m_end % kChunk] = element;
    ++m_end;
  }
  /// Trims the elements before `index` <= end().
  void dropBefore(std::size_t index) {
    m_begin = index;
    if (m_begin / kChunk != m_firstChunk && m_end % kChunk != 0) setChunks(m_end / kChunk + 1);
  }

  std::size_t memoryBytes() const { return m_chunks == nullptr ? 0 : m_chunks->size() * sizeof(Chunk); }

 private:
  static constexpr std::size_t kChunk = 256;
  using Chunk = std::array<T, kChunk>;
  using Chunks = std::vector<std::shared_ptr<Chunk>>;

  // The chunks in use, up to number `end`; a new one if there is none yet.
  void setChunks(std::size_t end) {
    const std::size_t first = m_begin / kChunk;
    auto chunks = std::make_shared<Chunks>();
    for (std::size_t i = first; i < end; ++i) {
      const bool isThere = m_chunks != nullptr && i - m_firstChunk < m_chunks->size();
      chunks->push_back(isThere ? (*m_chunks)[i - m_firstChunk] : std::make_shared<Chunk>());
    }
    m_chunks = std::move(chunks);
    m_firstChunk = first;
  }

  std::shared_ptr<const Chunks> m_chunks;
  std::size_t m_firstChunk = 0;
  std::size_t m_begin = 0;
  std::size_t m_end = 0;
};

}  // namespace zolt
