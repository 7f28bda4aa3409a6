#include "Samples.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace zolt::bench {

namespace {

constexpr std::array<const char*, 12> kWords{"connection", "accepted", "from", "worker", "queue",  "id=48213",
                                             "latency",    "ms",       "for",  "GET",    "/index", "status=200"};
constexpr std::array<const char*, 8> kForeignWords{"соединение", "接続されました", "réponse", "→", "größe", "✓",
                                                   "😀",          "naïve"};

// The parameters of a random direct colour, after the 2.
std::string directColour(std::mt19937& random) {
  return std::to_string(random() % 256) + ";" + std::to_string(random() % 256) + ";" + std::to_string(random() % 256);
}

// Pictures of 25 by 80 places, each drawn over the one before.
template <class AppendPlace>
std::string pictures(std::size_t bytes, AppendPlace appendPlace) {
  constexpr int kRows = 25;
  constexpr int kColumns = 80;
  std::mt19937 random(42);
  std::string text;
  text.reserve(bytes + 256);
  while (text.size() < bytes) {
    for (int row = 1; row <= kRows; ++row) {
      text += "\x1B[" + std::to_string(row) + ";1H";
      for (int column = 0; column < kColumns; ++column) {
        appendPlace(text, column, random);
        text += static_cast<char>('A' + random() % 26);
      }
    }
  }
  return text;
}

template <class AppendWord>
std::string lines(std::size_t bytes, AppendWord appendWord) {
  std::mt19937 random(42);
  std::string text;
  text.reserve(bytes + 256);
  std::uint64_t number = 0;
  while (text.size() < bytes) {
    text +=
        "2026-11-21 12:" + std::to_string(10 + number / 60 % 50) + ":" + std::to_string(10 + number % 50) + " INFO ";
    for (int word = 0; word < 9; ++word) {
      appendWord(text, random);
      text += ' ';
    }
    text += '\n';
    ++number;
  }
  return text;
}

}  // namespace

std::string plainLog(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) { text += kWords[random() % kWords.size()]; });
}

std::string colouredLog(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) {
    text += "\x1B[" + std::to_string(31 + random() % 6) + "m";
    text += kWords[random() % kWords.size()];
    text += "\x1B[0m";
  });
}

std::string manyColoursLog(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) {
    switch (random() % 3) {
      case 0:
        text += "\x1B[" + std::to_string((random() % 2 == 0 ? 30 : 90) + random() % 8) + "m";
        break;
      case 1:
        text += "\x1B[38;5;" + std::to_string(random() % 256) + "m";
        break;
      default:
        text += "\x1B[38;2;" + directColour(random) + "m";
    }
    text += kWords[random() % kWords.size()];
  });
}

std::string paletteLog(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) {
    text += "\x1B[38;5;" + std::to_string(random() % 256) + "m";
    text += kWords[random() % kWords.size()];
  });
}

std::string directColourLog(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) {
    text += "\x1B[38;2;" + directColour(random) + "m";
    text += kWords[random() % kWords.size()];
  });
}

std::string mixedUtf8Log(std::size_t bytes) {
  return lines(bytes, [](std::string& text, std::mt19937& random) {
    text += random() % 2 == 0 ? kWords[random() % kWords.size()] : kForeignWords[random() % kForeignWords.size()];
  });
}

std::string endlessLine(std::size_t bytes) {
  std::string text = plainLog(bytes);
  for (char& c : text) {
    if (c == '\n') c = ' ';
  }
  return text;
}

std::string redraws(std::size_t bytes) {
  return pictures(bytes, [](std::string& text, int column, std::mt19937& random) {
    const auto color = std::to_string(random() % 256);
    if (column % 2 == 0) {
      text += "\x1B[38;5;" + color + "m";
    } else {
      text += "\x1B[48;2;" + color + ";16;64m";
    }
  });
}

std::string directColourRedraws(std::size_t bytes) {
  return pictures(bytes, [](std::string& text, int, std::mt19937& random) {
    text += "\x1B[38;2;" + directColour(random) + ";48;2;" + directColour(random) + "m";
  });
}

std::string withTerminalLineEnds(const std::string& text) {
  std::string result;
  result.reserve(text.size() + text.size() / 64);
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

void writeFile(const std::string& path, const std::string& text) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr || std::fwrite(text.data(), 1, text.size(), file) != text.size() || std::fclose(file) != 0) {
    std::perror(path.c_str());
    std::exit(1);
  }
}

}  // namespace zolt::bench
