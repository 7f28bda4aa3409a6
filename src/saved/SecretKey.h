#pragma once

#include <string>

#include "base/Result.h"
#include "history/BlockCodec.h"

namespace zolt {

/// The key in the file `path`, which only the user can read; made anew if there is none. Fails with the reason, as the
/// end of a sentence, if it can be neither read nor made, or is not the user's own. Any thread.
Result<BlockCipher::Key> keyFromFile(const std::string& path);

}  // namespace zolt
