#include "terminal/input/DroppedPaths.h"

#include <QUrl>
#include <algorithm>
#include <array>

#include "text/GraphemeClusters.h"
#include "text/Utf8Decoder.h"
#include "vt/input/InputText.h"

namespace zolt {

namespace {

constexpr std::string_view kSafeSymbols = "_@%+:,./-";

bool isSafe(char32_t scalar) {
  if (scalar < 0x80 && kSafeSymbols.find(static_cast<char>(scalar)) != kSafeSymbols.npos) return true;
  return QChar::isLetterOrNumber(scalar) || QChar::isMark(scalar);
}

struct Escape {
  char byte;
  std::string_view text;
};

constexpr std::array kEscapes{Escape{'\\', "\\\\"}, Escape{'\'', "\\'"}, Escape{'\n', "\\n"}, Escape{'\r', "\\r"},
                              Escape{'\t', "\\t"}};

// Three digits: a digit that follows is another character.
void appendOctal(std::string& out, char byte) {
  const auto value = static_cast<unsigned char>(byte);
  out += '\\';
  for (const int shift : {6, 3, 0}) {
    out += static_cast<char>('0' + (value >> shift & 7));
  }
}

std::string dollarQuoted(std::string_view word) {
  std::string quoted = "$'";
  const char* const end = word.data() + word.size();
  while (!word.empty()) {
    const auto* escape = std::ranges::find(kEscapes, word.front(), &Escape::byte);
    const DecodedScalar decoded = decodeUtf8(word.data(), end);
    const std::size_t length = std::max<std::size_t>(decoded.length, 1);
    if (escape != kEscapes.end()) {
      quoted += escape->text;
    } else if (decoded.length == 0 || vt::isControl(decoded.scalar)) {
      for (const char byte : word.substr(0, length)) {
        appendOctal(quoted, byte);
      }
    } else {
      quoted += word.substr(0, length);
    }
    word.remove_prefix(length);
  }
  return quoted + "'";
}

std::string singleQuoted(std::string_view word) {
  std::string quoted = "'";
  for (const char c : word) {
    c == '\'' ? quoted += "'\\''" : quoted += c;
  }
  return quoted + "'";
}

bool isLocal(const QUrl& url, const QString& thisHost) {
  const QString host = url.host();
  if (url.scheme() != QLatin1String("file")) return false;
  return host.isEmpty() || host == QLatin1String("localhost") || host.compare(thisHost, Qt::CaseInsensitive) == 0;
}

// A path's bytes need not be UTF-8, and QUrl::toLocalFile() would change them. Empty without a usable path.
std::string localPath(const QUrl& url) {
  const QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
  return path.startsWith('/') && !path.contains('\0') ? path.toStdString() : std::string();
}

}  // namespace

std::string shellQuoted(std::string_view word) {
  bool allSafe = !word.empty();
  bool anyControl = false;
  forEachScalar(word, [&](char32_t scalar) {
    allSafe = allSafe && isSafe(scalar);
    anyControl = anyControl || vt::isControl(scalar);
  });
  if (anyControl || !isValidUtf8(word)) return dollarQuoted(word);
  return allSafe ? std::string(word) : singleQuoted(word);
}

std::optional<DroppedText> droppedText(const QMimeData& data, const QString& thisHost) {
  DroppedText dropped;
  const QList<QUrl> urls = data.urls();
  for (const QUrl& url : urls) {
    const std::string word = isLocal(url, thisHost) ? localPath(url) : url.toEncoded().toStdString();
    if (!word.empty()) dropped.text.append(shellQuoted(word)).append(" ");
  }
  if (!dropped.text.empty()) return dropped;
  std::string text = data.text().toStdString();
  if (text.empty()) return std::nullopt;
  return DroppedText{.route = DroppedText::Route::Pasted, .text = std::move(text)};
}

}  // namespace zolt
