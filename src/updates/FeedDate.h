#pragma once

#include <QDateTime>
#include <QString>

namespace zolt {

/// The moment that a date of RFC 822, section 5, names, as RSS 2.0 uses it ("Sat, 07 Sep 2002 00:00:01 GMT").
///
/// Years of two digits are read as RFC 2822, section 4.3, has it. Invalid when the text is no such date. Pure.
QDateTime dateOfFeed(const QString& text);

}  // namespace zolt
