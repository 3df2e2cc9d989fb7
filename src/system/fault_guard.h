// Calls into a library that may fault (an access violation, an illegal
// instruction) without taking the process down: the fault ends the call
// early and the caller treats it as a failure. Structured exception
// handling on Windows (through a vectored handler, since MinGW has no
// __try), a signal handler on Linux.
#pragma once

#include <utility>

namespace zirvel {

// Runs call(context). False when it faulted; what it was doing is then
// abandoned where it stood (no destructors inside it run), so the calls
// guarded are plain C functions of the library.
bool RunGuarded(void (*call)(void* context), void* context);

template <class Call>
bool RunGuarded(Call&& call) {
    return RunGuarded([](void* context) { (*static_cast<Call*>(context))(); }, &call);
}

}  // namespace zirvel
