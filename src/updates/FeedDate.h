#pragma once

#include <QDateTime>
#include <QString>

namespace zolt {

/// Parses a date of RFC 822, section 5, as used in RSS 2.0 ("Sat, 07 Sep 2002 00:00:01 GMT").
///
/// Years of two digits are interpreted by RFC 2822, section 4.3. Invalid if `text` is not such a date. Pure.
QDateTime dateOfFeed(const QString& text);

}  // namespace zolt
