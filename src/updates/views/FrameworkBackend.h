#pragma once

#include <memory>

#include "updates/views/UpdaterBackend.h"

namespace zolt {

/// The Sparkle framework in the application's bundle, loaded at run time; null if there is none. macOS only.
std::unique_ptr<UpdaterBackend> makeFrameworkBackend(bool startingUpdater);

}  // namespace zolt
