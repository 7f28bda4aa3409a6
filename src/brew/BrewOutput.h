#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "brew/BrewPackage.h"

namespace zolt {

/// Parsers for brew's output. Pure functions.

/// The output as text, with white space and newlines trimmed from both ends; absent unless all of it is valid UTF-8.
std::optional<QString> textOfBrewOutput(const QByteArray& bytes);

/// The non-empty lines, unchanged.
QStringList linesOf(const QString& text);

/// The package called `name` as "brew info" describes it: its description is the rest of the first line that begins
/// with "Desc: ", its installed version the last word of the first line that begins with "Installed", deliberately even
/// if that is the only word.
BrewPackage packageOfInfo(const QString& name, BrewPackageType type, const QString& text);

/// A package for each line of "brew search", deliberately including headings and messages; a cask if the line begins
/// with "homebrew/cask".
std::vector<BrewPackage> packagesOfSearch(const QString& text);

}  // namespace zolt
