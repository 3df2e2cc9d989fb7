#include "engine/host_notice.h"

#include "engine/engine_state.h"

namespace zirvel {
namespace {

constexpr std::size_t kTrayTitleLimit = 63;
constexpr std::size_t kTrayTextLimit = 255;

}  // namespace

void ShowHostNotice(std::u16string title, std::u16string text, bool warning) {
    EngineState& engine = Engine();
    if (!engine.showMessages) return;
    if (title.size() > kTrayTitleLimit) title.resize(kTrayTitleLimit);
    if (text.size() > kTrayTextLimit) text.resize(kTrayTextLimit);
    engine.platform->ShowTrayNotice(title, text, warning);
}

}  // namespace zirvel
