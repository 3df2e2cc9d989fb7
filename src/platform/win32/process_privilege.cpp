#include "platform/win32/process_privilege.h"

#include <vector>

namespace zirvel::win32 {
namespace {

// A handle that closes itself.
struct OwnedHandle {
    HANDLE handle = nullptr;
    ~OwnedHandle() {
        if (handle) CloseHandle(handle);
    }
};

std::optional<DWORD> TokenIntegrity(HANDLE token) {
    DWORD size = 0;
    GetTokenInformation(token, TokenIntegrityLevel, nullptr, 0, &size);
    if (size == 0) return std::nullopt;
    std::vector<BYTE> buffer(size);
    if (!GetTokenInformation(token, TokenIntegrityLevel, buffer.data(), size, &size)) return std::nullopt;
    const auto* label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer.data());
    const UCHAR count = *GetSidSubAuthorityCount(label->Label.Sid);
    if (count == 0) return std::nullopt;
    return *GetSidSubAuthority(label->Label.Sid, count - 1);
}

bool HasUiAccess() {
    OwnedHandle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token.handle)) return false;
    DWORD uiAccess = 0;
    DWORD size = 0;
    return GetTokenInformation(token.handle, TokenUIAccess, &uiAccess, sizeof uiAccess, &size) && uiAccess != 0;
}

}  // namespace

std::optional<DWORD> IntegrityLevel(HANDLE process) {
    OwnedHandle token;
    if (!OpenProcessToken(process, TOKEN_QUERY, &token.handle)) return std::nullopt;
    return TokenIntegrity(token.handle);
}

bool WindowOutOfReach(HWND window) {
    DWORD processId = 0;
    if (!window || !GetWindowThreadProcessId(window, &processId) || processId == GetCurrentProcessId()) return false;
    OwnedHandle process;
    // Limited information is granted even across integrity levels; a
    // process that refuses it belongs to someone above us.
    process.handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId);
    if (!process.handle) return GetLastError() == ERROR_ACCESS_DENIED && !HasUiAccess();
    OwnedHandle token;
    if (!OpenProcessToken(process.handle, TOKEN_QUERY, &token.handle)) {
        return GetLastError() == ERROR_ACCESS_DENIED && !HasUiAccess();
    }
    const std::optional<DWORD> theirs = TokenIntegrity(token.handle);
    const std::optional<DWORD> ours = IntegrityLevel(GetCurrentProcess());
    if (!theirs || !ours || *theirs <= *ours) return false;
    return !HasUiAccess();
}

}  // namespace zirvel::win32
