// The voice thread over the waveIn microphone, as the engine runs it, with
// every status it takes written to a file ("status 5 aktywny"): what the
// Wine tests watch while the sound server loses its microphone and gets it
// back. Arguments: recogniser library, model folder, status file. It runs
// until the test ends it.
#include <atomic>
#include <cstdio>
#include <string>
#include <thread>

#include "config/utf.h"
#include "engine/status_texts.h"
#include "platform/win32/wave_in_capture.h"
#include "voice/voice_thread.h"

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    std::FILE* statusFile = std::fopen(argv[3], "wb");
    if (!statusFile) return 2;
    std::atomic<bool> stop{false};
    std::atomic<std::int32_t> status{0};
    zirvel::VoicePhraseTable phrases;
    zirvel::win32::WaveInCapture microphone;
    zirvel::VoiceDispatchTarget target{[](zirvel::EngineMessage) {}, [] { return true; }, [] { return false; }};
    zirvel::VoiceThreadHost host{stop, status, phrases, target, microphone, u".",
                                 zirvel::Utf8ToUtf16(argv[2]), zirvel::Utf8ToUtf16(argv[1]),
                                 [&] {
                                     const std::int32_t code = status.load();
                                     std::fprintf(statusFile, "status %d %s\n", static_cast<int>(code),
                                                  zirvel::Utf16ToUtf8(zirvel::VoiceStatusText(code)).c_str());
                                     std::fflush(statusFile);
                                 },
                                 {}};
    zirvel::VoiceThreadMain(host);
    std::fprintf(statusFile, "ended\n");
    std::fclose(statusFile);
    return 0;
}
