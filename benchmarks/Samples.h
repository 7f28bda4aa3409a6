#pragma once

#include <cstddef>
#include <string>

namespace zolt::bench {

/// Texts of about `bytes` bytes, the same on every run.

/// Log lines of plain ASCII, about 90 characters each, ending in LF.
std::string plainLog(std::size_t bytes);
/// The same with a colour change and a reset around every word.
std::string colouredLog(std::size_t bytes);
/// The same with a colour of its own for every word: one of the 16 named, of the 256, or of all direct ones.
std::string manyColoursLog(std::size_t bytes);
/// The same with one of the 256 colours for every word, and with one of all direct ones.
std::string paletteLog(std::size_t bytes);
std::string directColourLog(std::size_t bytes);
/// Log lines with words in several scripts, arrows and emoji among the ASCII.
std::string mixedUtf8Log(std::size_t bytes);

/// One endless line.
std::string endlessLine(std::size_t bytes);
/// Screens of 25 by 80 cells, each drawn over the last, every cell in its own colours (256-colour and direct).
std::string redraws(std::size_t bytes);
/// The same with a random direct foreground and background for every place.
std::string directColourRedraws(std::size_t bytes);

/// Ends lines as a pseudo-terminal does, in CR LF.
std::string withTerminalLineEnds(const std::string& text);

/// Writes `text` to `path`. Exits if it cannot.
void writeFile(const std::string& path, const std::string& text);

}  // namespace zolt::bench
