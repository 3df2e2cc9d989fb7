#include "scratch_file.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string_view>

#include "config/file_io.h"
#include "config/utf.h"

namespace zirvel::fuzz {
namespace {

struct Scratch {
    std::string directory;
    std::set<std::string> files;
};

Scratch& TheScratch() {
    static Scratch scratch;
    return scratch;
}

// A run that ends normally (libFuzzer calls exit) leaves nothing behind; a
// crash keeps the directory, which holds nothing the crash file does not.
void RemoveScratch() {
    Scratch& scratch = TheScratch();
    for (const std::string& file : scratch.files) unlink((scratch.directory + '/' + file).c_str());
    rmdir(scratch.directory.c_str());
}

const char* DefaultScratchBase() { return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp"; }

const std::string& ScratchDirectory() {
    Scratch& scratch = TheScratch();
    if (scratch.directory.empty()) {
        // Millions of writes: on a disk file system the kernel's writeback
        // would take most of the time, so memory (/dev/shm) is preferred.
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base && *base ? base : DefaultScratchBase()) + "/zirvel-fuzz-XXXXXX";
        if (!mkdtemp(pattern.data())) {
            std::perror("zirvel fuzz: mkdtemp");
            std::abort();
        }
        scratch.directory = pattern;
        std::atexit(RemoveScratch);
    }
    return scratch.directory;
}

}  // namespace

std::u16string WriteScratchFile(const char* name, const std::uint8_t* data, std::size_t size) {
    const std::string& directory = ScratchDirectory();
    TheScratch().files.insert(name);
    const std::u16string path = JoinPath(Utf8ToUtf16(directory), Utf8ToUtf16(name));
    if (!WriteFileBytes(path, std::string_view(reinterpret_cast<const char*>(data), size))) {
        std::fprintf(stderr, "zirvel fuzz: cannot write %s/%s\n", directory.c_str(), name);
        std::abort();
    }
    return path;
}

}  // namespace zirvel::fuzz
