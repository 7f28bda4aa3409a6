#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zolt::bench {

/// A rectangle of a window or of the screen, in pixels.
struct Area {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool empty() const { return width <= 0 || height <= 0; }
};

/// The X display named by DISPLAY, from the point of view of a person who types and looks: without a window manager,
/// and without help from the programs on it. On any failure it prints a line that says why, and exits.
class XDisplay {
 public:
  XDisplay();
  ~XDisplay();
  XDisplay(const XDisplay&) = delete;
  XDisplay& operator=(const XDisplay&) = delete;

  /// The top-level window whose _NET_WM_PID is `pid`, once it is on screen.
  xcb_window_t waitForWindow(pid_t pid);
  /// Moves and resizes a window.
  void place(xcb_window_t window, const Area& area);
  /// Gives a window the focus, and verifies it.
  void focus(xcb_window_t window);
  /// Exits unless `window` has the focus.
  void requireFocus(xcb_window_t window);

  /// The key that types `character` without modifiers.
  xcb_keycode_t keyFor(char character);
  /// Has the server generate a key event, as if from a keyboard. Does not wait.
  void press(xcb_keycode_t key);
  void release(xcb_keycode_t key);

  /// The pixels of the screen in `area`, row by row, as the server has them.
  std::vector<std::uint32_t> pixels(const Area& area);

 private:
  template <class Reply>
  Reply check(Reply reply, const char* what) const;
  void fakeKey(std::uint8_t type, xcb_keycode_t key);

  xcb_connection_t* m_connection;
  xcb_screen_t* m_screen = nullptr;
  xcb_atom_t m_processAtom = XCB_ATOM_NONE;
};

/// The smallest rectangle that contains every pixel in which two pictures of `area` differ, in `area`'s coordinates;
/// empty if there is none.
Area differenceOf(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after, const Area& area);

}  // namespace zolt::bench
