#pragma once

#include <string>

#include "base/Result.h"
#include "history/BlockCodec.h"
#include "vt/TerminalRecord.h"

namespace zolt {

/// Writes a terminal into an encrypted file (SealedFile). Returns the `errno` of the first failure; 0 if there was
/// none. Takes memory in proportion to the history as it is compressed, not as text. Any thread.
int writeTerminalFile(const std::string& path, const BlockCipher::Key& key, const vt::TerminalRecord& terminal);

/// Reads it again. Fails with the reason, as the end of a sentence, if the screen cannot be had from it. Any thread.
Result<vt::StoredTerminal> readTerminalFile(const std::string& path, const BlockCipher::Key& key);

}  // namespace zolt
