#include "terminal/input/Keysyms.h"

#include <gtest/gtest.h>

namespace zolt {
namespace {

TEST(Keysyms, HaveTheCharactersOfTheProtocol) {
  struct Row {
    std::uint32_t keysym;
    char32_t character;
  };
  const Row rows[] = {
      {' ', ' '},     {'~', '~'},     {0xA0, 0xA0},   {0xFF, U'ÿ'},       {0x5C1, 0x621},
      {0x5DA, 0x63A}, {0x5F2, 0x652}, {0x6C0, U'ю'},  {0x6C1, U'а'},      {0x6DF, U'ъ'},
      {0x6E0, U'Ю'},  {0x6FF, U'Ъ'},  {0x7C1, U'Α'},  {0x7D2, U'Σ'},      {0x7D9, U'Ω'},
      {0x7F2, U'σ'},  {0x7F3, U'ς'},  {0x7F9, U'ω'},  {0xCE0, U'א'},      {0xCFA, U'ת'},
      {0xDA1, 0xE01}, {0xDDF, 0xE3F}, {0xDF9, 0xE59}, {0x010020AC, U'€'}, {0x0110FFFF, 0x10FFFF},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(keysymCharacter(row.keysym), row.character) << std::hex << row.keysym;
  }
}

TEST(Keysyms, OfFunctionalKeysControlsAndOtherNumbersHaveNone) {
  for (const std::uint32_t keysym : {0x0U, 0x1FU, 0x7FU, 0x9FU, 0x100U, 0x6BFU, 0x700U, 0x7D3U, 0xFE51U, 0xFF0DU,
                                     0x01000003U, 0x0100D800U, 0x01110000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(keysymCharacter(keysym), 0U) << std::hex << keysym;
  }
}

}  // namespace
}  // namespace zolt
