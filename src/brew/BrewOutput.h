#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "brew/BrewPackage.h"

namespace zolt {

/// What the output of Homebrew's tool says. Pure.

/// The output as text, without white space and newlines at its ends; nothing when it is not valid UTF-8 as a whole.
std::optional<QString> textOfBrewOutput(const QByteArray& bytes);

/// The lines that are not empty, as they stand.
QStringList linesOf(const QString& text);

/// The package called `name` as "brew info" tells of it: its description is the rest of the first line that begins with
/// "Desc: ", its installed version the last word of the first line that begins with "Installed", deliberately also
/// where that is the line's only word.
BrewPackage packageOfInfo(const QString& name, BrewPackageType type, const QString& text);

/// A package for each line of "brew search", headings and messages included, deliberately; a cask where the line begins
/// with "homebrew/cask".
std::vector<BrewPackage> packagesOfSearch(const QString& text);

}  // namespace zolt
