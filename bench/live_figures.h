// What the live benchmarks share: latency figures and a process's CPU time.
#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zirvel_bench {

// One wheel of eight one-letter fields; the top one types "a".
inline constexpr char kEightLetterWheel[] = R"({"actions": [
  {"name": "A", "key": "a"}, {"name": "B", "key": "b"}, {"name": "C", "key": "c"}, {"name": "D", "key": "d"},
  {"name": "E", "key": "e"}, {"name": "F", "key": "f"}, {"name": "G", "key": "g"}, {"name": "H", "key": "h"}]})";

// 24 wheels, each the eight-letter wheel; `named`: each naming 64
// programs, none of them the stand-in application (the wheel choice's
// longest search, after which wheel 0 shows).
std::string TwentyFourWheelsFile(bool named);

double Milliseconds(std::chrono::steady_clock::duration duration);
// Prints median, p90 and max of the samples, in milliseconds.
void ReportLatency(const char* what, std::vector<double> samples);
// User plus system CPU time of a process so far, in seconds (0 when it is gone).
double CpuSeconds(pid_t pid);
// The share of one core a process used over the next `span`, in percent.
double CpuPercentOver(pid_t pid, std::chrono::seconds span);

}  // namespace zirvel_bench
