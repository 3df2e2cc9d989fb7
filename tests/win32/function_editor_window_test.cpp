// The function editor window, driven through its own controls (button
// clicks, selections, typed text) on the live Win32 platform, with the
// boxes and file dialogs answered by the test.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "config/wheels_file.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/help_page.h"
#include "engine/picture_png.h"
#include "platform/win32/win32_platform.h"
#include "support/scripted_editor_dialogs.h"

namespace {

using zirvel::EditorIcon;

constexpr char kWheels[] = R"({"wheels": [
  {"name": "Gra", "actions": [{"name": "Skok", "key": "space", "color": "#2ecc71"},
                              {"name": "Przeładuj", "steps": [{"key": "r"}, {"key": "ctrl", "action": "hold", "value": 200}]}]},
  {"name": "Pisanie", "actions": [{"name": "Enter", "key": "enter"}]}]})";

std::u16string U16(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }

class FunctionEditorWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        directory_ = std::filesystem::temp_directory_path() /
                     ("zirvel_editor_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
        std::ofstream(directory_ / "config.json") << R"({"gazeEnabled": false, "voiceEnabled": false})";
        std::ofstream(directory_ / "default.json", std::ios::binary) << kWheels;
        std::ofstream(directory_ / "voice.json") << R"({"actions": []})";
        platform_ = std::make_unique<zirvel::win32::Win32Platform>(GetModuleHandleW(nullptr));
        zirvel::ResetEngineState(*platform_, directory_.u16string());
        ASSERT_TRUE(zirvel::StartEngine(false));
        platform_->Editor().SetDialogs(&dialogs_);
        ClickEditorButton();
        editor_ = FindWindowW(L"RadialOverlayEditor", nullptr);
        ASSERT_NE(editor_, nullptr) << "the main window's button did not open the editor";
    }

    void TearDown() override {
        zirvel::StopEngine();
        platform_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    // The main window's "Edytor funkcji…" button.
    void ClickEditorButton() {
        SendMessageW(GetDlgItem(platform_->MainWindow(), 1003), BM_CLICK, 0, 0);
    }
    void Click(int id) { SendMessageW(GetDlgItem(editor_, id), BM_CLICK, 0, 0); }
    void Type(int id, const wchar_t* text) { SetWindowTextW(GetDlgItem(editor_, id), text); }
    std::u16string Text(int id) const {
        wchar_t text[512] = {};
        GetWindowTextW(GetDlgItem(editor_, id), text, 512);
        return U16(text);
    }
    // A choice in a list or combo box, as the user's click makes it.
    void Choose(int id, int index, bool combo = false) {
        HWND control = GetDlgItem(editor_, id);
        SendMessageW(control, combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(editor_, WM_COMMAND, MAKEWPARAM(id, combo ? CBN_SELCHANGE : LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(control));
    }
    int Count(int id, bool combo = false) const {
        return static_cast<int>(SendMessageW(GetDlgItem(editor_, id), combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0));
    }
    std::u16string Item(int id, int index) const {
        wchar_t text[512] = {};
        SendMessageW(GetDlgItem(editor_, id), LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return U16(text);
    }
    std::u16string Path(const char* name) const { return (directory_ / name).u16string(); }
    std::vector<zirvel::Wheel> ReadBack(const char* name) const {
        std::vector<zirvel::Wheel> wheels;
        std::u16string problems;
        zirvel::ReadWheelsFile(Path(name), wheels, problems);
        return wheels;
    }

    std::filesystem::path directory_;
    std::unique_ptr<zirvel::win32::Win32Platform> platform_;
    zirvel_test::ScriptedEditorDialogs dialogs_;
    HWND editor_ = nullptr;
};

TEST_F(FunctionEditorWindowTest, TheWheelsProgramsAreTypedBesideItAndSavedWithTheFile) {
    EXPECT_EQ(Text(2032), u"");
    Choose(2006, 1, true);
    // Typed, then left for the wheel list: leaving the field takes it.
    SetFocus(GetDlgItem(editor_, 2032));
    Type(2032, L" notepad.exe ,Firefox");
    SetFocus(GetDlgItem(editor_, 2006));
    Choose(2006, 0, true);
    EXPECT_EQ(Text(2032), u"");
    Choose(2006, 1, true);
    EXPECT_EQ(Text(2032), u"notepad.exe, Firefox");

    dialogs_.files = {Path("mine.json")};
    Click(2004);
    const std::vector<zirvel::Wheel> wheels = ReadBack("mine.json");
    ASSERT_EQ(wheels.size(), 2u);
    EXPECT_TRUE(wheels[0].apps.empty());
    EXPECT_EQ(wheels[1].apps, (std::vector<std::u16string>{u"notepad.exe", u"Firefox"}));
    EXPECT_TRUE(dialogs_.boxes.empty());
}

TEST_F(FunctionEditorWindowTest, TheWindowHasItsTitleSizeOwnerAndControls) {
    wchar_t title[128] = {};
    GetWindowTextW(editor_, title, 128);
    EXPECT_EQ(U16(title), u"Zirvel — edytor funkcji");
    RECT client{};
    GetClientRect(editor_, &client);
    EXPECT_EQ(client.right, 900);
    EXPECT_EQ(client.bottom, 492);
    EXPECT_EQ(GetWindow(editor_, GW_OWNER), platform_->MainWindow());
    const LONG style = GetWindowLongW(editor_, GWL_STYLE);
    EXPECT_EQ(style & (WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX), WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
    EXPECT_EQ(style & (WS_THICKFRAME | WS_MAXIMIZEBOX), 0);
    RECT rect{};
    GetWindowRect(GetDlgItem(editor_, 2021), &rect);
    MapWindowPoints(nullptr, editor_, reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.left, 255);
    EXPECT_EQ(rect.top, 174);
    EXPECT_EQ(rect.right - rect.left, 460);
    EXPECT_EQ(Text(2030), u"Zapisz funkcję na liście");
    EXPECT_EQ(Text(2017), u"30");
    EXPECT_EQ(Text(2005), Path("default.json"));
    ASSERT_EQ(Count(2023, true), 4);
    wchar_t item[64] = {};
    SendMessageW(GetDlgItem(editor_, 2023), CB_GETLBTEXT, 3, reinterpret_cast<LPARAM>(item));
    EXPECT_EQ(U16(item), u"otwórz (adres / program)");
    EXPECT_EQ(Count(2006, true), 2);
    ASSERT_EQ(Count(2011), 2);
    EXPECT_EQ(Item(2011, 1), u"Przeładuj");
    EXPECT_EQ(SendMessageW(GetDlgItem(editor_, 2031), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON, DLGC_DEFPUSHBUTTON);
}

TEST_F(FunctionEditorWindowTest, ASecondClickBringsTheOpenEditorBack) {
    ShowWindow(editor_, SW_MINIMIZE);
    ClickEditorButton();
    EXPECT_EQ(FindWindowW(L"RadialOverlayEditor", nullptr), editor_);
    EXPECT_FALSE(IsIconic(editor_));
}

TEST_F(FunctionEditorWindowTest, ChoosingAFunctionFillsItsFieldsAndSteps) {
    Choose(2011, 0);
    EXPECT_EQ(Text(2015), u"Skok");
    EXPECT_EQ(Text(2016), u"#2ECC71");
    Choose(2011, 1);
    EXPECT_EQ(Text(2016), u"");
    ASSERT_EQ(Count(2021), 2);
    EXPECT_EQ(Item(2021, 1), zirvel::StepDisplayText(zirvel::Engine().Wheels()[0].functions[1].steps[1]));
    Choose(2021, 1);
    EXPECT_EQ(Text(2022), u"ctrl");
    EXPECT_EQ(SendMessageW(GetDlgItem(editor_, 2023), CB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(Text(2024), u"200");
    Choose(2006, 1, true);
    ASSERT_EQ(Count(2011), 1);
    EXPECT_EQ(Item(2011, 0), u"Enter");
}

TEST_F(FunctionEditorWindowTest, EveryRefusalShowsItsBoxAndChangesNothing) {
    Click(2013);  // "Edytuj" without a selection
    Click(2030);  // store without a function
    Choose(2011, 0);
    Type(2016, L"zielony");
    Click(2030);
    Type(2022, L"klawisz");
    Click(2025);
    ASSERT_EQ(dialogs_.boxes.size(), 4u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Najpierw wybierz funkcję z listy.");
    EXPECT_EQ(dialogs_.boxes[0].icon, EditorIcon::Information);
    EXPECT_EQ(dialogs_.boxes[1].text, u"Najpierw wybierz lub dodaj funkcję.");
    EXPECT_EQ(dialogs_.boxes[2].text,
              u"Niepoprawny kolor — użyj formatu #RRGGBB (np. #E74C3C) albo zostaw pole puste.");
    EXPECT_EQ(dialogs_.boxes[2].icon, EditorIcon::Warning);
    EXPECT_EQ(dialogs_.boxes[3].text.rfind(u"Nieznany klawisz/przycisk: \"klawisz\"", 0), 0u);
    EXPECT_EQ(Count(2021), 1);
    // A document whose wheels are all empty has nothing to activate.
    dialogs_.answers = {};
    Click(2001);  // "Nowy": nothing unsaved, no question
    Click(2031);
    EXPECT_EQ(dialogs_.boxes.back().text, u"Żadne koło nie ma funkcji — nie ma czego aktywować.");
    EXPECT_EQ(zirvel::Engine().Wheels().size(), 2u);
    Click(2010);
    EXPECT_EQ(dialogs_.boxes.back().text, u"Musi zostać przynajmniej jedno koło.");
    EXPECT_EQ(Text(2005), u"(nowy plik — niezapisany)");
}

TEST_F(FunctionEditorWindowTest, EditSaveAsAndReadBack) {
    Choose(2011, 0);
    Type(2015, L"Skok wysoki");
    Type(2016, L"#E74C3C");
    Type(2020, L"skacz");
    Type(2022, L"w");
    Choose(2023, 1, true);
    Type(2024, L"300");
    Click(2025);  // "Dodaj krok"
    Choose(2021, 1);
    Click(2028);  // up: the hold of W comes first
    Click(2030);
    EXPECT_EQ(Item(2011, 0), u"Skok wysoki");
    Click(2009);  // "+ koło": "Koło 3", empty
    Click(2012);  // "Dodaj": "Nowa funkcja"
    Click(2030);

    dialogs_.files = {std::nullopt};  // cancelled: nothing written
    Click(2004);
    EXPECT_FALSE(std::filesystem::exists(directory_ / "mine.json"));
    dialogs_.files = {Path("mine.json")};
    Click(2004);
    EXPECT_EQ(Text(2005), Path("mine.json"));

    const std::vector<zirvel::Wheel> wheels = ReadBack("mine.json");
    ASSERT_EQ(wheels.size(), 3u);
    const zirvel::WheelFunction& jump = wheels[0].functions[0];
    EXPECT_EQ(jump.name, u"Skok wysoki");
    EXPECT_EQ(jump.voice, u"skacz");
    EXPECT_EQ(jump.color, 0x3C4CE7u);
    ASSERT_EQ(jump.steps.size(), 2u);
    EXPECT_EQ(jump.steps[0].key.name, u"w");
    EXPECT_EQ(jump.steps[0].kind, zirvel::StepKind::Hold);
    EXPECT_EQ(jump.steps[0].value, 300);
    EXPECT_EQ(wheels[2].name, u"Koło 3");
    EXPECT_EQ(wheels[2].functions[0].name, u"Nowa funkcja");
    // Saved elsewhere: the engine keeps its wheels.
    EXPECT_EQ(zirvel::Engine().Wheels().size(), 2u);
}

TEST_F(FunctionEditorWindowTest, SavingTheProgramsDefaultJsonChangesTheRunningEngine) {
    const std::u16string helpBefore = zirvel::HelpPageText(zirvel::Engine());
    Click(2009);
    Click(2012);
    Click(2003);  // "Zapisz": the engine's own file
    EXPECT_TRUE(dialogs_.boxes.empty());
    EXPECT_EQ(zirvel::Engine().Wheels().size(), 3u);
    EXPECT_NE(zirvel::HelpPageText(zirvel::Engine()), helpBefore);
    EXPECT_EQ(ReadBack("default.json").size(), 3u);
}

TEST_F(FunctionEditorWindowTest, ClosingWithUnsavedChangesAsksAndOnlyYesCloses) {
    Click(2009);
    SendMessageW(editor_, WM_CLOSE, 0, 0);
    ASSERT_EQ(dialogs_.boxes.size(), 1u);
    EXPECT_EQ(dialogs_.boxes[0].text, u"Są niezapisane zmiany. Zamknąć edytor mimo to?");
    EXPECT_EQ(dialogs_.boxes[0].icon, EditorIcon::Question);
    EXPECT_TRUE(IsWindow(editor_));
    dialogs_.answers = {true};
    SendMessageW(editor_, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(editor_));
}

// What the screen shows in `rect`, as the user sees it (Wine's PrintWindow
// leaves the controls out), opaque.
zirvel::Picture ScreenPicture(const RECT& rect) {
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    zirvel::Picture picture;
    if (BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY)) {
        picture.width = width;
        picture.height = height;
        const auto* pixels = static_cast<const std::uint32_t*>(bits);
        picture.pixels.assign(pixels, pixels + static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (std::uint32_t& pixel : picture.pixels) pixel |= 0xFF000000u;
    }
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

TEST_F(FunctionEditorWindowTest, ScreenshotOfTheEditorWithALoadedFile) {
    Choose(2011, 1);
    Choose(2021, 1);
    SetForegroundWindow(editor_);
    RedrawWindow(editor_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT rect{};
    GetWindowRect(editor_, &rect);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    // The face colour fills much of it, and the controls' borders and texts the rest.
    const std::uint32_t face = GetSysColor(COLOR_BTNFACE);
    const std::uint32_t faceArgb = 0xFF000000u | ((face & 0xFF) << 16) | (face & 0xFF00) | ((face >> 16) & 0xFF);
    const auto faceCount = [&](const zirvel::Picture& shot) {
        return std::count(shot.pixels.begin(), shot.pixels.end(), faceArgb);
    };
    const auto darkCount = [](const zirvel::Picture& shot) {
        return std::count_if(shot.pixels.begin(), shot.pixels.end(),
                             [](std::uint32_t pixel) { return (pixel & 0xFF) < 0x60; });
    };
    // The X server shows what was painted a little later: grab until the
    // controls are there (at most 5 s), letting the window paint between.
    zirvel::Picture picture;
    for (int round = 0; round < 100; ++round) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        picture = ScreenPicture(rect);
        if (faceCount(picture) > width * height / 4 && darkCount(picture) > width * height / 100) break;
        Sleep(50);
    }
    const std::filesystem::path folder = ZIRVEL_SCREENSHOTS;
    std::filesystem::create_directories(folder);
    ASSERT_TRUE(zirvel::WritePicturePng(picture, (folder / "function-editor.png").u16string()));
    EXPECT_GT(faceCount(picture), width * height / 4);
    EXPECT_GT(darkCount(picture), width * height / 100) << "no text or borders: the controls were not drawn";
}

}  // namespace
