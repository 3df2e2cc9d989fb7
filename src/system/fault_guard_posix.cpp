#include "system/fault_guard.h"

#include <csetjmp>
#include <csignal>
#include <mutex>

namespace zirvel {
namespace {

constexpr int kFaultSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE};

thread_local sigjmp_buf* activeGuard = nullptr;
struct sigaction previousActions[sizeof kFaultSignals / sizeof kFaultSignals[0]];
std::once_flag handlersInstalled;

void OnFault(int signal, siginfo_t*, void*) {
    if (sigjmp_buf* guard = activeGuard) {
        activeGuard = nullptr;
        siglongjmp(*guard, 1);
    }
    // Not inside a guarded call: give the signal back to whoever had it;
    // returning re-runs the faulting instruction under that handler.
    for (std::size_t index = 0; index < std::size(kFaultSignals); ++index) {
        if (kFaultSignals[index] == signal) sigaction(signal, &previousActions[index], nullptr);
    }
}

void InstallHandlers() {
    struct sigaction action {};
    action.sa_sigaction = OnFault;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    for (std::size_t index = 0; index < std::size(kFaultSignals); ++index) {
        sigaction(kFaultSignals[index], &action, &previousActions[index]);
    }
}

}  // namespace

bool RunGuarded(void (*call)(void* context), void* context) {
    std::call_once(handlersInstalled, InstallHandlers);
    sigjmp_buf guard;
    // The signal mask is saved, so a fault's blocked signal is unblocked again.
    if (sigsetjmp(guard, 1) != 0) return false;
    activeGuard = &guard;
    call(context);
    activeGuard = nullptr;
    return true;
}

}  // namespace zirvel
