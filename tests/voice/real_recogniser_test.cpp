// The published recogniser library itself (the build that users get).
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "scripted_microphone.h"
#include "voice/speech_api.h"
#include "voice/voice_thread.h"

namespace zirvel {
namespace {

std::u16string RealLibrary() {
    return std::filesystem::path(ZIRVEL_REAL_RECOGNISER).make_preferred().u16string();
}

TEST(RealRecogniser, LoadsAndHasEveryEntryTheVoiceThreadNeeds) {
    const LibraryHandle library = LoadSpeechLibrary(RealLibrary(), u".");
    ASSERT_NE(library, nullptr);
    const SpeechApi api = ResolveSpeechApi(library);
    EXPECT_TRUE(api.HasRequired());
    EXPECT_NE(api.setLogLevel, nullptr);
    EXPECT_NE(api.modelFindWord, nullptr);
    // This published build lacks it: grammar changes make a new recogniser.
    EXPECT_EQ(api.recognizerSetGrm, nullptr);
}

TEST(RealRecogniser, WithoutAModelFolderTheStatusIsModelMissing) {
    const std::filesystem::path directory = std::filesystem::temp_directory_path() / "zirvel_real_recogniser";
    std::filesystem::create_directories(directory);
    VoicePhraseTable phrases;
    RebuildVoicePhrases(phrases, {}, {});
    voice_test::ScriptedMicrophone microphone;
    std::atomic<bool> stop{false};
    std::atomic<std::int32_t> status{0};
    VoiceThreadHost host{stop, status, phrases, {}, microphone, directory.u16string(), u"vosk-model-small-pl-0.22",
                         RealLibrary(), {}, {}};
    VoiceThreadMain(host);  // ends by itself
    EXPECT_EQ(status, kVoiceModelMissing);
    EXPECT_EQ(microphone.opens, 0);
    std::filesystem::remove_all(directory);
}

}  // namespace
}  // namespace zirvel
