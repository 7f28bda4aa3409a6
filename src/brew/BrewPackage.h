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

/// One Homebrew package, as the tool's output told of it. A value; two describe the same package only by their id,
/// which is new for every value that is built from output.
struct BrewPackage {
  QUuid id;
  QString name;                        ///< as on the tool's command line; of a search result the whole line
  std::optional<QString> description;  ///< one line
  std::optional<QString> installedVersion;
  std::optional<QString> latestVersion;  ///< nothing fills it
  BrewPackageType type = BrewPackageType::Formula;
};

/// A package with a fresh id.
BrewPackage makeBrewPackage(QString name, std::optional<QString> description, std::optional<QString> installedVersion,
                            BrewPackageType type);

}  // namespace zolt
