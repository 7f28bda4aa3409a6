#include "terminal/links/LinkPolicy.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <algorithm>
#include <ranges>

#include "terminal/VisibleText.h"
#include "terminal/links/UriParts.h"
#include "text/GraphemeClusters.h"
#include "text/Utf8Decoder.h"

namespace zolt {

namespace {

QString asString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return asString(a).compare(asString(b), Qt::CaseInsensitive) == 0;
}

bool isUriScalar(char32_t scalar) {
  if (scalar < 0x80) return isUriByte(static_cast<char>(scalar));
  return !isInvisible(scalar) && !QChar::isSpace(scalar) && !QChar::isNonCharacter(scalar);
}

bool hasUriCharactersOnly(std::string_view text) {
  bool all = isValidUtf8(text);
  forEachScalar(text, [&](char32_t scalar) { all = all && isUriScalar(scalar); });
  return all;
}

LinkAction webAction(const UriParts& parts, std::string_view) {
  return parts.hasAuthority && !parts.host.empty() ? LinkAction::Open : LinkAction::Refuse;
}

LinkAction mailAction(const UriParts& parts, std::string_view) {
  return parts.hasAuthority ? LinkAction::Refuse : LinkAction::Open;
}

LinkAction fileAction(const UriParts& parts, std::string_view thisHost) {
  const std::string_view host = parts.host;
  const bool isHere = host.empty() || equalsIgnoringCase(host, "localhost") || equalsIgnoringCase(host, thisHost);
  if (!isHere || !parts.userInfo.empty() || !parts.port.empty()) return LinkAction::Refuse;
  const std::string path =
      QByteArray::fromPercentEncoding(QByteArray(parts.path.data(), static_cast<qsizetype>(parts.path.size())))
          .toStdString();
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  if (!path.starts_with('/') || std::ranges::any_of(path, isControl)) return LinkAction::Refuse;
  const auto isParent = [](auto segment) { return std::ranges::equal(segment, std::string_view("..")); };
  return std::ranges::any_of(path | std::views::split('/'), isParent) ? LinkAction::Refuse : LinkAction::Open;
}

struct SchemeRow {
  std::string_view scheme;
  LinkAction (*action)(const UriParts& parts, std::string_view thisHost);
};

constexpr SchemeRow kSchemes[] = {
    {"http", webAction},
    {"https", webAction},
    {"mailto", mailAction},
    {"file", fileAction},
};

// What Qt makes of the address, which is what it would open; invalid if it cannot be one.
QUrl strictUrl(std::string_view uri) {
  return QUrl(asString(uri), QUrl::StrictMode);
}

}  // namespace

LinkAction linkAction(std::string_view uri, std::string_view thisHost) {
  if (uri.size() > kMaxLinkBytes || !hasUriCharactersOnly(uri)) return LinkAction::Refuse;
  const std::optional<UriParts> parts = splitUri(uri);
  if (!parts || (parts->path.empty() && parts->rest.empty() && parts->host.empty())) return LinkAction::Refuse;
  if (parts->userInfo.find('@') != parts->userInfo.npos || !strictUrl(uri).isValid()) return LinkAction::Refuse;
  const auto* row = std::ranges::find_if(
      kSchemes, [&](const SchemeRow& known) { return equalsIgnoringCase(known.scheme, parts->scheme); });
  return row == std::end(kSchemes) ? LinkAction::Ask : row->action(*parts, thisHost);
}

std::string displayTarget(std::string_view uri) {
  const std::optional<UriParts> parts = splitUri(uri);
  const QUrl url = strictUrl(uri);
  if (!parts || !parts->hasAuthority || !url.isValid()) return visibleText(uri);
  const std::string host = url.host(QUrl::FullyEncoded).toStdString();
  std::string shown = url.scheme().toStdString() + "://";
  shown += host.find(':') == host.npos ? host : "[" + host + "]";
  if (!parts->port.empty()) shown.append(":").append(parts->port);
  return shown + visibleText(parts->path) + visibleText(parts->rest);
}

}  // namespace zolt
