#include "vt/input/Paste.h"

#include "vt/input/InputText.h"

namespace zolt::vt {

namespace {

constexpr std::string_view kOpening = "\x1B[200~";
constexpr std::string_view kClosing = "\x1B[201~";

void appendSafe(std::string& out, std::string_view text) {
  bool afterReturn = false;
  forEachScalar(text, [&](char32_t scalar) {
    const bool completesLineEnd = afterReturn && scalar == '\n';
    afterReturn = scalar == '\r';
    if (completesLineEnd) return;
    if (scalar == '\n') scalar = '\r';
    if (isPlain(scalar) || scalar == '\r' || scalar == '\t') appendUtf8(out, scalar);
  });
}

}  // namespace

std::string encodePaste(std::string_view text, bool bracketed) {
  std::string bytes;
  bytes.reserve(text.size() + kOpening.size() + kClosing.size());
  if (bracketed) bytes += kOpening;
  const std::size_t start = bytes.size();
  appendSafe(bytes, text);
  if (bytes.size() == start) return {};
  if (bracketed) bytes += kClosing;
  return bytes;
}

std::string encodeFocus(bool focused) {
  return focused ? "\x1B[I" : "\x1B[O";
}

}  // namespace zolt::vt
