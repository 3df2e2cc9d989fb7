// The engine's own function editor: a private copy of a wheels document,
// the function being edited, and every command of the editor window. The
// window (platform code) reads its controls, calls these, and refills its
// controls from the state; questions and notices go through EditorDialogs,
// so the same rules run behind the real Win32 boxes and behind a test's.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "config/wheel.h"

namespace zirvel {

enum class EditorIcon { Information, Warning, Question };

// The boxes and file dialogs of the editor (title "Edytor funkcji").
class EditorDialogs {
public:
    virtual ~EditorDialogs() = default;
    // A Yes/No question with the question icon; true for Yes.
    virtual bool Ask(const std::u16string& text) = 0;
    virtual void Tell(const std::u16string& text, EditorIcon icon) = 0;
    // The common dialogs, starting in `directory`; nothing when cancelled.
    virtual std::optional<std::u16string> ChooseWheelsFileToOpen(const std::u16string& directory) = 0;
    virtual std::optional<std::u16string> ChooseWheelsFileToSave(const std::u16string& directory) = 0;
    virtual std::optional<std::u16string> ChooseIconFile(const std::u16string& directory) = 0;
};

// What the window shows in its function fields, as text.
struct FunctionFields {
    std::u16string name;
    std::u16string color;
    std::u16string delay;
    std::u16string icon;
    std::u16string voice;
};

struct FunctionEditor {
    std::vector<Wheel> wheels;
    std::int32_t wheelIndex = 0;
    std::int32_t functionIndex = -1;
    WheelFunction function;
    std::u16string path;
    bool dirty = false;

    Wheel& CurrentWheel() { return wheels[static_cast<std::size_t>(wheelIndex)]; }
};

// The engine's wheels file, or one empty wheel "Koło 1" when it has none.
void LoadEngineWheelsIntoEditor(FunctionEditor& editor);

// The label beside the file buttons.
std::u16string EditorFileLabel(const FunctionEditor& editor);
// A function's line in the function list.
std::u16string FunctionListText(const WheelFunction& function);
// The fields of a function as the window shows them ("#RRGGBB" or empty).
FunctionFields FieldsOf(const WheelFunction& function);

// Each returns true when the document or the edited function changed, so
// the window refills its controls.
bool ConfirmCloseEditor(const FunctionEditor& editor, EditorDialogs& dialogs);
bool NewEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs);
bool OpenEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs);
// "Zapisz" (saveAs false) and "Zapisz jako…" (true).
bool SaveEditorDocument(FunctionEditor& editor, EditorDialogs& dialogs, bool saveAs);
void ActivateEditorDocument(const FunctionEditor& editor, EditorDialogs& dialogs);

bool SelectEditorWheel(FunctionEditor& editor, std::int32_t index);
bool RenameEditorWheel(FunctionEditor& editor, const std::u16string& name);
bool AddEditorWheel(FunctionEditor& editor);
bool RemoveEditorWheel(FunctionEditor& editor, EditorDialogs& dialogs);
// The current wheel's programs as the "Programy:" field shows them, and
// that field's text taken back (more than 64 names are cut with a warning).
std::u16string EditorWheelPrograms(const FunctionEditor& editor);
bool SetEditorWheelPrograms(FunctionEditor& editor, EditorDialogs& dialogs, const std::u16string& text);

// Loads function `index` of the current wheel; -1 (no selection) asks for one.
bool EditEditorFunction(FunctionEditor& editor, EditorDialogs& dialogs, std::int32_t index);
bool AddEditorFunction(FunctionEditor& editor);
bool RemoveEditorFunction(FunctionEditor& editor, std::int32_t index);
bool StoreEditorFunction(FunctionEditor& editor, EditorDialogs& dialogs, const FunctionFields& fields);
std::optional<std::u16string> ChooseEditorIcon(EditorDialogs& dialogs);

// A step from the key field, the action combo's index and the value field;
// nothing (after a warning) when the key or target is unusable.
std::optional<Step> BuildEditorStep(const std::u16string& key, std::int32_t kind, const std::u16string& value,
                                    EditorDialogs& dialogs);
// The step list's selection afterwards (-1 for none).
std::int32_t AddEditorStep(FunctionEditor& editor, const Step& step);
std::int32_t ReplaceEditorStep(FunctionEditor& editor, std::int32_t index, const Step& step);
std::int32_t RemoveEditorStep(FunctionEditor& editor, std::int32_t index);
std::int32_t MoveEditorStep(FunctionEditor& editor, std::int32_t index, int direction);

}  // namespace zirvel
