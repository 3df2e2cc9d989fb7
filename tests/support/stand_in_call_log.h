/* What the C stand-ins of run-time libraries share: a monotonic clock in
 * milliseconds, and appending one timed line to their call log, so a test
 * (or a benchmark) sees what reached them and when. */
#ifndef ZIRVEL_STAND_IN_CALL_LOG_H
#define ZIRVEL_STAND_IN_CALL_LOG_H

#include <stdarg.h>
#include <stdio.h>

#ifdef _WIN32
#include <windows.h>
#define STAND_IN_EXPORT __declspec(dllexport)
static double NowMilliseconds(void) {
    LARGE_INTEGER counter, frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return (double)counter.QuadPart * 1000.0 / (double)frequency.QuadPart;
}
#else
#include <time.h>
#define STAND_IN_EXPORT __attribute__((visibility("default")))
static double NowMilliseconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (double)now.tv_sec * 1000.0 + (double)now.tv_nsec / 1e6;
}
#endif

/* Appends "<milliseconds> <formatted text>" as one line to the file `path`. */
static void AppendCallLine(const char* path, const char* format, va_list arguments) {
    FILE* file = fopen(path, "ab");
    if (!file) return;
    fprintf(file, "%.3f ", NowMilliseconds());
    vfprintf(file, format, arguments);
    fputc('\n', file);
    fclose(file);
}

#endif
