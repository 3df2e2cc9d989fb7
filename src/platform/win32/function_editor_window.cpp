#include "platform/win32/function_editor_window.h"

#include "config/text.h"
#include "config/wheels_file.h"
#include "core/dpi_scale.h"
#include "platform/win32/dpi_awareness.h"
#include "platform/win32/editor_dialogs.h"
#include "platform/win32/engine_window_protocol.h"

namespace zirvel::win32 {
namespace {

constexpr DWORD kEditorStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr int kClientWidth = 900;
constexpr int kClientHeight = 492;
constexpr int kFontHeight = 15;

// Command ids of the controls.
enum : WORD {
    kNew = 2001, kOpen = 2002, kSave = 2003, kSaveAs = 2004, kFileLabel = 2005,
    kWheelCombo = 2006, kWheelName = 2007, kRenameWheel = 2008, kAddWheel = 2009, kRemoveWheel = 2010,
    kFunctionList = 2011, kAddFunction = 2012, kEditFunction = 2013, kRemoveFunction = 2014,
    kFunctionName = 2015, kFunctionColor = 2016, kFunctionDelay = 2017, kFunctionIcon = 2018, kChooseIcon = 2019,
    kFunctionVoice = 2020, kStepList = 2021, kStepKey = 2022, kStepAction = 2023, kStepValue = 2024,
    kAddStep = 2025, kReplaceStep = 2026, kRemoveStep = 2027, kStepUp = 2028, kStepDown = 2029,
    kStoreFunction = 2030, kActivate = 2031, kWheelPrograms = 2032,
};

constexpr DWORD kButton = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kLabel = WS_CHILD | WS_VISIBLE | SS_LEFT | SS_CENTERIMAGE;
constexpr DWORD kEdit = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
constexpr DWORD kList = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
constexpr DWORD kDropDown = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;

// Positions and sizes at 96 DPI.
struct ControlSpec {
    WORD id;  // 0: a label nobody addresses
    const wchar_t* className;
    const wchar_t* text;
    int x, y, width, height;
    DWORD style;
};

constexpr ControlSpec kControls[] = {
    {kNew, L"BUTTON", L"Nowy", 10, 10, 80, 28, kButton},
    {kOpen, L"BUTTON", L"Otwórz…", 95, 10, 90, 28, kButton},
    {kSave, L"BUTTON", L"Zapisz", 190, 10, 80, 28, kButton},
    {kSaveAs, L"BUTTON", L"Zapisz jako…", 275, 10, 110, 28, kButton},
    {kActivate, L"BUTTON", L"Aktywuj", 392, 10, 90, 28, kButton | BS_DEFPUSHBUTTON},
    {kFileLabel, L"STATIC", L"", 490, 10, 395, 28, kLabel | SS_PATHELLIPSIS | SS_NOPREFIX},
    {0, L"STATIC", L"Koło:", 10, 48, 40, 26, kLabel},
    {kWheelCombo, L"COMBOBOX", L"", 52, 48, 190, 200, kDropDown},
    {kWheelName, L"EDIT", L"", 250, 48, 170, 26, kEdit},
    {kRenameWheel, L"BUTTON", L"Zmień nazwę", 425, 48, 110, 26, kButton},
    {kAddWheel, L"BUTTON", L"+ koło", 540, 48, 70, 26, kButton},
    {kRemoveWheel, L"BUTTON", L"− koło", 615, 48, 70, 26, kButton},
    {0, L"STATIC", L"Programy:", 692, 48, 66, 26, kLabel},
    {kWheelPrograms, L"EDIT", L"", 760, 48, 125, 26, kEdit},
    {0, L"STATIC", L"Funkcje koła:", 10, 86, 200, 20, kLabel},
    {kFunctionList, L"LISTBOX", L"", 10, 108, 225, 336, kList},
    {kAddFunction, L"BUTTON", L"Dodaj", 10, 450, 70, 28, kButton},
    {kEditFunction, L"BUTTON", L"Edytuj", 85, 450, 70, 28, kButton},
    {kRemoveFunction, L"BUTTON", L"Usuń", 160, 450, 75, 28, kButton},
    {0, L"STATIC", L"Nazwa:", 255, 86, 60, 26, kLabel},
    {kFunctionName, L"EDIT", L"", 320, 86, 165, 26, kEdit},
    {0, L"STATIC", L"Kolor:", 495, 86, 48, 26, kLabel},
    {kFunctionColor, L"EDIT", L"", 545, 86, 85, 26, kEdit},
    {0, L"STATIC", L"Głos:", 640, 86, 45, 26, kLabel},
    {kFunctionVoice, L"EDIT", L"", 688, 86, 197, 26, kEdit},
    {0, L"STATIC", L"Odstęp między czynnościami [ms]:", 255, 118, 230, 26, kLabel},
    {kFunctionDelay, L"EDIT", L"30", 490, 118, 60, 26, kEdit | ES_NUMBER},
    {0, L"STATIC", L"Ikona:", 570, 118, 48, 26, kLabel},
    {kFunctionIcon, L"EDIT", L"", 620, 118, 200, 26, kEdit},
    {kChooseIcon, L"BUTTON", L"…", 825, 118, 30, 26, kButton},
    {0, L"STATIC", L"Czynności:", 255, 152, 100, 20, kLabel},
    {kStepList, L"LISTBOX", L"", 255, 174, 460, 150, kList},
    {kStepUp, L"BUTTON", L"▲", 722, 174, 40, 32, kButton},
    {kStepDown, L"BUTTON", L"▼", 722, 210, 40, 32, kButton},
    {kRemoveStep, L"BUTTON", L"Usuń krok", 722, 246, 100, 32, kButton},
    {0, L"STATIC", L"Klawisz:", 255, 334, 60, 26, kLabel},
    {kStepKey, L"EDIT", L"", 318, 334, 90, 26, kEdit},
    {0, L"STATIC", L"Akcja:", 418, 334, 48, 26, kLabel},
    {kStepAction, L"COMBOBOX", L"", 468, 334, 170, 130, kDropDown},
    {0, L"STATIC", L"Wartość:", 648, 334, 62, 26, kLabel},
    {kStepValue, L"EDIT", L"", 712, 334, 60, 26, kEdit | ES_NUMBER},
    {kAddStep, L"BUTTON", L"Dodaj krok", 255, 368, 100, 28, kButton},
    {kReplaceStep, L"BUTTON", L"Zamień krok", 360, 368, 110, 28, kButton},
    {0, L"STATIC",
     L"Wartość: klik = liczba kliknięć (domyślnie 1);  przytrzymaj = czas w ms, 0 = trzymaj bez puszczania "
     L"(puszczenie osobną czynnością).",
     255, 402, 630, 40, WS_CHILD | WS_VISIBLE | SS_LEFT},
    {kStoreFunction, L"BUTTON", L"Zapisz funkcję na liście", 255, 450, 180, 28, kButton},
};

// In the order of StepKind's values.
constexpr const wchar_t* kActionItems[] = {L"klik (naciśnij i puść)", L"przytrzymaj", L"puść",
                                           L"otwórz (adres / program)"};

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

}  // namespace

FunctionEditorWindow::FunctionEditorWindow(HINSTANCE instance, HWND owner)
    : instance_(instance),
      owner_(owner),
      ownDialogs_(std::make_unique<Win32EditorDialogs>(window_)),
      dialogs_(ownDialogs_.get()) {}

FunctionEditorWindow::~FunctionEditorWindow() {
    if (window_) DestroyWindow(window_);
    if (font_) DeleteObject(font_);
}

void FunctionEditorWindow::SetDialogs(EditorDialogs* dialogs) { dialogs_ = dialogs ? dialogs : ownDialogs_.get(); }

LRESULT CALLBACK FunctionEditorWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<FunctionEditorWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<FunctionEditorWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    return self->OnMessage(message, wParam, lParam);
}

void FunctionEditorWindow::Open() {
    if (window_) {
        ShowWindow(window_, SW_RESTORE);
        SetForegroundWindow(window_);
        return;
    }
    LoadEngineWheelsIntoEditor(editor_);
    RECT outer{0, 0, kClientWidth, kClientHeight};
    AdjustWindowRect(&outer, kEditorStyle, FALSE);
    CreateWindowExW(0, kEditorWindowClass, L"Zirvel — edytor funkcji", kEditorStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                    outer.right - outer.left, outer.bottom - outer.top, owner_, nullptr, instance_, this);
    if (!window_) return;
    CreateControls();
    ScaleTo(DpiOfWindow(window_), true);
    FillAll();
    ShowWindow(window_, SW_SHOW);
    SetForegroundWindow(window_);
}

LRESULT FunctionEditorWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_CTLCOLORSTATIC:
            // Labels take the window's face colour.
            SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
        case WM_DPICHANGED:
            ScaleTo(AcceptDpiChange(window_, wParam, lParam), false);
            return 0;
        case WM_CLOSE:
            if (ConfirmCloseEditor(editor_, *dialogs_)) DestroyWindow(window_);
            return 0;
        case WM_DESTROY:
            SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
            window_ = nullptr;
            controls_.clear();
            return 0;
        default:
            return DefWindowProcW(window_, message, wParam, lParam);
    }
}

void FunctionEditorWindow::CreateControls() {
    controls_.clear();
    for (const ControlSpec& spec : kControls) {
        controls_.push_back(CreateWindowExW(0, spec.className, spec.text, spec.style, spec.x, spec.y, spec.width,
                                            spec.height, window_,
                                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(spec.id)), instance_, nullptr));
    }
    for (const wchar_t* item : kActionItems) {
        SendMessageW(Control(kStepAction), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    }
    SendMessageW(Control(kStepAction), CB_SETCURSEL, 0, 0);
}

void FunctionEditorWindow::ScaleTo(std::uint32_t dpi, bool sizeWindow) {
    if (sizeWindow) {
        RECT outer{0, 0, ScaleByDpi(kClientWidth, dpi), ScaleByDpi(kClientHeight, dpi)};
        AdjustWindowRect(&outer, kEditorStyle, FALSE);  // the frame, which Windows scales itself
        SetWindowPos(window_, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    HFONT previous = font_;
    font_ = CreateUiFont(kFontHeight, dpi);
    for (std::size_t i = 0; i < controls_.size() && i < std::size(kControls); ++i) {
        const ControlSpec& spec = kControls[i];
        const int left = ScaleByDpi(spec.x, dpi);
        const int top = ScaleByDpi(spec.y, dpi);
        SetWindowPos(controls_[i], nullptr, left, top, ScaleByDpi(spec.x + spec.width, dpi) - left,
                     ScaleByDpi(spec.y + spec.height, dpi) - top, SWP_NOZORDER | SWP_NOACTIVATE);
        SendMessageW(controls_[i], WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    }
    if (previous) DeleteObject(previous);
}

std::u16string FunctionEditorWindow::Text(int id) const {
    HWND control = Control(id);
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)), u'\0');
    GetWindowTextW(control, reinterpret_cast<wchar_t*>(text.data()), static_cast<int>(text.size()) + 1);
    return text;
}

void FunctionEditorWindow::SetText(int id, const std::u16string& text) const {
    SetWindowTextW(Control(id), Wide(text));
}

std::int32_t FunctionEditorWindow::Selection(int id) const {
    const LRESULT selection = SendMessageW(Control(id), id == kWheelCombo || id == kStepAction ? CB_GETCURSEL
                                                                                                : LB_GETCURSEL,
                                           0, 0);
    return static_cast<std::int32_t>(selection);
}

void FunctionEditorWindow::OnCommand(WORD id, WORD code) {
    FunctionEditor& editor = editor_;
    EditorDialogs& dialogs = *dialogs_;
    switch (id) {
        case kNew:
            if (NewEditorDocument(editor, dialogs)) FillAll();
            return;
        case kOpen:
            if (OpenEditorDocument(editor, dialogs)) FillAll();
            return;
        case kSave:
        case kSaveAs:
            if (SaveEditorDocument(editor, dialogs, id == kSaveAs)) {
                SetText(kFileLabel, EditorFileLabel(editor));
                InvalidateRect(owner_, nullptr, TRUE);  // the help page counts the engine's wheels
            }
            return;
        case kActivate:
            ActivateEditorDocument(editor, dialogs);
            InvalidateRect(owner_, nullptr, TRUE);
            return;
        case kWheelCombo:
            if (code == CBN_SELCHANGE && SelectEditorWheel(editor, Selection(kWheelCombo))) {
                FillFunctions();
                FillFunction();
            }
            return;
        case kWheelPrograms:
            // Taken when the user leaves the field: before any button's or
            // the wheel list's command, which take the focus first.
            if (code == EN_KILLFOCUS) SetEditorWheelPrograms(editor, dialogs, Text(kWheelPrograms));
            return;
        case kRenameWheel:
            RenameEditorWheel(editor, Text(kWheelName));
            FillWheels();
            return;
        case kAddWheel:
            AddEditorWheel(editor);
            FillWheels();
            FillFunction();
            return;
        case kRemoveWheel:
            if (RemoveEditorWheel(editor, dialogs)) FillAll();
            return;
        case kFunctionList:
            if (code == LBN_SELCHANGE && EditEditorFunction(editor, dialogs, Selection(kFunctionList))) FillFunction();
            return;
        case kEditFunction:
            if (EditEditorFunction(editor, dialogs, Selection(kFunctionList))) FillFunction();
            return;
        case kAddFunction:
            AddEditorFunction(editor);
            FillFunctions();
            FillFunction();
            return;
        case kRemoveFunction:
            if (RemoveEditorFunction(editor, Selection(kFunctionList))) {
                FillFunctions();
                FillFunction();
            }
            return;
        case kStoreFunction:
            if (StoreEditorFunction(editor, dialogs,
                                    FunctionFields{Text(kFunctionName), Text(kFunctionColor), Text(kFunctionDelay),
                                                   Text(kFunctionIcon), Text(kFunctionVoice)})) {
                FillFunctions();
            }
            return;
        case kChooseIcon:
            if (const auto icon = ChooseEditorIcon(dialogs)) SetText(kFunctionIcon, *icon);
            return;
        case kStepList:
            if (code == LBN_SELCHANGE) ShowSelectedStep();
            return;
        default:
            OnStepCommand(id);
            return;
    }
}

void FunctionEditorWindow::OnStepCommand(WORD id) {
    const std::int32_t selected = Selection(kStepList);
    switch (id) {
        case kAddStep:
        case kReplaceStep: {
            const std::optional<Step> step =
                BuildEditorStep(Text(kStepKey), Selection(kStepAction), Text(kStepValue), *dialogs_);
            if (!step) return;
            FillSteps(id == kAddStep ? AddEditorStep(editor_, *step) : ReplaceEditorStep(editor_, selected, *step));
            return;
        }
        case kRemoveStep:
            FillSteps(RemoveEditorStep(editor_, selected));
            return;
        case kStepUp:
        case kStepDown:
            FillSteps(MoveEditorStep(editor_, selected, id == kStepUp ? -1 : +1));
            return;
        default:
            return;
    }
}

void FunctionEditorWindow::FillAll() {
    SetText(kFileLabel, EditorFileLabel(editor_));
    FillWheels();
    FillFunction();
}

void FunctionEditorWindow::FillWheels() {
    HWND combo = Control(kWheelCombo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    for (const Wheel& wheel : editor_.wheels) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(wheel.name)));
    }
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(editor_.wheelIndex), 0);
    FillFunctions();
}

void FunctionEditorWindow::FillFunctions() {
    SetText(kWheelPrograms, EditorWheelPrograms(editor_));
    HWND list = Control(kFunctionList);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const WheelFunction& function : editor_.CurrentWheel().functions) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(FunctionListText(function))));
    }
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(editor_.functionIndex), 0);
}

void FunctionEditorWindow::FillFunction() {
    const bool editing = editor_.functionIndex >= 0;
    const FunctionFields fields = editing ? FieldsOf(editor_.function) : FieldsOf(WheelFunction{});
    SetText(kFunctionName, fields.name);
    SetText(kFunctionColor, fields.color);
    SetText(kFunctionDelay, fields.delay);
    SetText(kFunctionIcon, fields.icon);
    SetText(kFunctionVoice, fields.voice);
    if (!editing) editor_.function = WheelFunction{};
    FillSteps(-1);
}

void FunctionEditorWindow::FillSteps(std::int32_t selection) {
    HWND list = Control(kStepList);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const Step& step : editor_.function.steps) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(StepDisplayText(step))));
    }
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(selection), 0);
}

void FunctionEditorWindow::ShowSelectedStep() {
    const std::int32_t selected = Selection(kStepList);
    if (selected < 0 || static_cast<std::size_t>(selected) >= editor_.function.steps.size()) return;
    const Step& step = editor_.function.steps[static_cast<std::size_t>(selected)];
    SetText(kStepKey, step.kind == StepKind::Open ? step.target : step.key.name);
    SendMessageW(Control(kStepAction), CB_SETCURSEL, static_cast<WPARAM>(step.kind), 0);
    SetText(kStepValue, DecimalText(step.value));
}

}  // namespace zirvel::win32
