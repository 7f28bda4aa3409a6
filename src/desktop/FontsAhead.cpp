#include "desktop/FontsAhead.h"

#ifdef ZOLT_HAS_FONTCONFIG
#include <fontconfig/fontconfig.h>
#endif

namespace zolt {

std::jthread readFontConfigurationAhead() {
#ifdef ZOLT_HAS_FONTCONFIG
  return std::jthread([] { FcInit(); });
#else
  return {};
#endif
}

}  // namespace zolt
