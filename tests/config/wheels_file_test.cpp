// Wheels files: the reader with its limits and messages, the writer's exact
// layout, and the one-line text of a step.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/file_io.h"
#include "config/key_code.h"
#include "config/keyboard_layout.h"
#include "config/wheel.h"
#include "config/wheels_file.h"
#include "test_files.h"
#include "wheel_equality.h"

namespace zirvel {
namespace {

using zirvel_test::ExpectSameFunction;
using zirvel_test::ExpectSameStep;
using zirvel_test::ExpectSameWheels;
using zirvel_test::KeyStep;
using zirvel_test::OpenStep;
using zirvel_test::ReadBytes;
using zirvel_test::TempDirectory;
using zirvel_test::WriteBytes;

std::filesystem::path GoldenPath(std::string_view name) {
#ifdef ZIRVEL_TEST_DATA_DIR
    return std::filesystem::path(ZIRVEL_TEST_DATA_DIR) / std::string(name);
#else
    return std::filesystem::path(__FILE__).parent_path() / "golden" / std::string(name);
#endif
}

std::string Golden(std::string_view name) { return ReadBytes(GoldenPath(name)); }

std::u16string Ascii(std::string_view text) { return std::u16string(text.begin(), text.end()); }

std::u16string UnknownKey(std::u16string_view key, std::u16string_view function) {
    return u"default.json: nieznany klawisz \"" + std::u16string(key) + u"\" dla pola \"" +
           std::u16string(function) + u"\".\n";
}

std::u16string UnknownAction(std::u16string_view word, std::u16string_view function) {
    return u"default.json: nieznana czynność \"" + std::u16string(word) + u"\" w polu \"" +
           std::u16string(function) + u"\".\n";
}

const std::u16string kWheelWithoutActions = u"default.json: koło bez tablicy \"actions\".\n";
const std::u16string kNeitherForm = u"default.json: brak \"wheels\" ani \"actions\".\n";

// Single characters other than letters and digits follow the built-in table
// while one of these exists.
class BuiltInLayout {
public:
    BuiltInLayout() { SetKeyScanFunction(&BuiltInKeyScan); }
    ~BuiltInLayout() { SetKeyScanFunction(nullptr); }
    BuiltInLayout(const BuiltInLayout&) = delete;
    BuiltInLayout& operator=(const BuiltInLayout&) = delete;
};

class WheelsFileTest : public ::testing::Test {
protected:
    std::u16string PathOf(std::string_view fileName) const {
        return JoinPath(dir_.U16(), Ascii(fileName));
    }

    // Writes `json` to a file of the scratch directory and reads it.
    bool Read(std::string_view json, std::string_view fileName = "kola.json") {
        WriteBytes(dir_.File(fileName), json);
        messages_.clear();
        return ReadWheelsFile(PathOf(fileName), wheels_, messages_);
    }

    // Reads a single-wheel file and gives its functions.
    const std::vector<WheelFunction>& ReadFunctions(std::string_view actions) {
        const bool ok = Read(std::string("{\"actions\": ") + std::string(actions) + "}");
        (void)ok;
        static const std::vector<WheelFunction> none;
        if (wheels_.size() != 1u) {
            ADD_FAILURE() << "expected one wheel, got " << wheels_.size();
            return none;
        }
        return wheels_[0].functions;
    }

    // Reads one function with the given steps array and gives its steps.
    std::vector<Step> ReadSteps(std::string_view steps) {
        const std::vector<WheelFunction>& functions =
            ReadFunctions(std::string("[{\"name\": \"F\", \"steps\": ") + std::string(steps) + "}]");
        if (functions.size() != 1u) {
            ADD_FAILURE() << "expected one function, got " << functions.size();
            return {};
        }
        return functions[0].steps;
    }

    TempDirectory dir_;
    std::vector<Wheel> wheels_;
    std::u16string messages_;
};

// ---------------------------------------------------------------------------
// File level

TEST_F(WheelsFileTest, MissingFile) {
    wheels_.resize(2);
    messages_ = u"";
    const std::u16string path = PathOf("brak.json");
    EXPECT_FALSE(ReadWheelsFile(path, wheels_, messages_));
    EXPECT_EQ(messages_, u"Nie udało się wczytać pliku kół: " + path + u"\n");
    EXPECT_TRUE(wheels_.empty());
}

TEST_F(WheelsFileTest, UnreadableContentGivesThePathMessage) {
    const std::string unreadable[] = {
        "",
        "{\"actions\": [",
        "{\"actions\": []} x",
        "{\"actions\": [],}",
        "{\"actions\": []} // komentarz",
        std::string("\xFF\xFE{\0}\0", 6),
    };
    for (const std::string& text : unreadable) {
        SCOPED_TRACE(text);
        wheels_.resize(1);
        EXPECT_FALSE(Read(text, "zly.json"));
        EXPECT_EQ(messages_, u"Nie udało się wczytać pliku kół: " + PathOf("zly.json") + u"\n");
        EXPECT_TRUE(wheels_.empty());
    }
}

TEST_F(WheelsFileTest, MessagesAreAppended) {
    messages_ = u"wcześniej\n";
    const std::u16string path = PathOf("brak.json");
    EXPECT_FALSE(ReadWheelsFile(path, wheels_, messages_));
    EXPECT_EQ(messages_, u"wcześniej\nNie udało się wczytać pliku kół: " + path + u"\n");
}

TEST_F(WheelsFileTest, OutputListIsReplaced) {
    wheels_.resize(3);
    EXPECT_TRUE(Read(R"({"actions": [{"name": "jedna"}]})"));
    ASSERT_EQ(wheels_.size(), 1u);
    ASSERT_EQ(wheels_[0].functions.size(), 1u);
    EXPECT_EQ(wheels_[0].functions[0].name, u"jedna");
}

TEST_F(WheelsFileTest, ByteOrderMarkIsAllowed) {
    EXPECT_TRUE(Read("\xEF\xBB\xBF{\"actions\": [{\"name\": \"Koło\"}]}"));
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(wheels_.size(), 1u);
    ASSERT_EQ(wheels_[0].functions.size(), 1u);
    EXPECT_EQ(wheels_[0].functions[0].name, u"Koło");
}

// ---------------------------------------------------------------------------
// The two forms

TEST_F(WheelsFileTest, EmptyActionsOrWheelsGiveNoWheelAndSuccess) {
    EXPECT_TRUE(Read(R"({"actions": []})"));
    EXPECT_TRUE(wheels_.empty());
    EXPECT_EQ(messages_, u"");

    EXPECT_TRUE(Read(R"({"wheels": []})"));
    EXPECT_TRUE(wheels_.empty());
    EXPECT_EQ(messages_, u"");
}

TEST_F(WheelsFileTest, WheelWithoutActionsArray) {
    EXPECT_FALSE(Read(R"({"wheels": [{"name": "A"}]})"));
    EXPECT_EQ(messages_, kWheelWithoutActions);
    EXPECT_TRUE(wheels_.empty());
}

TEST_F(WheelsFileTest, BadWheelElementsAreReportedAndTheRestIsRead) {
    EXPECT_FALSE(Read(R"({"wheels": [5, {"name": "A", "actions": {}},
                                       {"name": "B", "actions": [{"name": "b"}]}, null]})"));
    EXPECT_EQ(messages_, kWheelWithoutActions + kWheelWithoutActions + kWheelWithoutActions);
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"B");
}

TEST_F(WheelsFileTest, NeitherForm) {
    for (const char* text : {"[]", "\"tekst\"", "5", "{}", R"({"wheels": 5})", R"({"wheels": {}})",
                             R"({"actions": {}})", R"({"actions": null})", R"({"wheel": []})",
                             R"({"Actions": []})"}) {
        SCOPED_TRACE(text);
        wheels_.resize(1);
        EXPECT_FALSE(Read(text));
        EXPECT_EQ(messages_, kNeitherForm);
        EXPECT_TRUE(wheels_.empty());
    }
}

TEST_F(WheelsFileTest, WheelsThatIsNotAnArrayFallsBackToActions) {
    EXPECT_TRUE(Read(R"({"wheels": 5, "actions": [{"name": "X"}]})"));
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"");
    ASSERT_EQ(wheels_[0].functions.size(), 1u);
    EXPECT_EQ(wheels_[0].functions[0].name, u"X");
}

TEST_F(WheelsFileTest, WheelsArrayWinsOverActions) {
    EXPECT_TRUE(Read(R"({"actions": [{"name": "z actions"}],
                         "wheels": [{"name": "W", "actions": [{"name": "z wheels"}]}]})"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"W");
    ASSERT_EQ(wheels_[0].functions.size(), 1u);
    EXPECT_EQ(wheels_[0].functions[0].name, u"z wheels");
}

TEST_F(WheelsFileTest, FirstWheelsMemberDecides) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": "A", "actions": [{}]}], "wheels": []})"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"A");

    EXPECT_FALSE(Read(R"({"wheels": 5, "wheels": [{"name": "A", "actions": [{}]}]})"));
    EXPECT_EQ(messages_, kNeitherForm);
    EXPECT_TRUE(wheels_.empty());
}

TEST_F(WheelsFileTest, SingleWheelHasAnEmptyName) {
    EXPECT_TRUE(Read(R"({"name": "X", "actions": [{}]})"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"");
}

TEST_F(WheelsFileTest, WheelNameMustBeAString) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": 5, "actions": [{}]}, {"actions": [{}]},
                                     {"name": "Trzecie", "actions": [{}]}]})"));
    ASSERT_EQ(wheels_.size(), 3u);
    EXPECT_EQ(wheels_[0].name, u"");
    EXPECT_EQ(wheels_[1].name, u"");
    EXPECT_EQ(wheels_[2].name, u"Trzecie");
}

TEST_F(WheelsFileTest, WheelWithEmptyActionsIsDroppedSilently) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": "A", "actions": []},
                                     {"name": "B", "actions": [{}]}]})"));
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"B");
}

std::string NumberedFunctions(int count) {
    std::string actions = "[";
    for (int i = 1; i <= count; ++i) {
        if (i > 1) actions += ", ";
        actions += "{\"name\": \"F" + std::to_string(i) + "\"}";
    }
    return actions + "]";
}

TEST_F(WheelsFileTest, ThirtyFunctionsKeepTheFirstTwentyFour) {
    EXPECT_FALSE(Read("{\"wheels\": [{\"name\": \"Duże koło\", \"actions\": " +
                      NumberedFunctions(30) + "}]}"));
    EXPECT_EQ(messages_,
              u"default.json: zbyt wiele funkcji w kole \"Duże koło\" — używam pierwszych 24.\n");
    ASSERT_EQ(wheels_.size(), 1u);
    ASSERT_EQ(wheels_[0].functions.size(), 24u);
    for (std::size_t i = 0; i < 24; ++i) {
        EXPECT_EQ(wheels_[0].functions[i].name, u"F" + Ascii(std::to_string(i + 1)));
    }
}

TEST_F(WheelsFileTest, TwentyFourFunctionsAreFine) {
    EXPECT_TRUE(Read("{\"actions\": " + NumberedFunctions(24) + "}"));
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].functions.size(), 24u);
}

TEST_F(WheelsFileTest, TooManyFunctionsInTheSingleWheelForm) {
    EXPECT_FALSE(Read("{\"actions\": " + NumberedFunctions(25) + "}"));
    EXPECT_EQ(messages_, u"default.json: zbyt wiele funkcji w kole \"\" — używam pierwszych 24.\n");
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].functions.size(), 24u);
    EXPECT_EQ(wheels_[0].functions[23].name, u"F24");
}

TEST_F(WheelsFileTest, MessagesAlwaysNameDefaultJson) {
    EXPECT_FALSE(Read(R"({"wheels": [{"name": "A"}]})", "voice.json"));
    EXPECT_EQ(messages_, kWheelWithoutActions);
    EXPECT_FALSE(Read(R"({"actions": [{"name": "N", "key": "zz"}]})", "moje.json"));
    EXPECT_EQ(messages_, UnknownKey(u"zz", u"N"));
    EXPECT_FALSE(Read(R"({})", "inne.json"));
    EXPECT_EQ(messages_, kNeitherForm);
}

// ---------------------------------------------------------------------------
// Functions

TEST_F(WheelsFileTest, NonObjectElementIsAnEmptyField) {
    const auto& functions = ReadFunctions(R"([null, {"name": "B", "key": "b"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(functions.size(), 2u);
    ExpectSameFunction(WheelFunction(), functions[0]);
    WheelFunction b;
    b.name = u"B";
    b.steps.push_back(KeyStep(u"b", StepKind::Click, 1));
    ExpectSameFunction(b, functions[1]);
    ASSERT_EQ(functions[1].steps.size(), 1u);
    EXPECT_EQ(functions[1].steps[0].key.vk, 0x42);
}

TEST_F(WheelsFileTest, AnyNonObjectKeepsItsPlace) {
    const auto& functions = ReadFunctions(R"(["tekst", 5, [], true, {"name": "ostatnia"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(functions.size(), 5u);
    for (std::size_t i = 0; i < 4; ++i) {
        ExpectSameFunction(WheelFunction(), functions[i]);
    }
    EXPECT_EQ(functions[4].name, u"ostatnia");
}

TEST_F(WheelsFileTest, FunctionFields) {
    const auto& functions = ReadFunctions(
        R"([{"name": "Pełna", "delay": 45, "color": "#3498db", "icon": "a.png", "voice": "pełna"}])");
    ASSERT_EQ(functions.size(), 1u);
    const WheelFunction& f = functions[0];
    EXPECT_EQ(f.name, u"Pełna");
    EXPECT_EQ(f.delay, 45);
    EXPECT_TRUE(f.hasColor);
    EXPECT_EQ(f.color, 0x00DB9834u);
    EXPECT_EQ(f.icon, u"a.png");
    EXPECT_EQ(f.voice, u"pełna");
    EXPECT_TRUE(f.steps.empty());
}

TEST_F(WheelsFileTest, FunctionDefaults) {
    const auto& functions = ReadFunctions(R"([{}])");
    ASSERT_EQ(functions.size(), 1u);
    EXPECT_EQ(functions[0].name, u"");
    EXPECT_EQ(functions[0].delay, 30);
    EXPECT_FALSE(functions[0].hasColor);
    EXPECT_EQ(functions[0].color, 0u);
    EXPECT_EQ(functions[0].icon, u"");
    EXPECT_EQ(functions[0].voice, u"");
    EXPECT_TRUE(functions[0].steps.empty());
}

TEST_F(WheelsFileTest, DelayIsTruncatedAndClamped) {
    struct Case {
        const char* json;
        std::int32_t delay;
    };
    const Case cases[] = {
        {"45", 45}, {"2000.9", 2000}, {"5000", 2000}, {"-1", 0}, {"0", 0},
        {"30.99", 30}, {"\"50\"", 30}, {"null", 30},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.json);
        const auto& functions = ReadFunctions(std::string("[{\"delay\": ") + c.json + "}]");
        EXPECT_EQ(messages_, u"");
        ASSERT_EQ(functions.size(), 1u);
        EXPECT_EQ(functions[0].delay, c.delay);
    }
}

TEST_F(WheelsFileTest, InvalidColourIsIgnoredSilently) {
    for (const char* color : {R"("#FFF")", R"("3498DB")", R"("#3498DB ")", "3447003", "true"}) {
        SCOPED_TRACE(color);
        EXPECT_TRUE(Read(std::string("{\"actions\": [{\"color\": ") + color + "}]}"));
        EXPECT_EQ(messages_, u"");
        ASSERT_EQ(wheels_.size(), 1u);
        EXPECT_FALSE(wheels_[0].functions[0].hasColor);
    }
}

TEST_F(WheelsFileTest, NonStringTextFieldsAreIgnored) {
    const auto& functions = ReadFunctions(R"([{"name": 5, "icon": [], "voice": true}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(functions.size(), 1u);
    EXPECT_EQ(functions[0].name, u"");
    EXPECT_EQ(functions[0].icon, u"");
    EXPECT_EQ(functions[0].voice, u"");
}

TEST_F(WheelsFileTest, FirstOccurrenceOfAMemberWins) {
    const auto& functions =
        ReadFunctions(R"([{"name": "A", "name": "B", "steps": [{"key": "a"}], "steps": []}])");
    ASSERT_EQ(functions.size(), 1u);
    EXPECT_EQ(functions[0].name, u"A");
    EXPECT_EQ(functions[0].steps.size(), 1u);
}

// ---------------------------------------------------------------------------
// Legacy key forms

TEST_F(WheelsFileTest, KeysArrayGivesOneClickPerKey) {
    const auto& functions = ReadFunctions(R"([{"name": "L", "keys": ["a", "enter", "lpm"]}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(functions.size(), 1u);
    WheelFunction expected;
    expected.name = u"L";
    expected.steps = {KeyStep(u"a", StepKind::Click, 1), KeyStep(u"enter", StepKind::Click, 1),
                      KeyStep(u"lpm", StepKind::Click, 1)};
    ExpectSameFunction(expected, functions[0]);
}

TEST_F(WheelsFileTest, KeysSingleValueAndKey) {
    const auto& keys = ReadFunctions(R"([{"keys": "c"}, {"key": "F2"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(keys.size(), 2u);
    ASSERT_EQ(keys[0].steps.size(), 1u);
    ExpectSameStep(KeyStep(u"c", StepKind::Click, 1), keys[0].steps[0]);
    ASSERT_EQ(keys[1].steps.size(), 1u);
    ExpectSameStep(KeyStep(u"F2", StepKind::Click, 1), keys[1].steps[0]);
}

TEST_F(WheelsFileTest, InvalidLegacyKeysAreReportedAndSkipped) {
    const auto& functions = ReadFunctions(R"([{"name": "N", "keys": ["a", "zz", "b"]}])");
    EXPECT_EQ(messages_, UnknownKey(u"zz", u"N"));
    ASSERT_EQ(functions.size(), 1u);
    ASSERT_EQ(functions[0].steps.size(), 2u);
    EXPECT_EQ(functions[0].steps[0].key.vk, 0x41);
    EXPECT_EQ(functions[0].steps[1].key.vk, 0x42);
    EXPECT_FALSE(Read(R"({"actions": [{"name": "N", "key": "ctrl+c"}]})"));
    EXPECT_EQ(messages_, UnknownKey(u"ctrl+c", u"N"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_TRUE(wheels_[0].functions[0].steps.empty());
}

TEST_F(WheelsFileTest, StepsArrayHidesTheLegacyForms) {
    const auto& functions = ReadFunctions(
        R"([{"steps": [], "key": "a", "keys": ["b"]}, {"steps": 5, "key": "a"},
            {"keys": ["b"], "key": "a"}, {"keys": [], "key": "a"}])");
    ASSERT_EQ(functions.size(), 4u);
    EXPECT_TRUE(functions[0].steps.empty());
    ASSERT_EQ(functions[1].steps.size(), 1u);
    EXPECT_EQ(functions[1].steps[0].key.vk, 0x41);
    ASSERT_EQ(functions[2].steps.size(), 1u);
    EXPECT_EQ(functions[2].steps[0].key.vk, 0x42);
    EXPECT_TRUE(functions[3].steps.empty());
}

// ---------------------------------------------------------------------------
// Steps

TEST_F(WheelsFileTest, DefaultStepIsOneClick) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": "a"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 1u);
    ExpectSameStep(KeyStep(u"a", StepKind::Click, 1), steps[0]);
}

TEST_F(WheelsFileTest, HoldWithoutValueIsHeldUntilRelease) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": "a", "action": "przytrzymaj"}])");
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].kind, StepKind::Hold);
    EXPECT_EQ(steps[0].value, 0);
}

TEST_F(WheelsFileTest, ClickCountLimits) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "a", "value": 0}, {"key": "a", "value": 500}, {"key": "a", "value": -5},
            {"key": "a", "value": 2.9}, {"key": "a", "value": 100}, {"key": "a", "value": "3"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 6u);
    const std::int32_t expected[] = {1, 100, 1, 2, 100, 1};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(steps[i].kind, StepKind::Click) << i;
        EXPECT_EQ(steps[i].value, expected[i]) << i;
    }
}

TEST_F(WheelsFileTest, HoldTimeLimits) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "a", "action": "hold", "value": 500},
            {"key": "a", "action": "hold", "value": 70000},
            {"key": "a", "action": "hold", "value": -5},
            {"key": "a", "action": "hold", "value": 60000.5},
            {"key": "a", "action": "hold"}])");
    ASSERT_EQ(steps.size(), 5u);
    const std::int32_t expected[] = {500, 60000, 0, 60000, 0};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(steps[i].kind, StepKind::Hold) << i;
        EXPECT_EQ(steps[i].value, expected[i]) << i;
    }
}

TEST_F(WheelsFileTest, ReleaseKeepsItsValue) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "a", "action": "release"}, {"key": "a", "action": "release", "value": 7},
            {"key": "a", "action": "release", "value": -7}])");
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].value, 0);
    EXPECT_EQ(steps[1].value, 7);
    EXPECT_EQ(steps[2].value, 0);
    for (const Step& step : steps) EXPECT_EQ(step.kind, StepKind::Release);
}

TEST_F(WheelsFileTest, AllSevenActionWords) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "a", "action": "click"}, {"key": "a", "action": "klik"},
            {"key": "a", "action": "hold"}, {"key": "a", "action": "przytrzymaj"},
            {"key": "a", "action": "release"}, {"key": "a", "action": "pusc"},
            {"key": "a", "action": "puść"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 7u);
    const StepKind expected[] = {StepKind::Click, StepKind::Click,   StepKind::Hold,
                                 StepKind::Hold,  StepKind::Release, StepKind::Release,
                                 StepKind::Release};
    for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(steps[i].kind, expected[i]) << i;
}

TEST_F(WheelsFileTest, UnknownActionWordIsAClickWithAMessage) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "a", "action": "Click"}, {"key": "b", "action": "HOLD", "value": 3}])");
    EXPECT_EQ(messages_, UnknownAction(u"Click", u"F") + UnknownAction(u"HOLD", u"F"));
    ASSERT_EQ(steps.size(), 2u);
    ExpectSameStep(KeyStep(u"a", StepKind::Click, 1), steps[0]);
    ExpectSameStep(KeyStep(u"b", StepKind::Click, 3), steps[1]);
    EXPECT_FALSE(Read(R"({"actions": [{"name": "Ż", "steps": [{"key": "a", "action": ""}]}]})"));
    EXPECT_EQ(messages_, UnknownAction(u"", u"Ż"));
}

TEST_F(WheelsFileTest, ActionThatIsNotAStringIsAClick) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": "a", "action": 1, "value": 2}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 1u);
    ExpectSameStep(KeyStep(u"a", StepKind::Click, 2), steps[0]);
}

TEST_F(WheelsFileTest, NumericKeyIsItsTruncatedInteger) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": 5}, {"key": 7.9}, {"key": 0}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 3u);
    ExpectSameStep(KeyStep(u"5", StepKind::Click, 1), steps[0]);
    EXPECT_EQ(steps[0].key.vk, 0x35);
    EXPECT_EQ(steps[0].key.name, u"5");
    ExpectSameStep(KeyStep(u"7", StepKind::Click, 1), steps[1]);
    ExpectSameStep(KeyStep(u"0", StepKind::Click, 1), steps[2]);
}

TEST_F(WheelsFileTest, NumericKeyThatIsNoKey) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": 12}, {"key": "a"}])");
    EXPECT_EQ(messages_, UnknownKey(u"12", u"F"));
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].key.vk, 0x41);
}

TEST_F(WheelsFileTest, KeyOfAnotherTypeIsEmptyText) {
    const std::vector<Step> steps = ReadSteps(R"([{"key": true}, {"key": "b"}])");
    EXPECT_EQ(messages_, UnknownKey(u"", u"F"));
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].key.vk, 0x42);
}

TEST_F(WheelsFileTest, StepWithoutKeyIsDroppedSilently) {
    const std::vector<Step> steps =
        ReadSteps(R"([{"action": "hold", "value": 5}, {}, {"key": "a"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].key.vk, 0x41);
}

TEST_F(WheelsFileTest, StepWithoutKeyStillReportsAnUnknownAction) {
    const std::vector<Step> steps = ReadSteps(R"([{"action": "skok"}])");
    EXPECT_EQ(messages_, UnknownAction(u"skok", u"F"));
    EXPECT_TRUE(steps.empty());
}

TEST_F(WheelsFileTest, UnknownKeyIsDroppedWithAMessage) {
    const std::vector<Step> steps =
        ReadSteps(R"([{"key": "ctrl"}, {"key": "ctrl+c"}, {"key": "c"}])");
    EXPECT_FALSE(messages_.empty());
    EXPECT_EQ(messages_, UnknownKey(u"ctrl+c", u"F"));
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].key.vk, 0x11);
    EXPECT_EQ(steps[1].key.vk, 0x43);
}

TEST_F(WheelsFileTest, UnknownKeyMakesTheResultFalse) {
    EXPECT_FALSE(Read(R"({"actions": [{"name": "F", "steps": [{"key": "ctrl+c"}]}]})"));
    EXPECT_TRUE(Read(R"({"actions": [{"name": "F", "steps": [{"key": "ctrl"}]}]})"));
}

TEST_F(WheelsFileTest, KeyTextIsQuotedAsWritten) {
    EXPECT_FALSE(Read(R"({"actions": [{"name": "Zażółć", "steps": [{"key": " zz "}]}]})"));
    EXPECT_EQ(messages_, UnknownKey(u" zz ", u"Zażółć"));
}

TEST_F(WheelsFileTest, MessageUsesTheFunctionNameWhereverItStands) {
    EXPECT_FALSE(Read(R"({"actions": [{"steps": [{"key": "zz"}], "name": "Późna"},
                                       {"name": 5, "steps": [{"key": "yy"}]}]})"));
    EXPECT_EQ(messages_, UnknownKey(u"zz", u"Późna") + UnknownKey(u"yy", u""));
}

TEST_F(WheelsFileTest, MouseButtonSteps) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"key": "lpm", "action": "click", "value": 2}, {"key": "mouse5", "action": "hold"}])");
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_TRUE(steps[0].key.isMouse);
    EXPECT_EQ(steps[0].key.button, kMouseLeft);
    EXPECT_EQ(steps[0].value, 2);
    EXPECT_TRUE(steps[1].key.isMouse);
    EXPECT_EQ(steps[1].key.button, kMouseX2);
    EXPECT_EQ(steps[1].kind, StepKind::Hold);
}

TEST_F(WheelsFileTest, NonObjectStepsAreSkipped) {
    const std::vector<Step> steps = ReadSteps(R"([null, 5, "a", ["b"], {"key": "a"}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].key.vk, 0x41);
}

TEST_F(WheelsFileTest, OpenSteps) {
    const std::vector<Step> steps = ReadSteps(
        R"([{"open": ""}, {"open": 5}, {"open": null, "key": "a"},
            {"open": "notepad", "key": "a"},
            {"open": "https://example.com/", "key": "zz", "action": "skok", "value": 9}])");
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(steps.size(), 2u);
    ExpectSameStep(OpenStep(u"notepad"), steps[0]);
    ExpectSameStep(OpenStep(u"https://example.com/"), steps[1]);
}

TEST_F(WheelsFileTest, ProblemsAreReportedInFileOrderAndTheRestIsKept) {
    EXPECT_FALSE(Read(R"({"wheels": [
        {"name": "A", "actions": [
            {"name": "a1", "steps": [{"key": "qq"}, {"key": "a", "action": "skacz"}]},
            {"name": "a2", "key": "b"}]},
        {"name": "B"},
        {"name": "C", "actions": [{"name": "c1", "keys": ["c", "??"]}]}]})"));
    EXPECT_EQ(messages_, UnknownKey(u"qq", u"a1") + UnknownAction(u"skacz", u"a1") +
                             kWheelWithoutActions + UnknownKey(u"??", u"c1"));
    ASSERT_EQ(wheels_.size(), 2u);
    EXPECT_EQ(wheels_[0].name, u"A");
    ASSERT_EQ(wheels_[0].functions.size(), 2u);
    EXPECT_EQ(wheels_[0].functions[0].steps.size(), 1u);
    EXPECT_EQ(wheels_[0].functions[1].steps.size(), 1u);
    EXPECT_EQ(wheels_[1].name, u"C");
    ASSERT_EQ(wheels_[1].functions.size(), 1u);
    EXPECT_EQ(wheels_[1].functions[0].steps.size(), 1u);
}

// ---------------------------------------------------------------------------
// Programs of a wheel

std::u16string AppsNotAnArray(std::u16string_view wheel) {
    return u"default.json: \"apps\" koła \"" + std::u16string(wheel) + u"\" nie jest tablicą — pomijam.\n";
}

std::u16string BadAppsElement(std::u16string_view wheel) {
    return u"default.json: pomijam element \"apps\" koła \"" + std::u16string(wheel) +
           u"\", który nie jest niepustym napisem.\n";
}

TEST_F(WheelsFileTest, WheelWithoutAppsIsGeneral) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": "A", "actions": [{"name": "a", "key": "a"}]}]})"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_TRUE(wheels_[0].apps.empty());
}

TEST_F(WheelsFileTest, AppsAreReadInOrder) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": "A", "apps": ["notepad.exe", "Firefox", "notepad.exe"],
                                    "actions": [{"name": "a", "key": "a"}]},
                                   {"name": "B", "apps": [], "actions": [{"name": "b", "key": "b"}]}]})"));
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(wheels_.size(), 2u);
    EXPECT_EQ(wheels_[0].apps, (std::vector<std::u16string>{u"notepad.exe", u"Firefox", u"notepad.exe"}));
    EXPECT_TRUE(wheels_[1].apps.empty());
}

TEST_F(WheelsFileTest, AppsThatIsNotAnArrayIsLeftOutAndTheWheelLoads) {
    for (const char* apps : {"\"notepad.exe\"", "{}", "null", "3"}) {
        SCOPED_TRACE(apps);
        EXPECT_FALSE(Read(std::string(R"({"wheels": [{"name": "Gra", "apps": )") + apps +
                          R"(, "actions": [{"name": "a", "key": "a"}]}]})"));
        EXPECT_EQ(messages_, AppsNotAnArray(u"Gra"));
        ASSERT_EQ(wheels_.size(), 1u);
        EXPECT_TRUE(wheels_[0].apps.empty());
        EXPECT_EQ(wheels_[0].functions.size(), 1u);
    }
}

TEST_F(WheelsFileTest, AppsElementsThatAreNoNamesAreLeftOutOneMessageEach) {
    EXPECT_FALSE(Read(R"({"wheels": [{"name": "Gra", "apps": ["", "gra.exe", 5, null, ["x"], "GRA"],
                                     "actions": [{"name": "a", "key": "a"}]}]})"));
    EXPECT_EQ(messages_, BadAppsElement(u"Gra") + BadAppsElement(u"Gra") + BadAppsElement(u"Gra") +
                             BadAppsElement(u"Gra"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].apps, (std::vector<std::u16string>{u"gra.exe", u"GRA"}));
}

TEST_F(WheelsFileTest, SixtyFourAppsAreKeptAndMoreAreCut) {
    auto fileWith = [](int count) {
        std::string apps;
        for (int i = 0; i < count; ++i) apps += (i ? ", \"p" : "\"p") + std::to_string(i) + "\"";
        return R"({"wheels": [{"name": "Dużo", "apps": [)" + apps + R"(], "actions": [{"name": "a", "key": "a"}]}]})";
    };
    EXPECT_TRUE(Read(fileWith(64)));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].apps.size(), 64u);

    EXPECT_FALSE(Read(fileWith(70)));
    EXPECT_EQ(messages_, u"default.json: zbyt wiele programów w kole \"Dużo\" — używam pierwszych 64.\n");
    ASSERT_EQ(wheels_.size(), 1u);
    ASSERT_EQ(wheels_[0].apps.size(), 64u);
    EXPECT_EQ(wheels_[0].apps.back(), u"p63");
}

TEST_F(WheelsFileTest, AppsOfAWheelWithoutFunctionsGoWithIt) {
    EXPECT_TRUE(Read(R"({"wheels": [{"name": "Pusta", "apps": ["a.exe"], "actions": []},
                                   {"name": "B", "actions": [{"name": "b", "key": "b"}]}]})"));
    ASSERT_EQ(wheels_.size(), 1u);
    EXPECT_EQ(wheels_[0].name, u"B");
    EXPECT_TRUE(wheels_[0].apps.empty());
}

// ---------------------------------------------------------------------------
// Writer

Wheel OneWheel() {
    Wheel wheel;
    wheel.name = u"Główne";
    WheelFunction full;
    full.name = u"Kopiuj i wklej";
    full.color = 0x003C4CE7;
    full.hasColor = true;
    full.delay = 120;
    full.icon = u"kopiuj.png";
    full.voice = u"kopiuj i wklej";
    full.steps = {OpenStep(u"notepad"),
                  KeyStep(u"ctrl", StepKind::Hold, 0),
                  KeyStep(u"c", StepKind::Click, 1),
                  KeyStep(u"ctrl", StepKind::Release, 0),
                  KeyStep(u"lmb", StepKind::Click, 3),
                  KeyStep(u"F5", StepKind::Hold, 500),
                  KeyStep(u"enter", StepKind::Click, 1)};
    WheelFunction empty;
    empty.name = u"Pusta";
    WheelFunction black;
    black.name = u"Czarny";
    black.hasColor = true;
    black.color = 0;
    black.delay = 0;
    black.steps = {KeyStep(u"space", StepKind::Click, 1)};
    wheel.functions = {full, empty, black};
    return wheel;
}

std::vector<Wheel> TwoWheels() {
    Wheel browser;
    browser.name = u"Przeglądarka";
    WheelFunction tab;
    tab.name = u"Nowa karta";
    tab.steps = {KeyStep(u"ctrl", StepKind::Hold, 0), KeyStep(u"t", StepKind::Click, 1),
                 KeyStep(u"ctrl", StepKind::Release, 0)};
    WheelFunction page;
    page.name = u"Strona";
    page.voice = u"otwórz stronę";
    page.steps = {OpenStep(u"https://example.com/a?b=1&c=ł")};
    browser.functions = {tab, page};

    Wheel unnamed;
    WheelFunction mouse;
    mouse.delay = 2000;
    mouse.steps = {KeyStep(u"mb4", StepKind::Click, 1), KeyStep(u"rmb", StepKind::Click, 2)};
    WheelFunction colour;
    colour.name = u"Kolor";
    colour.hasColor = true;
    colour.color = 0x00DB9834;
    colour.icon = u"ikony/a.png";
    unnamed.functions = {mouse, colour};
    return {browser, unnamed};
}

std::vector<Wheel> ProgramWheels() {
    Wheel game;
    game.name = u"Gra";
    game.apps = {u"steam_app_1091500", u"Gra \"Nowa\".exe"};
    WheelFunction jump;
    jump.name = u"Skok";
    jump.steps = {KeyStep(u"space", StepKind::Click, 1)};
    game.functions = {jump};

    Wheel general;
    general.name = u"Ogólne";
    WheelFunction copy;
    copy.name = u"Kopiuj";
    copy.steps = {KeyStep(u"ctrl", StepKind::Hold, 0), KeyStep(u"c", StepKind::Click, 1),
                  KeyStep(u"ctrl", StepKind::Release, 0)};
    general.functions = {copy};

    Wheel notepad;
    notepad.name = u"Notatnik";
    notepad.apps = {u"notepad.exe"};
    WheelFunction save;
    save.name = u"Zapisz";
    save.steps = {KeyStep(u"F12", StepKind::Click, 1)};
    notepad.functions = {save};
    return {game, general, notepad};
}

// Needs the built-in layout for the two punctuation keys.
Wheel EscapingWheel() {
    Wheel wheel;
    wheel.name = u"Koło \"cytat\" \\ ukośnik";
    WheelFunction special;
    special.name = u"Linia1\nLinia2\tTab\r\x01\x1f/ok";
    special.icon = u"C:\\Ikony\\żółw.png";
    special.voice = u"zażółć gęślą jaźń";
    special.steps = {OpenStep(u"C:\\Program Files\\Aplikacja\\app.exe \"arg\""),
                     KeyStep(u"\\", StepKind::Click, 1), KeyStep(u"\"", StepKind::Release, 0)};
    WheelFunction polish;
    polish.name = u"Zażółć gęślą jaźń";
    wheel.functions = {special, polish};
    return wheel;
}

TEST(WheelsWriter, OneWheelWithEveryKindOfStep) {
    EXPECT_EQ(WriteWheelsFile({OneWheel()}), Golden("one_wheel.json"));
}

TEST(WheelsWriter, TwoWheels) {
    EXPECT_EQ(WriteWheelsFile(TwoWheels()), Golden("two_wheels.json"));
}

TEST(WheelsWriter, EscapingAndPolishText) {
    BuiltInLayout layout;
    const Wheel wheel = EscapingWheel();
    ASSERT_TRUE(wheel.functions[0].steps[1].key.valid);
    ASSERT_TRUE(wheel.functions[0].steps[2].key.valid);
    EXPECT_EQ(WriteWheelsFile({wheel}), Golden("escaping.json"));
}

TEST(WheelsWriter, ProgramsStandOnOneLineBeforeTheActions) {
    EXPECT_EQ(WriteWheelsFile(ProgramWheels()), Golden("programs.json"));
}

TEST(WheelsWriter, WheelWithoutProgramsIsWrittenAsBefore) {
    std::vector<Wheel> wheels = ProgramWheels();
    for (Wheel& wheel : wheels) wheel.apps.clear();
    EXPECT_EQ(WriteWheelsFile(wheels).find("apps"), std::string::npos);
}

TEST(WheelsWriter, NoWheels) {
    EXPECT_EQ(WriteWheelsFile({}), "{\n  \"wheels\": [\n  ]\n}\n");
}

TEST(WheelsWriter, OnlyNonDefaultFieldsAreWritten) {
    Wheel wheel;
    wheel.name = u"W";
    WheelFunction f;
    f.name = u"F";
    f.delay = 30;
    f.color = 0x00123456;  // not written: the field has no colour of its own
    f.hasColor = false;
    Step open = OpenStep(u"calc");
    open.key = ParseKeyName(u"a");
    open.value = 5;
    f.steps = {open, KeyStep(u"alt", StepKind::Release, 9)};
    wheel.functions = {f};
    EXPECT_EQ(WriteWheelsFile({wheel}),
              "{\n"
              "  \"wheels\": [\n"
              "    {\n"
              "      \"name\": \"W\",\n"
              "      \"actions\": [\n"
              "        { \"name\": \"F\",\n"
              "          \"steps\": [\n"
              "            { \"open\": \"calc\" },\n"
              "            { \"key\": \"alt\", \"action\": \"release\" }\n"
              "          ]\n"
              "        }\n"
              "      ]\n"
              "    }\n"
              "  ]\n"
              "}\n");
}

TEST(WheelsWriter, KeyIsWrittenByItsName) {
    Wheel wheel;
    WheelFunction f;
    f.steps = {KeyStep(u"  Enter ", StepKind::Click, 2), KeyStep(u"LPM", StepKind::Hold, 60000)};
    wheel.functions = {f};
    const std::string text = WriteWheelsFile({wheel});
    EXPECT_NE(text.find("            { \"key\": \"Enter\", \"action\": \"click\", \"value\": 2 },\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("            { \"key\": \"LPM\", \"action\": \"hold\", \"value\": 60000 }\n"),
              std::string::npos)
        << text;
}

TEST_F(WheelsFileTest, GoldenFilesReadAsTheirModels) {
    std::vector<Wheel> read;
    std::u16string messages;
    ASSERT_TRUE(ReadWheelsFile(GoldenPath("one_wheel.json").u16string(), read, messages));
    EXPECT_EQ(messages, u"");
    ExpectSameWheels({OneWheel()}, read);

    ASSERT_TRUE(ReadWheelsFile(GoldenPath("two_wheels.json").u16string(), read, messages));
    EXPECT_EQ(messages, u"");
    ExpectSameWheels(TwoWheels(), read);

    ASSERT_TRUE(ReadWheelsFile(GoldenPath("programs.json").u16string(), read, messages));
    EXPECT_EQ(messages, u"");
    ExpectSameWheels(ProgramWheels(), read);

    BuiltInLayout layout;
    ASSERT_TRUE(ReadWheelsFile(GoldenPath("escaping.json").u16string(), read, messages));
    EXPECT_EQ(messages, u"");
    ExpectSameWheels({EscapingWheel()}, read);
}

TEST_F(WheelsFileTest, ReadWriteReadKeepsTheModel) {
    BuiltInLayout layout;
    for (const char* name : {"one_wheel.json", "two_wheels.json", "escaping.json", "programs.json"}) {
        SCOPED_TRACE(name);
        std::vector<Wheel> first;
        std::u16string messages;
        ASSERT_TRUE(ReadWheelsFile(GoldenPath(name).u16string(), first, messages));
        const std::string written = WriteWheelsFile(first);
        EXPECT_EQ(written, Golden(name));

        EXPECT_TRUE(Read(written, "kopia.json"));
        EXPECT_EQ(messages_, u"");
        ExpectSameWheels(first, wheels_);
        EXPECT_EQ(WriteWheelsFile(wheels_), written);
    }
}

TEST_F(WheelsFileTest, LegacyFileIsWrittenWithSteps) {
    EXPECT_TRUE(Read(R"({"actions": [
        {"name": "L", "keys": ["a", "b"]},
        {"name": "K", "key": "enter", "delay": 30, "color": "#3498db"},
        {"name": "S", "keys": "F2"}]})"));
    EXPECT_EQ(messages_, u"");
    const std::string written = WriteWheelsFile(wheels_);
    EXPECT_EQ(written, Golden("legacy_converted.json"));
    EXPECT_EQ(written.find("\"keys\""), std::string::npos);
    EXPECT_EQ(written.find("\"key\": \"enter\" }"), std::string::npos);

    const std::vector<Wheel> before = wheels_;
    EXPECT_TRUE(Read(written, "nowy.json"));
    ExpectSameWheels(before, wheels_);
}

TEST(WheelsWriter, LineFeedsOnly) {
    const std::string text = WriteWheelsFile(TwoWheels());
    EXPECT_EQ(text.find('\r'), std::string::npos);
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.back(), '\n');
}

// ---------------------------------------------------------------------------
// Step text

Step WithValue(Step step, std::int32_t value) {
    step.value = value;
    return step;
}

TEST(StepText, Clicks) {
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Click, 1)), u"klik:  a");
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Click, 0)), u"klik:  a");
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Click, -3)), u"klik:  a");
    EXPECT_EQ(StepDisplayText(KeyStep(u"enter", StepKind::Click, 2)), u"klik x2:  enter");
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Click, 3)), u"klik x3:  a");
    EXPECT_EQ(StepDisplayText(KeyStep(u"lmb", StepKind::Click, 100)), u"klik x100:  lmb");
}

TEST(StepText, Holds) {
    EXPECT_EQ(StepDisplayText(KeyStep(u"ctrl", StepKind::Hold, 0)),
              u"przytrzymaj (bez puszczania):  ctrl");
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Hold, 500)), u"przytrzymaj 500 ms:  a");
    EXPECT_EQ(StepDisplayText(KeyStep(u"F5", StepKind::Hold, 1)), u"przytrzymaj 1 ms:  F5");
    EXPECT_EQ(StepDisplayText(KeyStep(u"a", StepKind::Hold, 60000)), u"przytrzymaj 60000 ms:  a");
}

TEST(StepText, Release) {
    EXPECT_EQ(StepDisplayText(KeyStep(u"alt", StepKind::Release, 0)), u"puść:  alt");
    EXPECT_EQ(StepDisplayText(WithValue(KeyStep(u"alt", StepKind::Release, 0), 7)), u"puść:  alt");
}

TEST(StepText, Open) {
    EXPECT_EQ(StepDisplayText(OpenStep(u"notepad")), u"otwórz:  notepad");
    Step withKey = OpenStep(u"https://example.com/");
    withKey.key = ParseKeyName(u"a");
    withKey.value = 4;
    EXPECT_EQ(StepDisplayText(withKey), u"otwórz:  https://example.com/");
}

TEST(StepText, KeyNameAsStored) {
    EXPECT_EQ(StepDisplayText(KeyStep(u"  Spacja ", StepKind::Click, 1)), u"klik:  Spacja");
    EXPECT_EQ(StepDisplayText(KeyStep(u"LPM", StepKind::Hold, 0)),
              u"przytrzymaj (bez puszczania):  LPM");
}

}  // namespace
}  // namespace zirvel
