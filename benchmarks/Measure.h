#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace zolt::bench {

/// Wall-clock and processor time, in seconds.
struct Cost {
  double wall = 0;
  double cpu = 0;  ///< user and system, children included
};

/// The median; for an even number of values, the mean of the middle two.
double median(std::vector<double> values);

/// The wall-clock time of one call, in seconds.
double secondsFor(const std::function<void()>& action);

/// The processor time that this thread spends on one call, in seconds: steadier than the clock on a shared machine.
double cpuSecondsFor(const std::function<void()>& action);

/// Runs a program to its end and throws its output away. Exits if it cannot be run or fails.
Cost costOfProgram(const std::vector<std::string>& command);
/// The cost of running `command` in `terminal` minus that of running `true` in it: start-up and exit cancel out.
Cost costBeyondStart(const std::vector<std::string>& terminal, const std::vector<std::string>& command);

/// Prints one row of the table: what was measured, the value, the limit, and whether it was met.
void printRow(const std::string& what, double value, const std::string& unit, double limit, bool smallerIsBetter);
/// A row without a limit.
void printFact(const std::string& what, const std::string& value);

}  // namespace zolt::bench
