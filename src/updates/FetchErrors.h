#pragma once

#include "updates/Fetch.h"
#include "updates/UpdateError.h"

namespace zolt {

/// The error to show when fetching the feed failed.
UpdateError feedErrorOf(FetchError error);
/// The error to show when fetching the package failed.
UpdateError packageErrorOf(FetchError error);

}  // namespace zolt
