#include "updates/PackagePlan.h"

#include <algorithm>

#include "updates/FetchAddress.h"
#include "updates/PackageName.h"
#include "updates/UpdateError.h"

namespace zolt {

namespace {

using enum UpdateError;

Result<std::optional<std::int64_t>> lengthOf(const QString& text, std::int64_t maximumBytes) {
  if (text.isNull()) return std::optional<std::int64_t>();
  const bool isNumber = std::ranges::all_of(text, [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
  if (text.isEmpty() || !isNumber) return failureOf(PackageLengthUnreadable);
  bool fits = false;
  const std::int64_t length = text.toLongLong(&fits);
  if (!fits || length > maximumBytes) return failureOf(PackageTooLarge);
  if (length == 0) return failureOf(PackageEmpty);
  return std::optional(length);
}

}  // namespace

Result<PackagePlan> planPackage(const AppcastEnclosure& enclosure, const QString& publicKey,
                                std::int64_t maximumBytes) {
  if (publicKey.isEmpty()) return failureOf(NoKey);
  const std::optional<UpdateKey> key = updateKeyOf(publicKey);
  if (!key) return failureOf(KeyInvalid);
  if (enclosure.edSignature.isEmpty()) return failureOf(NotSigned);
  const std::optional<UpdateSignature> signature = updateSignatureOf(enclosure.edSignature);
  if (!signature) return failureOf(SignatureUnreadable);
  const auto length = lengthOf(enclosure.length, maximumBytes);
  if (!length) return Failure{length.reason()};
  if (!mayFetch(enclosure.url)) return failureOf(PackageNotSecure);
  return PackagePlan{.url = enclosure.url,
                     .length = length.value(),
                     .signature = *signature,
                     .key = *key,
                     .fileName = packageFileName(enclosure.url)};
}

}  // namespace zolt
