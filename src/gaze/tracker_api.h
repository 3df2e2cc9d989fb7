// The eye tracker's client library (Tobii Stream Engine), loaded at run
// time: the few types and entry points Zirvel uses, declared from the
// vendor's published documentation, and where the library is looked for.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "system/runtime_library.h"

namespace zirvel {

struct TobiiApi;
struct TobiiDevice;

// tobii_error_t: 0 is success; the rest are errors.
inline constexpr int kTobiiNoError = 0;
inline constexpr int kTobiiTimedOut = 6;
// tobii_validity_t.
inline constexpr int kTobiiValidityValid = 1;
// tobii_field_of_use_t: interactive use.
inline constexpr int kTobiiFieldOfUseInteractive = 1;

struct TobiiGazePoint {
    std::int64_t timestampMicroseconds;
    int validity;
    float positionXY[2];  // normalised to the display area: 0..1
};

using TobiiDeviceUrlReceiver = void (*)(const char* url, void* userData);
using TobiiGazePointCallback = void (*)(const TobiiGazePoint* gazePoint, void* userData);

#ifdef _WIN32
inline constexpr char16_t kTrackerLibraryFileName[] = u"tobii_stream_engine.dll";
#else
inline constexpr char16_t kTrackerLibraryFileName[] = u"libtobii_stream_engine.so";
#endif

struct TrackerApi {
    // tobii_api_create(api, custom allocator, custom log).
    int (*apiCreate)(TobiiApi** api, const void* customAlloc, const void* customLog) = nullptr;
    int (*apiDestroy)(TobiiApi* api) = nullptr;
    int (*enumerateLocalDeviceUrls)(TobiiApi* api, TobiiDeviceUrlReceiver receiver, void* userData) = nullptr;
    int (*deviceCreate)(TobiiApi* api, const char* url, int fieldOfUse, TobiiDevice** device) = nullptr;
    int (*deviceDestroy)(TobiiDevice* device) = nullptr;
    int (*deviceReconnect)(TobiiDevice* device) = nullptr;  // optional
    int (*gazePointSubscribe)(TobiiDevice* device, TobiiGazePointCallback callback, void* userData) = nullptr;
    int (*gazePointUnsubscribe)(TobiiDevice* device) = nullptr;  // optional
    int (*waitForCallbacks)(int deviceCount, TobiiDevice* const* devices) = nullptr;
    int (*deviceProcessCallbacks)(TobiiDevice* device) = nullptr;

    bool HasRequired() const;
};

// Resolves every entry point by name; missing ones stay null.
TrackerApi ResolveTrackerApi(LibraryHandle library);

// Appends dir/name when it exists, then (depth > 0) searches every
// subfolder whose name does not begin with '.', depth first, in the file
// system's order, one level less deep.
void FindFileRecursive(const std::filesystem::path& directory, const std::filesystem::path& name, int depth,
                       std::vector<std::filesystem::path>& found);

// The tracker's own folders under each of `programFolders`: every folder's
// "Tobii" first, then every folder's "Tobii Experience".
std::vector<std::filesystem::path> TrackerRootsUnder(const std::vector<std::filesystem::path>& programFolders);

// Where the tracker's own software installs the library, searched three
// folders deep after the program directory and the system's folders. Only
// folders a standard user cannot write: on Windows under the Program Files
// folders that SHGetKnownFolderPath names (not ProgramData, where any user
// may put a library of that name); on Linux the vendor's folders under
// /usr and /opt.
const std::vector<std::filesystem::path>& TrackerSearchRoots();

// The first that loads: `gazeDllPath` when set, the library in the program
// directory, the system's own folders (Windows: the System folder; not the
// current folder or PATH), then every copy found under `roots` (all roots
// searched before the first is tried). Null when none loads.
LibraryHandle LoadTrackerLibrary(const std::u16string& gazeDllPath, const std::u16string& programDirectory,
                                 const std::vector<std::filesystem::path>& roots);

}  // namespace zirvel
