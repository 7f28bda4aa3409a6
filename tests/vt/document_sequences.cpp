// Prints docs/escape-sequences.md; scripts/document-sequences writes it.

#include <cstdio>
#include <string>

#include "vt/SequenceDocument.h"

int main() {
  const std::string text = zolt::vt::test::sequenceDocument();
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0 ? 0 : 1;
}
