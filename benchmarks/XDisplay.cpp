#include "XDisplay.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

#include "StartTime.h"

namespace zolt::bench {

namespace {

constexpr double kPatience = 20;  // seconds, for a program to show its window or take the focus

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

template <class Reply>
Owned<Reply> own(Reply* reply) {
  return Owned<Reply>(reply);
}

[[noreturn]] void fail(const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  std::exit(1);
}

}  // namespace

template <class Reply>
Reply XDisplay::check(Reply reply, const char* what) const {
  if (!reply) fail(std::string("the X server did not answer: ") + what);
  return reply;
}

XDisplay::XDisplay() : m_connection(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(m_connection) != 0) fail("there is no X display");
  m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
  const xcb_query_extension_reply_t* xtest = xcb_get_extension_data(m_connection, &xcb_test_id);
  if (xtest == nullptr || xtest->present == 0) fail("the X server has no XTEST extension");
  if (m_screen->root_depth != 24) fail("the X screen is not 24 bits deep");
  constexpr char kName[] = "_NET_WM_PID";
  const auto atom = check(
      own(xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, sizeof kName - 1, kName), nullptr)),
      "an atom");
  m_processAtom = atom->atom;
}

XDisplay::~XDisplay() {
  xcb_disconnect(m_connection);
}

xcb_window_t XDisplay::waitForWindow(pid_t pid) {
  for (const double deadline = now() + kPatience; now() < deadline;) {
    const auto tree = check(
        own(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_screen->root), nullptr)), "the windows");
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
      const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
      const auto attributes =
          own(xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
      const auto owner = own(xcb_get_property_reply(
          m_connection, xcb_get_property(m_connection, 0, window, m_processAtom, XCB_ATOM_CARDINAL, 0, 1), nullptr));
      // Either may be gone by now.
      if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !owner) continue;
      std::uint32_t value = 0;
      if (xcb_get_property_value_length(owner.get()) != sizeof value) continue;
      std::memcpy(&value, xcb_get_property_value(owner.get()), sizeof value);
      if (value == static_cast<std::uint32_t>(pid)) return window;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  fail("process " + std::to_string(pid) + " showed no window");
}

void XDisplay::place(xcb_window_t window, const Area& area) {
  const std::uint32_t values[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y),
                                  static_cast<std::uint32_t>(area.width), static_cast<std::uint32_t>(area.height)};
  xcb_configure_window(m_connection, window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  xcb_flush(m_connection);
}

void XDisplay::focus(xcb_window_t window) {
  xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  requireFocus(window);
}

void XDisplay::requireFocus(xcb_window_t window) {
  const auto focused = check(own(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr)),
                             "the input focus");
  if (focused->focus != window) fail("another window than the one being measured has the focus");
}

xcb_keycode_t XDisplay::keyFor(char character) {
  const xcb_setup_t* setup = xcb_get_setup(m_connection);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto mapping =
      check(own(xcb_get_keyboard_mapping_reply(
                m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count), nullptr)),
            "the keyboard mapping");
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (int key = 0; key < count; ++key) {
    // The keysym of an ASCII character equals its code.
    if (symbols[key * mapping->keysyms_per_keycode] == static_cast<xcb_keysym_t>(character)) {
      return static_cast<xcb_keycode_t>(setup->min_keycode + key);
    }
  }
  fail(std::string("no key types ") + character);
}

void XDisplay::fakeKey(std::uint8_t type, xcb_keycode_t key) {
  xcb_test_fake_input(m_connection, type, key, XCB_CURRENT_TIME, m_screen->root, 0, 0, 0);
  xcb_flush(m_connection);
}

void XDisplay::press(xcb_keycode_t key) {
  fakeKey(XCB_KEY_PRESS, key);
}

void XDisplay::release(xcb_keycode_t key) {
  fakeKey(XCB_KEY_RELEASE, key);
}

std::vector<std::uint32_t> XDisplay::pixels(const Area& area) {
  const auto image =
      check(own(xcb_get_image_reply(m_connection,
                                    xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root,
                                                  static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                                                  static_cast<std::uint16_t>(area.width),
                                                  static_cast<std::uint16_t>(area.height), ~std::uint32_t{0}),
                                    nullptr)),
            "pixels");
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
  if (static_cast<std::size_t>(xcb_get_image_data_length(image.get())) != pixels.size() * sizeof(std::uint32_t)) {
    fail("the X server's pixels are not 4 bytes each");
  }
  std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * sizeof(std::uint32_t));
  return pixels;
}

Area differenceOf(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after, const Area& area) {
  int left = area.width;
  int top = area.height;
  int right = 0;
  int bottom = 0;
  for (int y = 0; y < area.height; ++y) {
    for (int x = 0; x < area.width; ++x) {
      const std::size_t at =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(area.width) + static_cast<std::size_t>(x);
      if (before[at] == after[at]) continue;
      left = std::min(left, x);
      top = std::min(top, y);
      right = std::max(right, x + 1);
      bottom = std::max(bottom, y + 1);
    }
  }
  return {.x = area.x + left, .y = area.y + top, .width = right - left, .height = bottom - top};
}

}  // namespace zolt::bench
