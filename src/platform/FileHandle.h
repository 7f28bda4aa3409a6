#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "platform/Descriptor.h"

namespace zolt {

class DescriptorMonitor;

/// An immutable buffer of bytes; copies share it. While a buffer that came from a FileHandle lives, it counts as under
/// way from that handle. Any thread.
class Bytes {
 public:
  Bytes() = default;
  /// A buffer of its own, counted nowhere.
  explicit Bytes(std::string content);

  bool empty() const { return view().empty(); }
  std::size_t size() const { return view().size(); }
  std::string_view view() const { return m_content ? std::string_view(*m_content) : std::string_view(); }

 private:
  friend class FileHandle;
  explicit Bytes(std::shared_ptr<const std::string> content) : m_content(std::move(content)) {}
  std::shared_ptr<const std::string> m_content;
};

/// Owns one descriptor, reads from it in the background and writes to it without ever blocking.
///
/// Releasing the handle stops the reading and closes the descriptor. What was accepted for writing and not yet taken by
/// the system is then lost. Made and used on one thread, but for `availableData`, which the readability handler calls.
class FileHandle {
 public:
  /// The most bytes that one `availableData` gives.
  static constexpr std::size_t readLimitBytes = 256 * 1024;
  /// Reading waits while buffers of this many bytes or more are under way, until half of them are gone.
  static constexpr std::size_t inFlightLimitBytes = 4 * 1024 * 1024;
  /// The most bytes that wait to be written.
  static constexpr std::size_t writeLimitBytes = 64 * 1024 * 1024;

  using ReadabilityHandler = std::function<void(FileHandle& handle)>;
  using WriteFailureHandler = std::function<void(const std::string& reason)>;

  /// Makes the descriptor non-blocking. `monitor` must outlive the handle.
  FileHandle(Descriptor descriptor, DescriptorMonitor& monitor);
  explicit FileHandle(Descriptor descriptor);
  ~FileHandle();
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  int descriptor() const;

  /// Calls `handler` on a background thread each time the descriptor is readable, once more at the end of file, and not
  /// any more after that. An empty function stops the calls; when this returns none is under way.
  void setReadabilityHandler(ReadabilityHandler handler);

  /// The bytes that are available now, at most `readLimitBytes`; empty when there are none and at the end of file.
  Bytes availableData();

  /// Whether no bytes are waiting to be read and every one that was read has been handed to the handler.
  bool isDrained() const;

  /// Writes `data` in order after everything written before. What the system does not take at once is kept and written
  /// when it can be; the failure of that reaches the write-failure handler. A failure here names what became of the
  /// rest.
  Result<void> write(std::string_view data);

  /// Calls `handler`, on a background thread, when bytes kept for later could not be written and are lost.
  void setWriteFailureHandler(WriteFailureHandler handler);

 private:
  struct State;
  std::shared_ptr<State> m_state;
};

}  // namespace zolt
