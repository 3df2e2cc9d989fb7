#include "system/fault_guard.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <mutex>

namespace zirvel {
namespace {

// __builtin_setjmp's buffer: frame, resume address, stack pointer.
thread_local void* guardBuffer[5];
thread_local bool guarded = false;
std::once_flag handlerInstalled;

[[noreturn]] void LeaveGuardedCall() {
    guarded = false;
    __builtin_longjmp(guardBuffer, 1);
}

bool IsFault(DWORD code) {
    switch (code) {
        case EXCEPTION_ACCESS_VIOLATION:
        case EXCEPTION_ILLEGAL_INSTRUCTION:
        case EXCEPTION_PRIV_INSTRUCTION:
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
        case EXCEPTION_ARRAY_BOUNDS_EXCEEDED:
        case EXCEPTION_DATATYPE_MISALIGNMENT:
        case EXCEPTION_IN_PAGE_ERROR:
            return true;
        default:
            return false;  // C++ exceptions and the like are the library's own business
    }
}

// A vectored handler sees the fault first. It does not jump from inside
// the exception dispatch: it resumes the thread in LeaveGuardedCall, on a
// fresh aligned stack slot below the faulting frame, which jumps back.
LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    if (!guarded || !IsFault(exception->ExceptionRecord->ExceptionCode)) return EXCEPTION_CONTINUE_SEARCH;
    CONTEXT* context = exception->ContextRecord;
    context->Rsp = ((context->Rsp - 1024) & ~static_cast<DWORD64>(15)) - 8;
    context->Rip = reinterpret_cast<DWORD64>(&LeaveGuardedCall);
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

bool RunGuarded(void (*call)(void* context), void* context) {
    std::call_once(handlerInstalled, [] { AddVectoredExceptionHandler(1, OnException); });
    if (__builtin_setjmp(guardBuffer) != 0) return false;
    guarded = true;
    call(context);
    guarded = false;
    return true;
}

}  // namespace zirvel
