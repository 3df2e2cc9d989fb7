#include "engine/wheel_choice.h"

#include <algorithm>

#include "config/classic_text.h"
#include "engine/engine_state.h"

namespace zirvel {
namespace {

bool SameNameIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return ClassicToLower(x) == ClassicToLower(y); });
}

// The file name of a path with either separator.
std::u16string_view FileNameOf(std::u16string_view path) {
    const std::size_t slash = path.find_last_of(u"/\\");
    return slash == std::u16string_view::npos ? path : path.substr(slash + 1);
}

// "notepad.exe" without ".exe"; a name that is all extension (".bashrc")
// keeps it.
std::u16string_view WithoutExtension(std::u16string_view fileName) {
    const std::size_t dot = fileName.rfind(u'.');
    return dot == std::u16string_view::npos || dot == 0 ? fileName : fileName.substr(0, dot);
}

bool HasProgramWheels(const std::vector<Wheel>& wheels) {
    return std::any_of(wheels.begin(), wheels.end(), [](const Wheel& wheel) { return !wheel.apps.empty(); });
}

// At the first show: the first general wheel, or wheel 0 when every wheel
// belongs to programs.
std::int32_t FirstGeneralWheel(const std::vector<Wheel>& wheels) {
    const auto general = std::find_if(wheels.begin(), wheels.end(), [](const Wheel& wheel) { return wheel.apps.empty(); });
    return general == wheels.end() ? 0 : static_cast<std::int32_t>(general - wheels.begin());
}

}  // namespace

bool ProgramNamed(std::u16string_view listed, const ProgramIdentity& program) {
    if (listed.empty()) return false;
    const std::u16string_view file = FileNameOf(program.executable);
    if (!file.empty() && (SameNameIgnoringCase(listed, file) || SameNameIgnoringCase(listed, WithoutExtension(file)))) {
        return true;
    }
    return std::any_of(program.windowClasses.begin(), program.windowClasses.end(),
                       [&](const std::u16string& name) { return SameNameIgnoringCase(listed, name); });
}

std::int32_t WheelNamingProgram(const std::vector<Wheel>& wheels, const ProgramIdentity& program) {
    if (program.executable.empty() && program.windowClasses.empty()) return -1;
    for (std::size_t w = 0; w < wheels.size(); ++w) {
        for (const std::u16string& listed : wheels[w].apps) {
            if (ProgramNamed(listed, program)) return static_cast<std::int32_t>(w);
        }
    }
    return -1;
}

void ChooseWheelForProgram(WindowHandle foreground) {
    EngineState& engine = Engine();
    const std::vector<Wheel>& wheels = engine.Wheels();
    engine.programWheelShown = false;
    if (!HasProgramWheels(wheels)) return;
    const std::int32_t own = WheelNamingProgram(wheels, engine.platform->ProgramOf(foreground));
    std::int32_t& current = engine.configuration.currentWheel;
    if (own >= 0) {
        current = own;
        engine.programWheelShown = true;
        return;
    }
    const auto count = static_cast<std::int32_t>(wheels.size());
    current = engine.generalWheel >= 0 && engine.generalWheel < count ? engine.generalWheel : FirstGeneralWheel(wheels);
}

void RememberGeneralWheel() {
    EngineState& engine = Engine();
    if (!engine.programWheelShown) engine.generalWheel = engine.configuration.currentWheel;
}

}  // namespace zirvel
