#pragma once

#include <QStringView>
#include <compare>

namespace zolt {

/// The order of two version texts, as an appcast means it. Pure; any text is a version.
///
/// A version is read in runs: ASCII digits are numbers, punctuation and blanks separate, the rest is text; all from the
/// first "-" on is ignored. Numbers compare as numbers of any length, and missing ones are 0: 1.0 equals 1.0.0. Text
/// compares by code units, and a version that has text where the other has none is the older one: 1.0b1 is older than
/// 1.0, and 1.0b9 older than 1.0b10.
std::weak_ordering compareVersions(QStringView a, QStringView b);

}  // namespace zolt
