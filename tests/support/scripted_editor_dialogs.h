// The function editor's boxes and file dialogs answered by a test: every
// box's text and icon is recorded, questions take the next scripted
// answer (No when none is left), file dialogs the next scripted path
// (cancelled when none is left).
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/function_editor.h"

namespace zirvel_test {

struct EditorBox {
    std::u16string text;
    zirvel::EditorIcon icon;
};

class ScriptedEditorDialogs final : public zirvel::EditorDialogs {
public:
    std::deque<bool> answers;
    std::deque<std::optional<std::u16string>> files;
    std::vector<EditorBox> boxes;
    std::vector<std::u16string> fileDialogDirectories;

    bool Ask(const std::u16string& text) override {
        boxes.push_back({text, zirvel::EditorIcon::Question});
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void Tell(const std::u16string& text, zirvel::EditorIcon icon) override { boxes.push_back({text, icon}); }
    std::optional<std::u16string> ChooseWheelsFileToOpen(const std::u16string& directory) override {
        return NextFile(directory);
    }
    std::optional<std::u16string> ChooseWheelsFileToSave(const std::u16string& directory) override {
        return NextFile(directory);
    }
    std::optional<std::u16string> ChooseIconFile(const std::u16string& directory) override {
        return NextFile(directory);
    }

private:
    std::optional<std::u16string> NextFile(const std::u16string& directory) {
        fileDialogDirectories.push_back(directory);
        if (files.empty()) return std::nullopt;
        std::optional<std::u16string> file = std::move(files.front());
        files.pop_front();
        return file;
    }
};

}  // namespace zirvel_test
