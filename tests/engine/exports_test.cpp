#include "exports_from_c.h"

#include "engine_fixture.h"

namespace zirvel_test {
namespace {

TEST_F(EngineTest, ExportsAreCallableFromCByTheirPlainNames) {
    WriteFile("config.json", R"({"gazeEnabled": false, "voiceEnabled": false})");
    WriteFile("default.json", R"({"actions": [{"name": "a", "key": "a"}]})");
    WriteFile("voice.json", R"({"actions": []})");
    WriteFile("three.json", R"({"wheels": [
      {"name": "X", "actions": [{"name": "x", "voice": "iks", "key": "x"}]},
      {"name": "Y", "actions": [{"name": "y", "key": "y"}]},
      {"name": "Z", "actions": [{"name": "z", "key": "z"}]}]})");
    const std::u16string path = PathOf("three.json");
    const ExportsSeenFromC seen = CallExportsFromC(reinterpret_cast<const std::uint16_t*>(path.c_str()));
    EXPECT_EQ(seen.started, 1);
    EXPECT_EQ(seen.visibleAfterToggle, 1);
    EXPECT_EQ(seen.activated, 1);
    EXPECT_EQ(seen.wheelCount, 3);
    EXPECT_EQ(seen.phraseCount, 312);
    EXPECT_EQ(seen.voiceStatusLength, static_cast<std::int32_t>(std::u16string_view(u"wyłączony (voiceEnabled = false)").size()));
    EXPECT_EQ(seen.gazeStatusLength, static_cast<std::int32_t>(std::u16string_view(u"wyłączony (gazeEnabled = false)").size()));
    EXPECT_EQ(seen.wheelCountAfterReload, 1);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

}  // namespace
}  // namespace zirvel_test
