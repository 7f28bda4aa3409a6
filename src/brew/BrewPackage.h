#pragma once

#include <QString>
#include <QUuid>
#include <functional>
#include <optional>

namespace zolt {

enum class BrewPackageType {
  Formula,  ///< a command-line formula
  Cask,     ///< an application
};

/// One Homebrew package, built from brew's output. A value. Two values are the same package only if their ids are
/// equal, and every value built from output has a new id.
struct BrewPackage {
  QUuid id;
  QString name;                        ///< as used on the command line; for a search result, the whole line
  std::optional<QString> description;  ///< one line
  std::optional<QString> installedVersion;
  std::optional<QString> latestVersion;  ///< never set
  BrewPackageType type = BrewPackageType::Formula;
};

/// A package with a fresh id.
BrewPackage makeBrewPackage(QString name, std::optional<QString> description, std::optional<QString> installedVersion,
                            BrewPackageType type);

}  // namespace zolt
