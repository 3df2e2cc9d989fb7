// The engine's function editor window (class RadialOverlayEditor): its
// controls, and the commands they send, carried out by the portable editor.
// GUI thread only.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "engine/function_editor.h"

namespace zirvel::win32 {

class FunctionEditorWindow {
public:
    FunctionEditorWindow(HINSTANCE instance, HWND owner);
    ~FunctionEditorWindow();
    FunctionEditorWindow(const FunctionEditorWindow&) = delete;
    FunctionEditorWindow& operator=(const FunctionEditorWindow&) = delete;

    // The window procedure of the RadialOverlayEditor class.
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // Opens the editor on the engine's wheels file, or brings the open one to the front.
    void Open();
    HWND Window() const { return window_; }
    // The boxes and file dialogs; tests answer them with their own. Null
    // brings back the real ones.
    void SetDialogs(EditorDialogs* dialogs);

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();
    // Fonts, control positions and (unless Windows sized it already) the
    // window's size at the DPI the window is drawn at.
    void ScaleTo(std::uint32_t dpi, bool sizeWindow);
    void OnCommand(WORD id, WORD code);
    void OnStepCommand(WORD id);

    void FillAll();
    void FillWheels();
    void FillFunctions();
    void FillFunction();
    void FillSteps(std::int32_t selection);
    void ShowSelectedStep();

    HWND Control(int id) const { return GetDlgItem(window_, id); }
    std::u16string Text(int id) const;
    void SetText(int id, const std::u16string& text) const;
    std::int32_t Selection(int id) const;

    HINSTANCE instance_;
    HWND owner_;
    HFONT font_ = nullptr;  // at the window's DPI
    HWND window_ = nullptr;
    std::vector<HWND> controls_;  // in the order of their specifications
    FunctionEditor editor_;
    std::unique_ptr<EditorDialogs> ownDialogs_;
    EditorDialogs* dialogs_;
};

}  // namespace zirvel::win32
