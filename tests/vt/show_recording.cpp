// show-recording FOLDER: the screen of a recording, in the form of its golden file; scripts/approve-recordings.
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "vt/RecordingPicture.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string folder = argv[1];
  int rows = 0;
  int columns = 0;
  std::ifstream size(folder + "/size");
  std::ifstream input(folder + "/input.bin", std::ios::binary);
  if (!(size >> rows >> columns) || !input) {
    std::cerr << "show-recording: " << folder << " is no recording\n";
    return 1;
  }
  zolt::vt::Terminal terminal({.rows = rows, .columns = columns});
  terminal.feed(std::string(std::istreambuf_iterator<char>(input), {}));
  std::cout << zolt::vt::test::recordingPicture(terminal);
}
