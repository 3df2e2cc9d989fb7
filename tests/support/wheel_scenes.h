// Engine states that show a given wheel picture, on a null platform.
#pragma once

#include <string>
#include <vector>

#include "config/text.h"
#include "engine/engine_state.h"
#include "platform/null/null_platform.h"

namespace zirvel_test {

// `count` functions named "F1", "F2"..., without icons or own colours.
inline zirvel::Wheel NumberedWheel(std::size_t count, std::u16string name = {}) {
    zirvel::Wheel wheel;
    wheel.name = std::move(name);
    for (std::size_t i = 1; i <= count; ++i) {
        zirvel::WheelFunction function;
        function.name = zirvel::Concat({u"F", zirvel::DecimalText(static_cast<std::int64_t>(i))});
        wheel.functions.push_back(function);
    }
    return wheel;
}

// A fresh engine state whose program directory is `programDirectory`, with
// `wheels` loaded and the first one current; nothing hovered, the cursor
// at the wheel's centre, no dwell.
class WheelScene {
public:
    explicit WheelScene(std::vector<zirvel::Wheel> wheels, std::u16string programDirectory = u"/zirvel") {
        zirvel::ResetEngineState(platform_, std::move(programDirectory));
        engine().configuration.wheels = std::move(wheels);
    }

    zirvel::EngineState& engine() { return zirvel::Engine(); }

private:
    zirvel::NullPlatform platform_;
};

}  // namespace zirvel_test
