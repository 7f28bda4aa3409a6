#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <new>

#include "Commands.h"

namespace {

constexpr int kUsageStatus = 2;

int usageError(const std::string& reason) {
  std::cerr << "zolt-inspect: " << reason << '\n';
  return kUsageStatus;
}

void printHelp() {
  std::cout << "Usage: zolt-inspect COMMAND [ARG...] [OPTION...] [-- PROGRAM [ARG...]]\n\n";
  for (const auto& command : zolt::inspect::commands()) {
    std::string head = std::string("  ") + command.name + " " + command.arguments;
    head.resize(std::max<std::size_t>(head.size() + 2, 31), ' ');
    std::cout << head << command.help << '\n';
  }
  std::cout << "\n  --chunk N                    read the input in chunks of N bytes, each decoded on its own\n"
               "  --full                       include styles, links, marks and the scrollback\n"
               "  --rectangle-checksums        let the program query checksums of rectangles (DECRQCRA)\n";
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  if (words.empty()) return usageError("needs a command; --help lists them");
  if (words.front() == "--help") {
    printHelp();
    return 0;
  }
  if (words.front() == "--version") {
    std::cout << "zolt-inspect " ZOLT_VERSION "\n";
    return 0;
  }
  const auto& commands = zolt::inspect::commands();
  const auto command = std::ranges::find_if(commands, [&](const auto& each) { return words.front() == each.name; });
  if (command == commands.end()) return usageError("unknown command: " + words.front());

  zolt::inspect::Request request;
  for (auto word = words.begin() + 1; word != words.end(); ++word) {
    const auto takes = [&](zolt::inspect::Option option) { return (command->options & option) != 0; };
    if (*word == "--" && takes(zolt::inspect::kProgram)) {
      request.program.assign(word + 1, words.end());
      break;
    }
    if (*word == "--full" && takes(zolt::inspect::kFull)) {
      request.full = true;
    } else if (*word == "--rectangle-checksums" && takes(zolt::inspect::kRectangleChecksums)) {
      request.rectangleChecksums = true;
    } else if ((*word == "--chunk" || word->starts_with("--chunk=")) && takes(zolt::inspect::kChunk)) {
      std::string value;
      if (const std::size_t equals = word->find('='); equals != std::string::npos) {
        value = word->substr(equals + 1);
      } else if (word + 1 != words.end()) {
        value = *++word;
      }
      std::size_t bytes = 0;
      const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), bytes);
      if (error != std::errc{} || end != value.data() + value.size() || bytes == 0) {
        return usageError("--chunk needs a number of bytes, at least 1");
      }
      request.chunkBytes = bytes;
    } else if (word->starts_with("--")) {
      return usageError("unknown option: " + *word);
    } else {
      request.arguments.push_back(*word);
    }
  }
  try {
    const auto status = command->run(request, std::cout);
    if (!status) return usageError(status.reason());
    if (status.value() != 0) {
      std::cout.flush();
      return status.value();
    }
  } catch (const std::bad_alloc&) {
    std::cerr << "zolt-inspect: the input does not fit in memory; --chunk reads it piece by piece\n";
    return 1;
  }
  return std::cout.flush() ? 0 : 1;
}
