#include "gaze/gaze_thread.h"

#include <chrono>
#include <cstring>
#include <thread>

namespace zirvel {
namespace {

constexpr std::size_t kDeviceUrlSize = 256;

void Publish(GazeThreadHost& host, std::int32_t code) {
    host.status.exchange(code);
    if (code != kGazeSearching && host.statusChanged) host.statusChanged();
}

// Streams gaze points until a stop; a wait error pauses, then reconnects.
void Stream(GazeThreadHost& host, const TrackerApi& api, TobiiDevice* device) {
    while (!host.stop.load()) {
        const int result = api.waitForCallbacks(1, &device);
        if (host.stop.load()) break;
        if (result == kTobiiTimedOut) continue;
        if (result != kTobiiNoError) {
            std::this_thread::sleep_for(std::chrono::milliseconds(kGazeReconnectPause));
            if (api.deviceReconnect) api.deviceReconnect(device);
            continue;
        }
        api.deviceProcessCallbacks(device);  // the gaze callback runs here, on this thread
    }
}

}  // namespace

void OnDeviceUrl(const char* url, void* userData) {
    char* buffer = static_cast<char*>(userData);
    if (!url || buffer[0] != '\0') return;
    std::strncpy(buffer, url, kDeviceUrlSize - 1);
    buffer[kDeviceUrlSize - 1] = '\0';
}

void OnGazePoint(const TobiiGazePoint* gazePoint, void* userData) {
    if (!gazePoint || gazePoint->validity != kTobiiValidityValid) return;
    auto& host = *static_cast<GazeThreadHost*>(userData);
    host.pointX.exchange(static_cast<std::int32_t>(gazePoint->positionXY[0] * 10000.0f));
    host.pointY.exchange(static_cast<std::int32_t>(gazePoint->positionXY[1] * 10000.0f));
    host.lastSampleTick.exchange(host.tickCount());
}

void GazeThreadMain(GazeThreadHost& host) {
    Publish(host, kGazeSearching);
    const LibraryHandle library = LoadTrackerLibrary(host.gazeDllPath, host.programDirectory, host.searchRoots);
    if (!library) {
        Publish(host, kGazeLibraryMissing);
        return;
    }
    const TrackerApi api = ResolveTrackerApi(library);
    if (!api.HasRequired()) {
        Publish(host, kGazeInitialisationError);
        return;
    }
    TobiiApi* tracker = nullptr;
    if (api.apiCreate(&tracker, nullptr, nullptr) != kTobiiNoError) {
        Publish(host, kGazeInitialisationError);
        return;
    }
    // The first device reported wins. One not connected now is found only
    // when the thread starts anew.
    char url[kDeviceUrlSize] = {};
    api.enumerateLocalDeviceUrls(tracker, OnDeviceUrl, url);
    if (url[0] == '\0') {
        Publish(host, kGazeNoDevice);
        api.apiDestroy(tracker);
        return;
    }
    TobiiDevice* device = nullptr;
    if (api.deviceCreate(tracker, url, kTobiiFieldOfUseInteractive, &device) != kTobiiNoError) {
        Publish(host, kGazeInitialisationError);
        api.apiDestroy(tracker);
        return;
    }
    if (api.gazePointSubscribe(device, OnGazePoint, &host) != kTobiiNoError) {
        Publish(host, kGazeInitialisationError);
        api.deviceDestroy(device);
        api.apiDestroy(tracker);
        return;
    }
    Publish(host, kGazeStreaming);
    Stream(host, api, device);
    if (api.gazePointUnsubscribe) api.gazePointUnsubscribe(device);
    api.deviceDestroy(device);
    api.apiDestroy(tracker);
}

}  // namespace zirvel
