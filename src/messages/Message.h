#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace zolt {

/// The version of the messages that this program sends, and the newest that it understands.
inline constexpr std::uint64_t kMessageVersion = 1;
/// A request is at most so long, with the newline at its end.
inline constexpr std::size_t kRequestLimitBytes = std::size_t{1024} * 1024;

enum class Verb : std::uint8_t { NewWindow, NewTab, Split, SendText, List, Focus };

/// What a script asks of a running instance. An empty field was not given.
struct Message {
  Verb verb = Verb::List;
  std::string side{};  ///< of a split: "right" or "down"
  std::string terminal{};
  std::string window{};
  std::string workingDirectory{};  ///< absolute
  std::string title{};
  std::vector<std::string> program{};  ///< with its arguments, instead of the user's shell
  std::string text{};                  ///< to be typed
  std::string token{};                 ///< the answer of the verb that opened the terminal
  std::string activationToken{};       ///< the desktop's permission to take the focus (XDG Activation)

  friend bool operator==(const Message&, const Message&) = default;

  /// One line of JSON with its newline. All fields must be valid UTF-8.
  std::string encoded() const;
  /// The message in one line, with every field that it has allowed for its verb and of a fitting form; otherwise a
  /// sentence that says what is wrong.
  static Result<Message> decoded(std::string_view line);
};

/// Whether a message may be sent as it is: what `decoded` would say of it.
Result<void> checked(const Message& message);

/// The text as the keyboard types it: each line end (LF, CR LF) is the Enter key's CR.
std::string asTyped(std::string_view text);

}  // namespace zolt
