#include "vt/RandomOutput.h"

#include <iterator>
#include <string_view>

namespace zolt::vt::test {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kTexts[] = {"word ",
                                       "a",
                                       "0123456789abcdef",
                                       "\u00E9\u00DF",
                                       "\u4E2D\u6587",
                                       "e\u0301",
                                       "\U0001F469\u200D\U0001F467",
                                       "\u2764\uFE0F",
                                       "\U0001F1E9\U0001F1EA",
                                       " "};
constexpr std::string_view kLineEnds[] = {"\r\n", "\r\n\r\n", "\r\n"};
constexpr std::string_view kRenditions[] = {"\033[1m",       "\033[0m",   "\033[31;44m",    "\033[38:2::10:20:30m",
                                            "\033[48;5;99m", "\033[4:3m", "\033[58:5:7;7m", "\033[39;49m"};
constexpr std::string_view kOthers[] = {"\033[A",
                                        "\033[2;3H",
                                        "\033[5;30H",
                                        "\033[K",
                                        "\033[1J",
                                        "\033[3L",
                                        "\033[2M",
                                        "\033[4@",
                                        "\033[3P",
                                        "\033[2X",
                                        "\033[S",
                                        "\033[2T",
                                        "\033[3;9r",
                                        "\033[r",
                                        "\033[?69h",
                                        "\033[3;12s",
                                        "\033[?69l",
                                        "\033[?6h",
                                        "\033[?6l",
                                        "\033[?7l",
                                        "\033[?7h",
                                        "\033[4h",
                                        "\033[4l",
                                        "\t",
                                        "\b",
                                        "\r",
                                        "\n",
                                        "\033[?1049h",
                                        "\033[?1049l",
                                        "\0337",
                                        "\0338",
                                        "\033M",
                                        "\033(0",
                                        "\033(B",
                                        "\033[b",
                                        "\033[5b",
                                        "\033[1\"q",
                                        "\033[0\"q",
                                        "\033[?J",
                                        "\033[?2027h",
                                        "\033[?2027l",
                                        "\033]2;t\a",
                                        "\033]8;;http://a.b\033\\",
                                        "\033]8;;\033\\",
                                        "\033]133;A\a",
                                        "\033]133;D;3\a",
                                        "\033[6n",
                                        "\033[c",
                                        "\033[?25$p",
                                        "\033P$qm\033\\",
                                        "\033[2;2;4;9$z",
                                        "\033[1;1;3;3;1;2;5;1$v",
                                        "\033[!p",
                                        "\033c",
                                        "\xFF\xC3",
                                        "\xF0\x9F",
                                        "\033[999999999C",
                                        "\033[3 q",
                                        "\033[>1u",
                                        "\033[?u",
                                        "\033['}",
                                        "\033[?45h",
                                        "\033[?1045h",
                                        "\033[3J",
                                        "\x18",
                                        "\033]52;c;YQ==\a"};

template <std::size_t size>
std::string_view oneOf(const std::string_view (&from)[size], std::mt19937& random) {
  return from[random() % size];
}

}  // namespace

std::string randomOutput(std::mt19937& random, int pieces) {
  std::string output;
  for (; pieces > 0; --pieces) {
    const unsigned kind = random() % 10;
    output += kind < 4   ? oneOf(kTexts, random)
              : kind < 5 ? oneOf(kLineEnds, random)
              : kind < 6 ? oneOf(kRenditions, random)
                         : oneOf(kOthers, random);
  }
  return output;
}

std::string randomLines(std::mt19937& random, int pieces) {
  std::string output;
  for (; pieces > 0; --pieces) {
    const unsigned kind = random() % 10;
    output += kind < 6 ? oneOf(kTexts, random) : kind < 8 ? oneOf(kLineEnds, random) : oneOf(kRenditions, random);
  }
  return output;
}

}  // namespace zolt::vt::test
