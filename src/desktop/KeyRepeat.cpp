#include "desktop/KeyRepeat.h"

#include <QGuiApplication>

#if defined(ZOLT_HAS_XCB_XKB) && QT_CONFIG(xcb)
#define ZOLT_TALKS_XKB
// The header has a member of this name.
#define explicit explicitFlag
#include <xcb/xkb.h>
#undef explicit
#endif

namespace zolt {

void askForKeyRepeatsWithoutReleases() {
#ifdef ZOLT_TALKS_XKB
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
  if (connection == nullptr) return;
  // A request of an extension that the server does not have would end the connection.
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xkb_id);
  if (extension == nullptr || extension->present == 0) return;
  constexpr std::uint32_t kFlag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  const auto asked = xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, kFlag, kFlag, 0, 0, 0);
  xcb_discard_reply(connection, asked.sequence);
#endif
}

}  // namespace zolt
