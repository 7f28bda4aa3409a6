#include "terminal/input/PcKeyboard.h"

#include <algorithm>

namespace zolt {

namespace {

// clang-format off
constexpr PcKey kPcKeys[] = {
    {10, 0x12, '1', '!'}, {11, 0x13, '2', '@'}, {12, 0x14, '3', '#'}, {13, 0x15, '4', '$'}, {14, 0x17, '5', '%'},
    {15, 0x16, '6', '^'}, {16, 0x1A, '7', '&'}, {17, 0x1C, '8', '*'}, {18, 0x19, '9', '('}, {19, 0x1D, '0', ')'},
    {20, 0x1B, '-', '_'}, {21, 0x18, '=', '+'},
    {24, 0x0C, 'q', 'Q'}, {25, 0x0D, 'w', 'W'}, {26, 0x0E, 'e', 'E'}, {27, 0x0F, 'r', 'R'}, {28, 0x11, 't', 'T'},
    {29, 0x10, 'y', 'Y'}, {30, 0x20, 'u', 'U'}, {31, 0x22, 'i', 'I'}, {32, 0x1F, 'o', 'O'}, {33, 0x23, 'p', 'P'},
    {34, 0x21, '[', '{'}, {35, 0x1E, ']', '}'},
    {38, 0x00, 'a', 'A'}, {39, 0x01, 's', 'S'}, {40, 0x02, 'd', 'D'}, {41, 0x03, 'f', 'F'}, {42, 0x05, 'g', 'G'},
    {43, 0x04, 'h', 'H'}, {44, 0x26, 'j', 'J'}, {45, 0x28, 'k', 'K'}, {46, 0x25, 'l', 'L'},
    {47, 0x29, ';', ':'}, {48, 0x27, '\'', '"'}, {49, 0x32, '`', '~'}, {51, 0x2A, '\\', '|'},
    {52, 0x06, 'z', 'Z'}, {53, 0x07, 'x', 'X'}, {54, 0x08, 'c', 'C'}, {55, 0x09, 'v', 'V'}, {56, 0x0B, 'b', 'B'},
    {57, 0x2D, 'n', 'N'}, {58, 0x2E, 'm', 'M'}, {59, 0x2B, ',', '<'}, {60, 0x2F, '.', '>'}, {61, 0x2C, '/', '?'},
    {65, 0x31, ' ', ' '},
};
// clang-format on

}  // namespace

std::span<const PcKey> pcKeys() {
  return kPcKeys;
}

const PcKey* pcKeyOf(const QKeyEvent& event, KeyboardSystem system) {
  const auto* row = system == KeyboardSystem::Mac
                        ? std::ranges::find(kPcKeys, event.nativeVirtualKey(), &PcKey::macCode)
                        : std::ranges::find(kPcKeys, event.nativeScanCode(), &PcKey::xkbCode);
  return row == std::end(kPcKeys) ? nullptr : row;
}

}  // namespace zolt
