#include "engine/host_notice.h"

#include "engine/engine_state.h"

namespace zirvel {
namespace {

constexpr std::size_t kTrayTitleLimit = 63;
constexpr std::size_t kTrayTextLimit = 255;

void ShowTrayNoticeCut(std::u16string title, std::u16string text, bool warning) {
    if (title.size() > kTrayTitleLimit) title.resize(kTrayTitleLimit);
    if (text.size() > kTrayTextLimit) text.resize(kTrayTextLimit);
    Engine().platform->ShowTrayNotice(title, text, warning);
}

}  // namespace

void ShowHostNotice(std::u16string title, std::u16string text, bool warning) {
    if (!Engine().showMessages) return;
    ShowTrayNoticeCut(std::move(title), std::move(text), warning);
}

void ShowHostWarning(std::u16string title, std::u16string text) {
    ShowTrayNoticeCut(std::move(title), std::move(text), true);
}

}  // namespace zirvel
