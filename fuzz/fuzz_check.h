// What a fuzz target checks besides the sanitizers: a documented promise
// of the reader that a result broke. Aborts, so libFuzzer keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>

#define ZIRVEL_FUZZ_CHECK(condition)                                                        \
    do {                                                                                    \
        if (!(condition)) {                                                                 \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                   \
        }                                                                                   \
    } while (false)
