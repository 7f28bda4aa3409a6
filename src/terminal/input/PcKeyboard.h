#pragma once

#include <QKeyEvent>
#include <cstdint>
#include <span>

#include "terminal/input/KeyboardSystem.h"

namespace zolt {

/// A key of the PC-101 keyboard in its own layout, US English.
struct PcKey {
  std::uint8_t xkbCode;  ///< the kernel's code (KEY_Q is 16; linux/input-event-codes.h) + 8
  std::uint8_t macCode;  ///< virtual key code (kVK_ANSI_Q is 12; HIToolbox/Events.h)
  char plain;            ///< without Shift
  char shifted;
};

/// The letters, digits, punctuation and the space bar.
std::span<const PcKey> pcKeys();

/// The key by its place on the keyboard, whatever the layout; null if it is not one of these or not known. Events that
/// do not come from a keyboard have no scan code; on a Mac they cannot be told from the A key.
const PcKey* pcKeyOf(const QKeyEvent& event, KeyboardSystem system);

}  // namespace zolt
