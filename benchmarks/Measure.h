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

/// The middle value; the mean of the two middle ones of an even number.
double median(std::vector<double> values);

/// The wall-clock time of one call, in seconds.
double secondsFor(const std::function<void()>& action);

/// The processor time that this thread spends on one call, in seconds: steadier than the clock on a shared machine.
double cpuSecondsFor(const std::function<void()>& action);

/// Runs a program to its end with its output thrown away. Ends this process when it cannot be run or fails.
Cost costOfProgram(const std::vector<std::string>& command);
/// What running `command` by `terminal` costs beyond running `true` by it: its own start and end fall out.
Cost costBeyondStart(const std::vector<std::string>& terminal, const std::vector<std::string>& command);

/// Prints one row of the table: what, how much, what is to be reached, and whether it is.
void printRow(const std::string& what, double value, const std::string& unit, double limit, bool smallerIsBetter);
/// A row without a goal.
void printFact(const std::string& what, const std::string& value);

}  // namespace zolt::bench
