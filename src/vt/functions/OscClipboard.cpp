#include <sodium.h>

#include <algorithm>
#include <string>

#include "vt/functions/Osc.h"
#include "vt/functions/OscFields.h"

namespace zolt::vt {

namespace {

std::optional<std::string> base64Decoded(std::string_view text) {
  std::string decoded(text.size() / 4 * 3 + 3, '\0');
  for (const int variant : {sodium_base64_VARIANT_ORIGINAL, sodium_base64_VARIANT_ORIGINAL_NO_PADDING}) {
    std::size_t size = 0;
    const char* end = nullptr;
    const int failed = sodium_base642bin(reinterpret_cast<unsigned char*>(decoded.data()), decoded.size(), text.data(),
                                         text.size(), "\r\n ", &size, &end, variant);
    if (failed == 0 && end == text.data() + text.size()) {
      decoded.resize(size);
      return decoded;
    }
  }
  return std::nullopt;
}

}  // namespace

void useClipboard(TerminalState& state, std::string_view text) {
  const std::string_view names = takeField(text);
  const bool isPrimary = !names.empty() && names.find('c') == std::string_view::npos &&
                         names.find_first_of("ps") != std::string_view::npos;
  const ClipboardTarget target = isPrimary ? ClipboardTarget::Primary : ClipboardTarget::Clipboard;
  if (text == "?") {
    auto& reads = state.events.clipboardReads;
    const bool isNew = std::ranges::find(reads, target) == reads.end();
    if (state.settings.allowClipboardReads && isNew) reads.push_back(target);
    return;
  }
  if (!state.settings.allowClipboardWrites) return;
  // As in xterm, anything that is not base64 empties the clipboard.
  auto& writes = state.events.clipboardWrites;
  std::erase_if(writes, [&](const ClipboardWrite& write) { return write.target == target; });
  writes.push_back({.target = target, .text = base64Decoded(text).value_or("")});
}

std::string clipboardReport(ClipboardTarget target, std::string_view text) {
  std::string encoded(sodium_base64_encoded_len(text.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(encoded.data(), encoded.size(), reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                    sodium_base64_VARIANT_ORIGINAL);
  encoded.pop_back();  // the terminating NUL
  std::string report = target == ClipboardTarget::Primary ? "\033]52;p;" : "\033]52;c;";
  report += encoded;
  report += "\033\\";
  return report;
}

}  // namespace zolt::vt
