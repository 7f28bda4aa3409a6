#pragma once

#include <memory>

#include "updates/views/UpdaterBackend.h"

namespace zolt {

/// The Sparkle framework of the application's bundle, loaded at run time; null when the bundle has none. macOS only.
std::unique_ptr<UpdaterBackend> makeFrameworkBackend(bool startingUpdater);

}  // namespace zolt
