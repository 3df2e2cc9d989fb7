// The function editor's real boxes (title "Edytor funkcji") and common
// file dialogs, owned by the editor window.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "engine/function_editor.h"

namespace zirvel::win32 {

class Win32EditorDialogs final : public EditorDialogs {
public:
    // `owner` is read when a box opens: the editor window of that moment.
    explicit Win32EditorDialogs(const HWND& owner) : owner_(owner) {}

    bool Ask(const std::u16string& text) override;
    void Tell(const std::u16string& text, EditorIcon icon) override;
    std::optional<std::u16string> ChooseWheelsFileToOpen(const std::u16string& directory) override;
    std::optional<std::u16string> ChooseWheelsFileToSave(const std::u16string& directory) override;
    std::optional<std::u16string> ChooseIconFile(const std::u16string& directory) override;

private:
    const HWND& owner_;
};

}  // namespace zirvel::win32
