#pragma once

#include <string>
#include <vector>

#include "base/Result.h"
#include "messages/Message.h"

namespace zolt {

/// What the user asked for on the command line after `zolt msg`.
struct MessageLine {
  bool wantsHelp = false;
  bool readsText = false;  ///< the text is what standard input holds
  Message message;

  /// Parses the arguments after "msg". A failure's reason is one line, fit to show the user. What the message leaves
  /// open, its sender fills in.
  static Result<MessageLine> parse(const std::vector<std::string>& arguments);
  /// All verbs, options and what they answer.
  static std::string helpText();
};

}  // namespace zolt
