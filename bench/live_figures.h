// What the live benchmarks share: latency figures and a process's CPU time.
#pragma once

#include <chrono>
#include <sys/types.h>
#include <vector>

namespace zirvel_bench {

double Milliseconds(std::chrono::steady_clock::duration duration);
// Prints median, p90 and max of the samples, in milliseconds.
void ReportLatency(const char* what, std::vector<double> samples);
// User plus system CPU time of a process so far, in seconds (0 when it is gone).
double CpuSeconds(pid_t pid);

}  // namespace zirvel_bench
