#include "desktop/BlurBehind.h"

#include <QEvent>
#include <QGuiApplication>

#if defined(ZOLT_HAS_XCB) && QT_CONFIG(xcb)
#define ZOLT_TALKS_X11
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#endif

namespace zolt {

#ifdef ZOLT_TALKS_X11

namespace {

struct Release {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Release>;

// An atom that some program uses already; none otherwise.
xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name) {
  constexpr std::uint8_t kOnlyIfItExists = 1;
  const auto asked = xcb_intern_atom(connection, kOnlyIfItExists, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, asked, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool hasProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
  const Reply<xcb_list_properties_reply_t> reply(
      xcb_list_properties_reply(connection, xcb_list_properties(connection, window), nullptr));
  if (!reply) return false;
  const std::span atoms(xcb_list_properties_atoms(reply.get()),
                        static_cast<std::size_t>(xcb_list_properties_atoms_length(reply.get())));
  return std::ranges::find(atoms, property) != atoms.end();
}

bool listsAtom(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t list, xcb_atom_t wanted) {
  constexpr std::uint32_t kMostAtoms = 4096;
  const auto asked = xcb_get_property(connection, 0, window, list, XCB_ATOM_ATOM, 0, kMostAtoms);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, asked, nullptr));
  if (!reply || reply->type != XCB_ATOM_ATOM) return false;
  const std::span atoms(static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get())), reply->value_len);
  return std::ranges::find(atoms, wanted) != atoms.end();
}

// Where the window is; none if the connection has no such window any more.
xcb_window_t rootOf(xcb_connection_t* connection, xcb_window_t window) {
  const Reply<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
  return reply ? reply->root : xcb_window_t{XCB_WINDOW_NONE};
}

void setBlur(xcb_connection_t* connection, xcb_window_t window, bool wanted) {
  const xcb_atom_t blur = atomOf(connection, "_KDE_NET_WM_BLUR_BEHIND_REGION");
  const xcb_window_t root = rootOf(connection, window);
  if (blur == XCB_ATOM_NONE || root == XCB_WINDOW_NONE) return;
  if (!wanted) {
    xcb_delete_property(connection, window, blur);
  } else if (hasProperty(connection, root, blur) ||
             listsAtom(connection, root, atomOf(connection, "_NET_SUPPORTED"), blur)) {
    // No rectangle stands for the whole window.
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, blur, XCB_ATOM_CARDINAL, 32, 0, nullptr);
  }
  xcb_flush(connection);
}

}  // namespace

void BlurBehind::apply() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr || m_window.internalWinId() == 0) return;
  setBlur(x11->connection(), static_cast<xcb_window_t>(m_window.internalWinId()), m_isWanted);
}

#else

void BlurBehind::apply() {}

#endif

BlurBehind::BlurBehind(QWidget& window) : m_window(window) {
  m_window.installEventFilter(this);
}

void BlurBehind::setWanted(bool wanted) {
  if (m_isWanted == wanted) return;
  m_isWanted = wanted;
  apply();
}

bool BlurBehind::eventFilter(QObject* watched, QEvent* event) {
  // A new system window has no properties yet.
  if (event->type() == QEvent::WinIdChange && m_isWanted) apply();
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
