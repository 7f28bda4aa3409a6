// A shell that prompts at once: writes the time of its first byte to the pipe ZOLT_BENCH_PIPE and waits for SIGHUP.
#include <unistd.h>

#include "StartTime.h"

int main() {
  if (write(STDOUT_FILENO, "$ ", 2) != 2) return 1;
  zolt::bench::tellTime();
  pause();
}
