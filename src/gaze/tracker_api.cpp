#include "gaze/tracker_api.h"

#include <system_error>

#include "system/known_folders.h"

namespace zirvel {

bool TrackerApi::HasRequired() const {
    return apiCreate && apiDestroy && enumerateLocalDeviceUrls && deviceCreate && deviceDestroy &&
           gazePointSubscribe && waitForCallbacks && deviceProcessCallbacks;
}

TrackerApi ResolveTrackerApi(LibraryHandle library) {
    TrackerApi api;
    ResolveEntry(library, "tobii_api_create", api.apiCreate);
    ResolveEntry(library, "tobii_api_destroy", api.apiDestroy);
    ResolveEntry(library, "tobii_enumerate_local_device_urls", api.enumerateLocalDeviceUrls);
    ResolveEntry(library, "tobii_device_create", api.deviceCreate);
    ResolveEntry(library, "tobii_device_destroy", api.deviceDestroy);
    ResolveEntry(library, "tobii_device_reconnect", api.deviceReconnect);
    ResolveEntry(library, "tobii_gaze_point_subscribe", api.gazePointSubscribe);
    ResolveEntry(library, "tobii_gaze_point_unsubscribe", api.gazePointUnsubscribe);
    ResolveEntry(library, "tobii_wait_for_callbacks", api.waitForCallbacks);
    ResolveEntry(library, "tobii_device_process_callbacks", api.deviceProcessCallbacks);
    return api;
}

void FindFileRecursive(const std::filesystem::path& directory, const std::filesystem::path& name, int depth,
                       std::vector<std::filesystem::path>& found) {
    std::error_code error;
    const std::filesystem::path candidate = directory / name;
    if (std::filesystem::exists(candidate, error)) found.push_back(candidate);
    if (depth <= 0) return;
    std::filesystem::directory_iterator entries(directory, error);
    if (error) return;
    for (const std::filesystem::directory_entry& entry : entries) {
        if (!entry.is_directory(error) || entry.path().filename().native().starts_with('.')) continue;
        FindFileRecursive(entry.path(), name, depth - 1, found);
    }
}

std::vector<std::filesystem::path> TrackerRootsUnder(const std::vector<std::filesystem::path>& programFolders) {
    std::vector<std::filesystem::path> roots;
    for (const char16_t* vendor : {u"Tobii", u"Tobii Experience"}) {
        for (const std::filesystem::path& folder : programFolders) roots.push_back(folder / vendor);
    }
    return roots;
}

const std::vector<std::filesystem::path>& TrackerSearchRoots() {
#ifdef _WIN32
    static const std::vector<std::filesystem::path> roots = [] {
        std::vector<std::filesystem::path> folders;
        for (const std::u16string& folder : ProgramFilesFolders()) folders.emplace_back(folder);
        return TrackerRootsUnder(folders);
    }();
#else
    // The vendor's Linux packages: the stream engine and its USB service.
    static const std::vector<std::filesystem::path> roots{"/usr/lib/tobii", "/usr/local/lib/tobii", "/opt/tobii",
                                                          "/usr/local/lib/tobiiusb"};
#endif
    return roots;
}

LibraryHandle LoadTrackerLibrary(const std::u16string& gazeDllPath, const std::u16string& programDirectory,
                                 const std::vector<std::filesystem::path>& roots) {
    if (!gazeDllPath.empty()) {
        if (LibraryHandle library = LoadLibraryFromPath(gazeDllPath)) return library;
    }
    if (LibraryHandle library = LoadLibraryFromPath(programDirectory + kPathSeparator + kTrackerLibraryFileName)) {
        return library;
    }
    if (LibraryHandle library = LoadSystemLibrary(kTrackerLibraryFileName)) return library;
    std::vector<std::filesystem::path> candidates;
    for (const std::filesystem::path& root : roots) FindFileRecursive(root, kTrackerLibraryFileName, 3, candidates);
    for (const std::filesystem::path& candidate : candidates) {
        if (LibraryHandle library = LoadLibraryFromProtectedFolder(candidate.u16string())) return library;
    }
    return nullptr;
}

}  // namespace zirvel
