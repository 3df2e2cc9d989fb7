#include "platform/x11/open_target.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <thread>

extern char** environ;

namespace zirvel::x11 {
namespace {

bool IsProgramFile(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && access(path.c_str(), X_OK) == 0;
}

bool IsProgramOnPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    if (!path) return false;
    std::string_view rest(path);
    while (!rest.empty()) {
        const std::size_t colon = rest.find(':');
        const std::string_view folder = rest.substr(0, colon);
        if (!folder.empty() && IsProgramFile(std::string(folder) + "/" + name)) return true;
        if (colon == std::string_view::npos) break;
        rest.remove_prefix(colon + 1);
    }
    return false;
}

bool LooksLikeAddress(const std::string& target) {
    return target.find("://") != std::string::npos || target.rfind("mailto:", 0) == 0;
}

}  // namespace

std::vector<std::string> OpenCommandFor(const std::string& target) {
    if (!LooksLikeAddress(target)) {
        const bool hasFolder = target.find('/') != std::string::npos;
        if (hasFolder ? IsProgramFile(target) : IsProgramOnPath(target)) return {target};
    }
    return {"xdg-open", target};
}

bool LaunchDetached(const std::vector<std::string>& command) {
    if (command.empty()) return false;
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A session of its own: the program neither shares our terminal's
    // signals nor dies with us.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, arguments[0], nullptr, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (failed != 0) return false;
    // Reap it when it ends, from a thread of its own, so no zombie remains.
    std::thread([child] { waitpid(child, nullptr, 0); }).detach();
    return true;
}

}  // namespace zirvel::x11
