#pragma once

#include <QUuid>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace zolt {

/// One shell program that a terminal may run. A value; `id` tells entries apart, and each new entry gets a fresh one.
struct Shell {
  QUuid id = QUuid::createUuid();
  std::string name;               ///< shown to the user, for example "Zsh"
  std::string executable;         ///< absolute path
  std::vector<std::string> args;  ///< empty: the session passes "-l"
  std::string icon;               ///< the name of a symbol image

  friend bool operator==(const Shell&, const Shell&) = default;

  /// Shared entries, each built once on first use.
  static const Shell& bash();
  static const Shell& zsh();
  static const Shell& fish();
  static const Shell& sh();

  /// A JSON object with the keys "id" (upper-case UUID), "name", "executable", "args" and "icon", in that order.
  std::string encoded() const;
  /// Reads what `encoded` writes. All five keys are required; it fails if a key is missing or a value has another type.
  static Result<Shell> decode(std::string_view json);
};

}  // namespace zolt
