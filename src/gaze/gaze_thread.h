// The gaze thread: opens the first eye tracker found, subscribes to its
// gaze points and keeps the latest valid one for the wheel's timer.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "gaze/tracker_api.h"

namespace zirvel {

// gazeStatus codes the thread sets (0, switched off, is the engine's).
inline constexpr std::int32_t kGazeSearching = 1;
inline constexpr std::int32_t kGazeLibraryMissing = 2;
inline constexpr std::int32_t kGazeNoDevice = 3;
inline constexpr std::int32_t kGazeStreaming = 4;
inline constexpr std::int32_t kGazeInitialisationError = 5;

// After a wait error the thread pauses this long before reconnecting.
inline constexpr std::uint32_t kGazeReconnectPause = 500;

// Everything the thread touches. The paths are a copy taken when the
// thread started.
struct GazeThreadHost {
    const std::atomic<bool>& stop;
    std::atomic<std::int32_t>& status;
    // The last valid gaze point, normalised × 10000, and its time.
    std::atomic<std::int32_t>& pointX;
    std::atomic<std::int32_t>& pointY;
    std::atomic<std::uint64_t>& lastSampleTick;
    std::u16string programDirectory;
    std::u16string gazeDllPath;
    std::vector<std::filesystem::path> searchRoots;
    std::function<std::uint64_t()> tickCount;
    // After every change of status but the first (the main window repaints).
    std::function<void()> statusChanged;
};

// Keeps the first URL reported: copies it into the 256-byte buffer at
// `userData` while that is still empty.
void OnDeviceUrl(const char* url, void* userData);

// A valid sample becomes the host's gaze point (× 10000, truncated) and
// time; an invalid one changes nothing. `userData` is the host.
void OnGazePoint(const TobiiGazePoint* gazePoint, void* userData);

// Runs until host.stop is set or the thread cannot go on; the status keeps
// its last value.
void GazeThreadMain(GazeThreadHost& host);

}  // namespace zirvel
