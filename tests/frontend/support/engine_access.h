// What the engine loaded, for checking that a page's save reached it.
#pragma once

#include "engine/engine_state.h"

namespace zirvel_test {

inline zirvel::EngineState& LiveEngine() { return zirvel::Engine(); }

}  // namespace zirvel_test
