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

/// An immutable buffer of bytes; copies share it. A buffer read from a FileHandle counts as in flight from that handle
/// for as long as it exists. Any thread.
class Bytes {
 public:
  Bytes() = default;
  /// A buffer that was not read from a handle and is not counted.
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
/// Releasing the handle stops the reading and closes the descriptor. Bytes accepted for writing but not yet written are
/// then lost. Created and used on one thread, except `availableData`, which the readability handler calls.
class FileHandle {
 public:
  /// The maximum number of bytes that one call of `availableData` returns.
  static constexpr std::size_t readLimitBytes = 256 * 1024;
  /// Reading pauses when this many bytes are in flight, until no more than half of them are.
  static constexpr std::size_t inFlightLimitBytes = 4 * 1024 * 1024;
  /// The maximum number of bytes that may wait to be written.
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

  /// Calls `handler` on a background thread each time the descriptor is readable, and a last time at end of file. An
  /// empty function stops the calls; once this returns, none is in progress.
  void setReadabilityHandler(ReadabilityHandler handler);

  /// The bytes that are available now, at most `readLimitBytes`; empty if there are none and at end of file.
  Bytes availableData();

  /// Whether no bytes are waiting to be read and the handler has received all that were read.
  bool isDrained() const;

  /// Writes `data` in order after everything written before. What cannot be written at once is kept and written later;
  /// if that fails, the write-failure handler is called. A failure here means that some of `data` was not accepted.
  Result<void> write(std::string_view data);

  /// Calls `handler`, on a background thread, when bytes that were kept for later are lost because writing failed.
  void setWriteFailureHandler(WriteFailureHandler handler);

 private:
  struct State;
  std::shared_ptr<State> m_state;
};

}  // namespace zolt
