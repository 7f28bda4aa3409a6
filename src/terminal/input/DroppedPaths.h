#pragma once

#include <QMimeData>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace zolt {

/// What is entered for a drop.
struct DroppedText {
  enum class Route {
    Typed,   ///< a shell's words, without control characters, each followed by a space
    Pasted,  ///< text from elsewhere, to be checked and encoded as a paste
  };
  Route route = Route::Typed;
  std::string text;  ///< UTF-8

  friend bool operator==(const DroppedText&, const DroppedText&) = default;
};

/// Addresses come before text: the paths of local files, which are those without a host, on "localhost" or on
/// `thisHost`, and other addresses as they are, each quoted for a shell. Nothing if there is neither.
std::optional<DroppedText> droppedText(const QMimeData& data, const QString& thisHost);

/// `word` as one word of a POSIX shell (POSIX.1-2024, Shell Command Language, 2.2): unchanged if it has letters, digits
/// and "_@%+:,./-" only, otherwise in single quotes, or in dollar-single-quotes if it has control characters or is not
/// UTF-8. The result is UTF-8 without control characters. `word` has no NUL.
std::string shellQuoted(std::string_view word);

}  // namespace zolt
