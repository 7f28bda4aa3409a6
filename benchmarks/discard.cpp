// discard PROGRAM [ARG...]: runs PROGRAM on a pseudo-terminal and throws its output away.
#include "DiscardingReader.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  zolt::bench::runDiscarding({argv + 1, argv + argc});
  return 0;
}
