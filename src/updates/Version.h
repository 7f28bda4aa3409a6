#pragma once

#include <QStringView>
#include <compare>

namespace zolt {

/// Compares two versions by the rules of appcasts. Pure; any text is a version.
///
/// A version consists of numbers (ASCII digits), separators (punctuation and blanks) and text (anything else);
/// everything from the first "-" is ignored. Numbers may have any length, and missing numbers are 0: 1.0 equals 1.0.0.
/// Text compares by code units. A version with text is older than one without it at the same place: 1.0b1 is older
/// than 1.0, and 1.0b9 is older than 1.0b10.
std::weak_ordering compareVersions(QStringView a, QStringView b);

}  // namespace zolt
