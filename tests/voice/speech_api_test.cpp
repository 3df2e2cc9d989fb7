#include <gtest/gtest.h>

#include "voice/speech_api.h"

namespace zirvel {
namespace {

TEST(ExtractResultText, TakesTheTextOfAFinalResult) {
    EXPECT_EQ(ExtractResultText("{\n  \"text\" : \"pokaż siatkę\"\n}"), "pokaż siatkę");
    EXPECT_EQ(ExtractResultText("{\"text\":\"\"}"), "");
}

TEST(ExtractResultText, IsEmptyWhenAPartIsMissing) {
    EXPECT_EQ(ExtractResultText(nullptr), "");
    EXPECT_EQ(ExtractResultText(""), "");
    EXPECT_EQ(ExtractResultText("{\"partial\" : \"skok\"}"), "");
    EXPECT_EQ(ExtractResultText("{\"text\" \"skok\"}"), "");
    EXPECT_EQ(ExtractResultText("{\"text\" : skok}"), "");
    EXPECT_EQ(ExtractResultText("{\"text\" : \"skok"), "");
}

TEST(ExtractResultText, TakesTheFirstTextKeyAndDoesNotUnescape) {
    EXPECT_EQ(ExtractResultText("{\"text\" : \"a\\\\b\", \"text\" : \"c\"}"), "a\\\\b");
    EXPECT_EQ(ExtractResultText("{\"result\" : [], \"text\" : \"jeden\"}"), "jeden");
}

TEST(SpeechModelPath, ANameLiesInTheProgramDirectory) {
#ifdef _WIN32
    EXPECT_EQ(SpeechModelPath(u"vosk-model-small-pl-0.22", u"C:\\Zirvel"), u"C:\\Zirvel\\vosk-model-small-pl-0.22");
    EXPECT_EQ(SpeechModelPath(u"modele\\pl", u"C:\\Zirvel"), u"C:\\Zirvel\\modele\\pl");
#else
    EXPECT_EQ(SpeechModelPath(u"vosk-model-small-pl-0.22", u"/opt/zirvel"), u"/opt/zirvel/vosk-model-small-pl-0.22");
    EXPECT_EQ(SpeechModelPath(u"modele/pl", u"/opt/zirvel"), u"/opt/zirvel/modele/pl");
#endif
}

TEST(SpeechModelPath, AFullPathStandsAsItIs) {
#ifdef _WIN32
    EXPECT_EQ(SpeechModelPath(u"D:\\modele\\pl", u"C:\\Zirvel"), u"D:\\modele\\pl");
    EXPECT_EQ(SpeechModelPath(u"x:y", u"C:\\Zirvel"), u"x:y");  // any colon
#else
    EXPECT_EQ(SpeechModelPath(u"/home/ala/pl", u"/opt/zirvel"), u"/home/ala/pl");
    EXPECT_EQ(SpeechModelPath(u"x:y", u"/opt/zirvel"), u"/opt/zirvel/x:y");
#endif
}

TEST(ResolveSpeechApi, NothingResolvesWithoutALibrary) {
    const SpeechApi api = ResolveSpeechApi(nullptr);
    EXPECT_FALSE(api.HasRequired());
    EXPECT_EQ(api.modelNew, nullptr);
}

}  // namespace
}  // namespace zirvel
