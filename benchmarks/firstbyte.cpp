// A shell that prompts at once: writes the time of its first byte to the pipe ZOLT_BENCH_PIPE and waits for SIGHUP.
// Without such a pipe it fills the screen with text.
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "StartTime.h"

int main() {
  const bool tells = std::getenv("ZOLT_BENCH_PIPE") != nullptr;
  const std::string text = tells ? "$ " : std::string(16'000, '#');  // more than a screen holds
  if (write(STDOUT_FILENO, text.data(), text.size()) != static_cast<ssize_t>(text.size())) return 1;
  if (tells) zolt::bench::tellTime();
  pause();
}
