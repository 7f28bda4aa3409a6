#pragma once

#include "updates/Fetch.h"
#include "updates/UpdateError.h"

namespace zolt {

/// What a failed fetch of the feed means to the user.
UpdateError feedErrorOf(FetchError error);
/// What a failed fetch of the package means to the user.
UpdateError packageErrorOf(FetchError error);

}  // namespace zolt
