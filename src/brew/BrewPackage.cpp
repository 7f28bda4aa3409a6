#include "brew/BrewPackage.h"

#include <utility>

namespace zolt {

BrewPackage makeBrewPackage(QString name, std::optional<QString> description, std::optional<QString> installedVersion,
                            BrewPackageType type) {
  return {.id = QUuid::createUuid(),
          .name = std::move(name),
          .description = std::move(description),
          .installedVersion = std::move(installedVersion),
          .latestVersion = std::nullopt,
          .type = type};
}

}  // namespace zolt
