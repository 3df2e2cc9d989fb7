#include "engine/function_editor.h"

#include <algorithm>
#include <iterator>

#include "config/classic_text.h"
#include "config/file_io.h"
#include "config/hex_color.h"
#include "config/key_code.h"
#include "config/program_list.h"
#include "config/text.h"
#include "config/wheels_file.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/host_notice.h"

namespace zirvel {
namespace {

constexpr char16_t kUnsavedChanges[] = u"Niezapisane zmiany zostaną utracone. Kontynuować?";

std::vector<Wheel> OneEmptyWheel() { return {Wheel{u"Koło 1", {}}}; }

bool SameFileName(const std::u16string& a, const std::u16string& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (ClassicToLower(a[i]) != ClassicToLower(b[i])) return false;
    }
    return true;
}

// Digits only, as the number fields take them; empty or unreadable is `fallback`.
std::int32_t NumberOr(const std::u16string& text, std::int32_t fallback) {
    if (text.empty() || text.size() > 9) return fallback;
    std::int32_t number = 0;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') return fallback;
        number = number * 10 + (c - u'0');
    }
    return number;
}

bool InRange(std::int32_t index, std::size_t size) { return index >= 0 && static_cast<std::size_t>(index) < size; }

// Another wheel shows: nothing of it is being edited yet.
void StopEditingFunction(FunctionEditor& editor) {
    editor.functionIndex = -1;
    editor.function = WheelFunction{};
}

}  // namespace

void LoadEngineWheelsIntoEditor(FunctionEditor& editor) {
    editor = FunctionEditor{};
    editor.path = Engine().configuration.WheelsPath();
    std::u16string ignored;
    ReadWheelsFile(editor.path, editor.wheels, ignored);
    if (editor.wheels.empty()) editor.wheels = OneEmptyWheel();
}

std::u16string EditorFileLabel(const FunctionEditor& editor) {
    return editor.path.empty() ? u"(nowy plik — niezapisany)" : editor.path;
}

std::u16string FunctionListText(const WheelFunction& function) {
    return function.name.empty() ? u"(bez nazwy)" : function.name;
}

FunctionFields FieldsOf(const WheelFunction& function) {
    FunctionFields fields{function.name, u"", DecimalText(function.delay), function.icon, function.voice};
    if (function.hasColor) {
        constexpr char16_t kDigits[] = u"0123456789ABCDEF";
        fields.color = u"#";
        // Red sits in the low byte.
        for (int shift : {0, 8, 16}) {
            const std::uint32_t channel = (function.color >> shift) & 0xFF;
            fields.color += kDigits[channel >> 4];
            fields.color += kDigits[channel & 0xF];
        }
    }
    return fields;
}

bool ConfirmCloseEditor(const FunctionEditor& editor, EditorDialogs& dialogs) {
    return !editor.dirty || dialogs.Ask(u"Są niezapisane zmiany. Zamknąć edytor mimo to?");
}

bool NewEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs) {
    if (editor.dirty && !dialogs.Ask(kUnsavedChanges)) return false;
    editor = FunctionEditor{};
    editor.wheels = OneEmptyWheel();
    return true;
}

bool OpenEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs) {
    if (editor.dirty && !dialogs.Ask(kUnsavedChanges)) return false;
    const std::optional<std::u16string> path =
        dialogs.ChooseWheelsFileToOpen(Engine().configuration.programDirectory);
    if (!path) return false;
    std::vector<Wheel> wheels;
    std::u16string problems;
    ReadWheelsFile(*path, wheels, problems);
    if (!problems.empty()) dialogs.Tell(Concat({u"Problemy przy wczytywaniu:\n\n", problems}), EditorIcon::Warning);
    editor = FunctionEditor{};
    editor.wheels = wheels.empty() ? OneEmptyWheel() : std::move(wheels);
    editor.path = *path;
    return true;
}

bool SaveEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs, bool saveAs) {
    EngineConfiguration& configuration = Engine().configuration;
    std::u16string path = editor.path;
    if (saveAs || path.empty()) {
        const std::optional<std::u16string> chosen = dialogs.ChooseWheelsFileToSave(configuration.programDirectory);
        if (!chosen) return false;
        path = *chosen;
    }
    if (std::any_of(editor.wheels.begin(), editor.wheels.end(),
                    [](const Wheel& wheel) { return wheel.functions.empty(); })) {
        dialogs.Tell(u"Uwaga: któreś koło nie ma żadnych funkcji — przy\nwczytywaniu zostanie pominięte.",
                     EditorIcon::Warning);
    }
    // Through a temporary file: a failed save leaves the old file whole.
    if (!ReplaceFileBytes(path, WriteWheelsFile(editor.wheels))) {
        dialogs.Tell(Concat({u"Nie udało się zapisać pliku:\n", path}), EditorIcon::Warning);
        return false;
    }
    editor.path = path;
    editor.dirty = false;
    if (SameFileName(path, configuration.WheelsPath()) || SameFileName(path, configuration.VoicePath())) {
        ReloadEngineFiles();
    }
    return true;
}

void ActivateEditorDocument(const FunctionEditor& editor, EditorDialogs& dialogs) {
    std::vector<Wheel> usable;
    std::copy_if(editor.wheels.begin(), editor.wheels.end(), std::back_inserter(usable),
                 [](const Wheel& wheel) { return !wheel.functions.empty(); });
    if (usable.empty()) {
        dialogs.Tell(u"Żadne koło nie ma funkcji — nie ma czego aktywować.", EditorIcon::Information);
        return;
    }
    ActivateWheels(std::move(usable));
    ShowHostNotice(u"Zirvel", u"Aktywowano koła z edytora. Naciśnij klawisz wywołania, aby ich użyć.", false);
}

bool SelectEditorWheel(FunctionEditor& editor, std::int32_t index) {
    if (!InRange(index, editor.wheels.size())) return false;
    editor.wheelIndex = index;
    StopEditingFunction(editor);
    return true;
}

bool RenameEditorWheel(FunctionEditor& editor, const std::u16string& name) {
    editor.CurrentWheel().name = name;
    editor.dirty = true;
    return true;
}

std::u16string EditorWheelPrograms(const FunctionEditor& editor) {
    return ProgramListText(editor.wheels[static_cast<std::size_t>(editor.wheelIndex)].apps);
}

bool SetEditorWheelPrograms(FunctionEditor& editor, EditorDialogs& dialogs, const std::u16string& text) {
    std::vector<std::u16string> programs = ParseProgramList(text);
    if (programs.size() > kMaxProgramsPerWheel) {
        dialogs.Tell(u"Koło może należeć najwyżej do 64 programów — zostaje pierwszych 64.", EditorIcon::Warning);
        programs.resize(kMaxProgramsPerWheel);
    }
    if (programs == editor.CurrentWheel().apps) return false;
    editor.CurrentWheel().apps = std::move(programs);
    editor.dirty = true;
    return true;
}

bool AddEditorWheel(FunctionEditor& editor) {
    editor.wheels.push_back(Wheel{Concat({u"Koło ", DecimalText(static_cast<std::int64_t>(editor.wheels.size()) + 1)}), {}});
    editor.wheelIndex = static_cast<std::int32_t>(editor.wheels.size()) - 1;
    StopEditingFunction(editor);
    editor.dirty = true;
    return true;
}

bool RemoveEditorWheel(FunctionEditor& editor, EditorDialogs& dialogs) {
    if (editor.wheels.size() <= 1) {
        dialogs.Tell(u"Musi zostać przynajmniej jedno koło.", EditorIcon::Warning);
        return false;
    }
    if (!dialogs.Ask(Concat({u"Usunąć koło \"", editor.CurrentWheel().name, u"\" wraz z funkcjami?"}))) return false;
    editor.wheels.erase(editor.wheels.begin() + editor.wheelIndex);
    editor.wheelIndex = std::min<std::int32_t>(editor.wheelIndex, static_cast<std::int32_t>(editor.wheels.size()) - 1);
    StopEditingFunction(editor);
    editor.dirty = true;
    return true;
}

bool EditEditorFunction(FunctionEditor& editor, EditorDialogs& dialogs, std::int32_t index) {
    const std::vector<WheelFunction>& functions = editor.CurrentWheel().functions;
    if (!InRange(index, functions.size())) {
        dialogs.Tell(u"Najpierw wybierz funkcję z listy.", EditorIcon::Information);
        return false;
    }
    editor.functionIndex = index;
    editor.function = functions[static_cast<std::size_t>(index)];
    return true;
}

bool AddEditorFunction(FunctionEditor& editor) {
    std::vector<WheelFunction>& functions = editor.CurrentWheel().functions;
    WheelFunction fresh;
    fresh.name = u"Nowa funkcja";
    functions.push_back(fresh);
    editor.functionIndex = static_cast<std::int32_t>(functions.size()) - 1;
    editor.function = fresh;
    editor.dirty = true;
    return true;
}

bool RemoveEditorFunction(FunctionEditor& editor, std::int32_t index) {
    std::vector<WheelFunction>& functions = editor.CurrentWheel().functions;
    if (!InRange(index, functions.size())) return false;
    functions.erase(functions.begin() + index);
    // The function being edited is gone or has moved.
    if (editor.functionIndex == index) {
        StopEditingFunction(editor);
    } else if (editor.functionIndex > index) {
        --editor.functionIndex;
    }
    editor.dirty = true;
    return true;
}

bool StoreEditorFunction(FunctionEditor& editor, EditorDialogs& dialogs, const FunctionFields& fields) {
    std::vector<WheelFunction>& functions = editor.CurrentWheel().functions;
    if (!InRange(editor.functionIndex, functions.size())) {
        dialogs.Tell(u"Najpierw wybierz lub dodaj funkcję.", EditorIcon::Information);
        return false;
    }
    std::uint32_t color = 0;
    if (!fields.color.empty() && !ParseHexColor(fields.color, color)) {
        dialogs.Tell(u"Niepoprawny kolor — użyj formatu #RRGGBB (np. #E74C3C) albo zostaw pole puste.",
                     EditorIcon::Warning);
        return false;
    }
    WheelFunction& function = editor.function;
    function.name = fields.name;
    function.hasColor = !fields.color.empty();
    function.color = color;
    function.delay = NumberOr(fields.delay, 0);
    function.icon = fields.icon;
    function.voice = fields.voice;
    functions[static_cast<std::size_t>(editor.functionIndex)] = function;
    editor.dirty = true;
    return true;
}

std::optional<std::u16string> ChooseEditorIcon(EditorDialogs& dialogs) {
    return dialogs.ChooseIconFile(Engine().configuration.programDirectory);
}

std::optional<Step> BuildEditorStep(const std::u16string& key, std::int32_t kind, const std::u16string& value,
                                    EditorDialogs& dialogs) {
    Step step;
    step.kind = static_cast<StepKind>(std::clamp(kind, 0, 3));
    if (step.kind == StepKind::Open) {
        if (key.empty()) {
            dialogs.Tell(u"Przy akcji „otwórz” pole Klawisz przyjmuje adres strony albo nazwę programu,\n"
                         u"np. https://www.example.com albo notepad.exe",
                         EditorIcon::Warning);
            return std::nullopt;
        }
        step.target = key;
        return step;
    }
    step.key = ParseKeyName(key);
    if (!step.key.valid) {
        dialogs.Tell(Concat({u"Nieznany klawisz/przycisk: \"", key,
                             u"\"\n\nPrzykłady: q, 5, F5, space, enter, esc, up,\n"
                             u"lmb (lewy przycisk myszy), rmb, mmb, mb4, mb5"}),
                     EditorIcon::Warning);
        return std::nullopt;
    }
    // A click counts 1 unless told; a hold of 0 ms waits for a release step.
    step.value = NumberOr(value, step.kind == StepKind::Click ? 1 : 0);
    return step;
}

std::int32_t AddEditorStep(FunctionEditor& editor, const Step& step) {
    editor.function.steps.push_back(step);
    return static_cast<std::int32_t>(editor.function.steps.size()) - 1;
}

std::int32_t ReplaceEditorStep(FunctionEditor& editor, std::int32_t index, const Step& step) {
    if (!InRange(index, editor.function.steps.size())) return -1;
    editor.function.steps[static_cast<std::size_t>(index)] = step;
    return index;
}

std::int32_t RemoveEditorStep(FunctionEditor& editor, std::int32_t index) {
    std::vector<Step>& steps = editor.function.steps;
    if (!InRange(index, steps.size())) return -1;
    steps.erase(steps.begin() + index);
    return -1;
}

std::int32_t MoveEditorStep(FunctionEditor& editor, std::int32_t index, int direction) {
    std::vector<Step>& steps = editor.function.steps;
    const std::int32_t other = index + direction;
    if (!InRange(index, steps.size()) || !InRange(other, steps.size())) return index;
    std::swap(steps[static_cast<std::size_t>(index)], steps[static_cast<std::size_t>(other)]);
    return other;
}

}  // namespace zirvel
