// The function editor's rules on the null platform: the document, the
// dirty rule, the checks and their boxes, saving and activating.
#include <gtest/gtest.h>

#include "config/file_io.h"
#include "config/text.h"
#include "config/wheels_file.h"
#include "engine/function_editor.h"
#include "engine/help_page.h"
#include "engine_fixture.h"
#include "support/scripted_editor_dialogs.h"

namespace {

using zirvel::EditorIcon;
using zirvel::FunctionEditor;
using zirvel_test::ScriptedEditorDialogs;

constexpr char kTwoWheels[] = R"({"wheels": [
  {"name": "Gra", "actions": [{"name": "Skok", "key": "space"}, {"name": "Mapa", "key": "m", "color": "#e74c3c"}]},
  {"name": "Druga", "actions": [{"name": "Esc", "key": "esc"}]}]})";

class FunctionEditorTest : public zirvel_test::EngineTest {
protected:
    void Open(const std::string& wheels = kTwoWheels) {
        Start("{}", wheels);
        zirvel::LoadEngineWheelsIntoEditor(editor_);
    }
    std::u16string PathOf(const std::string& name) const { return (directory_ / name).u16string(); }

    FunctionEditor editor_;
    ScriptedEditorDialogs dialogs_;
};

TEST_F(FunctionEditorTest, OpensTheEnginesWheelsFileWithEveryWheel) {
    Open();
    ASSERT_EQ(editor_.wheels.size(), 2u);
    EXPECT_EQ(editor_.wheels[0].name, u"Gra");
    EXPECT_EQ(editor_.path, PathOf("default.json"));
    EXPECT_EQ(editor_.functionIndex, -1);
    EXPECT_FALSE(editor_.dirty);
    EXPECT_EQ(zirvel::FieldsOf(editor_.wheels[0].functions[1]).color, u"#E74C3C");
    EXPECT_EQ(zirvel::FieldsOf(editor_.wheels[0].functions[0]).color, u"");
}

TEST_F(FunctionEditorTest, AFileWithoutWheelsStartsWithKolo1) {
    Open(R"({"wheels": []})");
    ASSERT_EQ(editor_.wheels.size(), 1u);
    EXPECT_EQ(editor_.wheels[0].name, u"Koło 1");
}

TEST_F(FunctionEditorTest, TheLastWheelCannotBeRemoved) {
    Open(R"({"actions": [{"name": "A", "key": "a"}]})");
    EXPECT_FALSE(zirvel::RemoveEditorWheel(editor_, dialogs_));
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Musi zostać przynajmniej jedno koło.");
    EXPECT_EQ(editor_.wheels.size(), 1u);
    EXPECT_FALSE(editor_.dirty);
}

TEST_F(FunctionEditorTest, RemovingAWheelAsksAndOnlyYesRemoves) {
    Open();
    EXPECT_FALSE(zirvel::RemoveEditorWheel(editor_, dialogs_));  // no answer scripted: No
    EXPECT_EQ(dialogs_.boxes.back().text, u"Usunąć koło \"Gra\" wraz z funkcjami?");
    EXPECT_EQ(dialogs_.boxes.back().icon, EditorIcon::Question);
    EXPECT_EQ(editor_.wheels.size(), 2u);
    dialogs_.answers = {true};
    EXPECT_TRUE(zirvel::RemoveEditorWheel(editor_, dialogs_));
    ASSERT_EQ(editor_.wheels.size(), 1u);
    EXPECT_EQ(editor_.wheels[0].name, u"Druga");
    EXPECT_TRUE(editor_.dirty);
}

TEST_F(FunctionEditorTest, ActivatingOnlyEmptyWheelsIsRefusedAndLeavesTheEngineAlone) {
    Open(R"({"actions": [{"name": "A", "key": "a"}]})");
    zirvel::NewEditorDocument(editor_, dialogs_);
    zirvel::ActivateEditorDocument(editor_, dialogs_);
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Żadne koło nie ma funkcji — nie ma czego aktywować.");
    ASSERT_EQ(zirvel::Engine().Wheels().size(), 1u);
    EXPECT_EQ(zirvel::Engine().Wheels()[0].functions[0].name, u"A");
}

TEST_F(FunctionEditorTest, ActivatingTakesTheWheelsWithFunctionsWithoutSaving) {
    StartStandAlone();
    WriteFile("default.json", kTwoWheels);
    zirvel::LoadEngineWheelsIntoEditor(editor_);
    zirvel::AddEditorFunction(editor_);
    zirvel::AddEditorWheel(editor_);  // without functions: not taken
    zirvel::ActivateEditorDocument(editor_, dialogs_);
    EXPECT_TRUE(dialogs_.boxes.empty());
    ASSERT_EQ(zirvel::Engine().Wheels().size(), 2u);
    EXPECT_EQ(zirvel::Engine().Wheels()[0].functions.size(), 3u);
    ASSERT_FALSE(platform_.TrayNotices().empty());
    EXPECT_EQ(platform_.TrayNotices().back(),
              u"Zirvel|Aktywowano koła z edytora. Naciśnij klawisz wywołania, aby ich użyć.");
    std::string bytes;
    ASSERT_TRUE(zirvel::ReadFileBytes(PathOf("default.json"), bytes));
    EXPECT_EQ(bytes, kTwoWheels);
}

TEST_F(FunctionEditorTest, AColourMustBeHashAndSixDigitsOrEmpty) {
    Open();
    ASSERT_TRUE(zirvel::EditEditorFunction(editor_, dialogs_, 0));
    EXPECT_FALSE(zirvel::StoreEditorFunction(editor_, dialogs_, {u"Skok", u"red", u"30", u"", u""}));
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text,
              u"Niepoprawny kolor — użyj formatu #RRGGBB (np. #E74C3C) albo zostaw pole puste.");
    EXPECT_EQ(dialogs_.boxes[0].icon, EditorIcon::Warning);
    EXPECT_FALSE(editor_.dirty);
    EXPECT_TRUE(zirvel::StoreEditorFunction(editor_, dialogs_, {u"Skok!", u"#00ff80", u"45", u"i.png", u"skacz"}));
    const zirvel::WheelFunction& stored = editor_.wheels[0].functions[0];
    EXPECT_EQ(stored.name, u"Skok!");
    EXPECT_TRUE(stored.hasColor);
    EXPECT_EQ(stored.color, 0x80FF00u);  // red in the low byte
    EXPECT_EQ(stored.delay, 45);
    EXPECT_EQ(stored.voice, u"skacz");
    EXPECT_TRUE(editor_.dirty);
    EXPECT_TRUE(zirvel::StoreEditorFunction(editor_, dialogs_, {u"Skok!", u"", u"45", u"", u""}));
    EXPECT_FALSE(editor_.wheels[0].functions[0].hasColor);  // empty: the global segmentColor
}

TEST_F(FunctionEditorTest, StoringOrEditingWithoutAFunctionSaysWhatToDoFirst) {
    Open();
    EXPECT_FALSE(zirvel::StoreEditorFunction(editor_, dialogs_, {}));
    EXPECT_FALSE(zirvel::EditEditorFunction(editor_, dialogs_, -1));
    ASSERT_EQ(dialogs_.boxes.size(), 2u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Najpierw wybierz lub dodaj funkcję.");
    EXPECT_EQ(dialogs_.boxes[1].text, u"Najpierw wybierz funkcję z listy.");
    EXPECT_EQ(dialogs_.boxes[1].icon, EditorIcon::Information);
}

TEST_F(FunctionEditorTest, StepsAreBuiltCheckedAndOnlyReachTheDocumentWhenTheFunctionIsStored) {
    Open();
    ASSERT_TRUE(zirvel::EditEditorFunction(editor_, dialogs_, 0));
    EXPECT_FALSE(zirvel::BuildEditorStep(u"klawisz", 0, u"", dialogs_));
    EXPECT_EQ(dialogs_.boxes.back().text,
              u"Nieznany klawisz/przycisk: \"klawisz\"\n\nPrzykłady: q, 5, F5, space, enter, esc, up,\n"
              u"lmb (lewy przycisk myszy), rmb, mmb, mb4, mb5");
    EXPECT_FALSE(zirvel::BuildEditorStep(u"", 3, u"", dialogs_));
    EXPECT_EQ(dialogs_.boxes.back().icon, EditorIcon::Warning);
    const auto open = zirvel::BuildEditorStep(u"https://example.com", 3, u"", dialogs_);
    ASSERT_TRUE(open);
    EXPECT_EQ(open->target, u"https://example.com");
    const auto hold = zirvel::BuildEditorStep(u"ctrl", 1, u"250", dialogs_);
    ASSERT_TRUE(hold);
    EXPECT_EQ(hold->value, 250);
    const auto click = zirvel::BuildEditorStep(u"lmb", 0, u"", dialogs_);
    ASSERT_TRUE(click);
    EXPECT_EQ(click->value, 1);

    EXPECT_EQ(zirvel::AddEditorStep(editor_, *hold), 1);
    EXPECT_EQ(zirvel::MoveEditorStep(editor_, 1, -1), 0);
    EXPECT_EQ(zirvel::ReplaceEditorStep(editor_, 1, *click), 1);
    EXPECT_FALSE(editor_.dirty);
    EXPECT_EQ(editor_.wheels[0].functions[0].steps.size(), 1u);
    ASSERT_TRUE(zirvel::StoreEditorFunction(editor_, dialogs_, zirvel::FieldsOf(editor_.function)));
    const std::vector<zirvel::Step>& steps = editor_.wheels[0].functions[0].steps;
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].kind, zirvel::StepKind::Hold);
    EXPECT_EQ(steps[1].key.name, u"lmb");
    EXPECT_EQ(zirvel::RemoveEditorStep(editor_, 0), -1);
    EXPECT_EQ(editor_.function.steps.size(), 1u);
}

TEST_F(FunctionEditorTest, NewOpenAndCloseAskWhileThereAreUnsavedChanges) {
    Open();
    EXPECT_TRUE(zirvel::ConfirmCloseEditor(editor_, dialogs_));
    EXPECT_TRUE(dialogs_.boxes.empty());
    zirvel::AddEditorWheel(editor_);
    EXPECT_EQ(editor_.wheels.back().name, u"Koło 3");
    EXPECT_FALSE(zirvel::ConfirmCloseEditor(editor_, dialogs_));
    EXPECT_EQ(dialogs_.boxes.back().text, u"Są niezapisane zmiany. Zamknąć edytor mimo to?");
    EXPECT_FALSE(zirvel::NewEditorDocument(editor_, dialogs_));
    EXPECT_EQ(dialogs_.boxes.back().text, u"Niezapisane zmiany zostaną utracone. Kontynuować?");
    EXPECT_FALSE(zirvel::OpenEditorDocument(editor_, dialogs_));
    EXPECT_EQ(editor_.wheels.size(), 3u);
    dialogs_.answers = {true};
    EXPECT_TRUE(zirvel::NewEditorDocument(editor_, dialogs_));
    EXPECT_EQ(editor_.wheels.size(), 1u);
    EXPECT_TRUE(editor_.path.empty());
    EXPECT_EQ(zirvel::EditorFileLabel(editor_), u"(nowy plik — niezapisany)");
}

TEST_F(FunctionEditorTest, OpeningReportsTheReadersProblems) {
    Open();
    WriteFile("other.json", R"({"wheels": [{"name": "X", "actions": [{"name": "Q", "key": "nieznany"}]}]})");
    dialogs_.files = {PathOf("other.json")};
    EXPECT_TRUE(zirvel::OpenEditorDocument(editor_, dialogs_));
    EXPECT_EQ(dialogs_.fileDialogDirectories.back(), directory_.u16string());
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text.rfind(u"Problemy przy wczytywaniu:\n\n", 0), 0u);
    EXPECT_EQ(editor_.path, PathOf("other.json"));
}

TEST_F(FunctionEditorTest, ACancelledSaveDialogSavesNothing) {
    Open();
    zirvel::NewEditorDocument(editor_, dialogs_);
    zirvel::AddEditorFunction(editor_);
    EXPECT_FALSE(zirvel::SaveEditorDocument(editor_, dialogs_, false));  // no path yet: the dialog, cancelled
    EXPECT_TRUE(editor_.dirty);
    EXPECT_TRUE(dialogs_.boxes.empty());
    EXPECT_FALSE(std::filesystem::exists(directory_ / "Koło 1.json"));
}

TEST_F(FunctionEditorTest, SavingElsewhereWritesTheFileAndLeavesTheEngineAlone) {
    Open();
    zirvel::AddEditorFunction(editor_);
    zirvel::AddEditorWheel(editor_);
    dialogs_.files = {PathOf("mine.json")};
    ASSERT_TRUE(zirvel::SaveEditorDocument(editor_, dialogs_, true));
    ASSERT_EQ(dialogs_.boxes.size(), 1u);  // "Koło 3" has no function
    EXPECT_EQ(dialogs_.boxes[0].text,
              u"Uwaga: któreś koło nie ma żadnych funkcji — przy\nwczytywaniu zostanie pominięte.");
    EXPECT_EQ(dialogs_.boxes[0].icon, EditorIcon::Warning);
    EXPECT_FALSE(editor_.dirty);
    EXPECT_EQ(editor_.path, PathOf("mine.json"));
    std::vector<zirvel::Wheel> read;
    std::u16string problems;
    ASSERT_TRUE(zirvel::ReadWheelsFile(PathOf("mine.json"), read, problems));
    ASSERT_EQ(read.size(), 2u);  // the empty wheel is skipped when read
    ASSERT_EQ(read[0].functions.size(), 3u);
    EXPECT_EQ(read[0].functions[2].name, u"Nowa funkcja");
    EXPECT_EQ(zirvel::Engine().Wheels()[0].functions.size(), 2u);
}

TEST_F(FunctionEditorTest, SavingTheProgramsDefaultJsonReloadsTheEngineAtOnce) {
    Open();
    zirvel::AddEditorWheel(editor_);
    zirvel::AddEditorFunction(editor_);
    const std::u16string before = zirvel::HelpPageText(zirvel::Engine());
    ASSERT_TRUE(zirvel::SaveEditorDocument(editor_, dialogs_, false));
    EXPECT_EQ(zirvel::Engine().Wheels().size(), 3u);  // "Gra", "Druga" and "Koło 3"
    EXPECT_NE(zirvel::HelpPageText(zirvel::Engine()), before);
    EXPECT_FALSE(std::filesystem::exists(directory_ / "default.json.zirvel-save"));
}

TEST_F(FunctionEditorTest, TheWheelsProgramsAreEditedAsOneLineAndSavedWithTheFile) {
    Open(R"({"wheels": [
      {"name": "Gra", "apps": ["gra.exe", "steam_app_5"], "actions": [{"name": "Skok", "key": "space"}]},
      {"name": "Druga", "actions": [{"name": "Esc", "key": "esc"}]}]})");
    EXPECT_EQ(zirvel::EditorWheelPrograms(editor_), u"gra.exe, steam_app_5");
    EXPECT_FALSE(zirvel::SetEditorWheelPrograms(editor_, dialogs_, u" gra.exe ,steam_app_5,, "));
    EXPECT_FALSE(editor_.dirty);

    ASSERT_TRUE(zirvel::SelectEditorWheel(editor_, 1));
    EXPECT_EQ(zirvel::EditorWheelPrograms(editor_), u"");
    EXPECT_TRUE(zirvel::SetEditorWheelPrograms(editor_, dialogs_, u"notepad.exe,  Firefox"));
    EXPECT_TRUE(editor_.dirty);
    EXPECT_EQ(zirvel::EditorWheelPrograms(editor_), u"notepad.exe, Firefox");

    dialogs_.files = {PathOf("mine.json")};
    ASSERT_TRUE(zirvel::SaveEditorDocument(editor_, dialogs_, true));
    std::vector<zirvel::Wheel> read;
    std::u16string problems;
    ASSERT_TRUE(zirvel::ReadWheelsFile(PathOf("mine.json"), read, problems));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].apps, (std::vector<std::u16string>{u"gra.exe", u"steam_app_5"}));
    EXPECT_EQ(read[1].apps, (std::vector<std::u16string>{u"notepad.exe", u"Firefox"}));

    EXPECT_TRUE(zirvel::SetEditorWheelPrograms(editor_, dialogs_, u" , "));
    EXPECT_TRUE(editor_.CurrentWheel().apps.empty());
    EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(FunctionEditorTest, MoreThanSixtyFourProgramsAreCutWithAWarning) {
    Open();
    std::u16string text;
    for (int i = 0; i < 70; ++i) text += u"p" + zirvel::DecimalText(i) + u",";
    EXPECT_TRUE(zirvel::SetEditorWheelPrograms(editor_, dialogs_, text));
    ASSERT_EQ(editor_.CurrentWheel().apps.size(), 64u);
    EXPECT_EQ(editor_.CurrentWheel().apps.back(), u"p63");
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Koło może należeć najwyżej do 64 programów — zostaje pierwszych 64.");
    EXPECT_EQ(dialogs_.boxes[0].icon, EditorIcon::Warning);
}

}  // namespace
