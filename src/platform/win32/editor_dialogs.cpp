#include "platform/win32/editor_dialogs.h"

#include <commdlg.h>

namespace zirvel::win32 {
namespace {

constexpr wchar_t kTitle[] = L"Edytor funkcji";
// Filters are pairs of NUL-terminated strings, ended by an empty one.
constexpr wchar_t kWheelsFilter[] = L"Pliki JSON (*.json)\0*.json\0";
constexpr wchar_t kIconFilter[] = L"Obrazy (*.png;*.bmp;*.jpg)\0*.png;*.bmp;*.jpg\0";

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

enum class FileDialog { Open, Save };

std::optional<std::u16string> ChooseFile(HWND owner, FileDialog kind, const wchar_t* filter,
                                         const std::u16string& directory, const wchar_t* proposed) {
    wchar_t path[MAX_PATH] = {};
    if (proposed) lstrcpynW(path, proposed, MAX_PATH);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrInitialDir = Wide(directory);
    BOOL chosen = FALSE;
    if (kind == FileDialog::Save) {
        dialog.lpstrDefExt = L"json";
        dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
        chosen = GetSaveFileNameW(&dialog);
    } else {
        dialog.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
        chosen = GetOpenFileNameW(&dialog);
    }
    if (!chosen) return std::nullopt;
    return std::u16string(reinterpret_cast<const char16_t*>(path));
}

}  // namespace

bool Win32EditorDialogs::Ask(const std::u16string& text) {
    return MessageBoxW(owner_, Wide(text), kTitle, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void Win32EditorDialogs::Tell(const std::u16string& text, EditorIcon icon) {
    const UINT iconFlag = icon == EditorIcon::Warning    ? MB_ICONWARNING
                          : icon == EditorIcon::Question ? MB_ICONQUESTION
                                                         : MB_ICONINFORMATION;
    MessageBoxW(owner_, Wide(text), kTitle, MB_OK | iconFlag);
}

std::optional<std::u16string> Win32EditorDialogs::ChooseWheelsFileToOpen(const std::u16string& directory) {
    return ChooseFile(owner_, FileDialog::Open, kWheelsFilter, directory, nullptr);
}

std::optional<std::u16string> Win32EditorDialogs::ChooseWheelsFileToSave(const std::u16string& directory) {
    return ChooseFile(owner_, FileDialog::Save, kWheelsFilter, directory, L"default.json");
}

std::optional<std::u16string> Win32EditorDialogs::ChooseIconFile(const std::u16string& directory) {
    return ChooseFile(owner_, FileDialog::Open, kIconFilter, directory, nullptr);
}

}  // namespace zirvel::win32
