#include "engine/engine_state.h"

#include <mutex>

namespace zirvel {
namespace {

// States are never freed: detached worker threads may still read the
// settings of the state they started under.
std::atomic<EngineState*> current{new EngineState()};
std::mutex retiredLock;
std::vector<std::unique_ptr<EngineState>> retired;

}  // namespace

EngineState& Engine() { return *current.load(); }

void ResetEngineState(Platform& platform, std::u16string programDirectory, std::u16string shippedDirectory) {
    auto fresh = std::make_unique<EngineState>();
    fresh->platform = &platform;
    fresh->configuration.programDirectory = std::move(programDirectory);
    fresh->configuration.shippedDirectory = std::move(shippedDirectory);
    EngineState* previous = current.exchange(fresh.release());
    std::lock_guard lock(retiredLock);
    retired.emplace_back(previous);
}

}  // namespace zirvel
