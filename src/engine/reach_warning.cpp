#include "engine/reach_warning.h"

#include "config/text.h"
#include "engine/engine_state.h"
#include "engine/host_notice.h"

namespace zirvel {
namespace {

// A show and the function it runs are one occasion for the user.
constexpr std::uint64_t kQuietAfterWarning = 5000;

constexpr char16_t kWhatToDo[] = u" Aby sterować takimi programami, uruchom Zirvel jako administrator.";

}  // namespace

std::u16string OutOfReachText(ReachOccasion occasion) {
    switch (occasion) {
        case ReachOccasion::WheelShown:
            return Concat({u"Program na pierwszym planie działa jako administrator: Zirvel nie może w nim "
                           u"naciskać klawiszy ani klikać.",
                           kWhatToDo});
        case ReachOccasion::FunctionRun:
            return Concat({u"Funkcja nie dotarła do programu, bo działa on jako administrator.", kWhatToDo});
        case ReachOccasion::ElementScan:
            return Concat(
                {u"Zirvel nie może odczytać elementów programu, który działa jako administrator.", kWhatToDo});
    }
    return {};
}

bool WarnWhenOutOfReach(WindowHandle window, ReachOccasion occasion) {
    EngineState& engine = Engine();
    if (window == 0 || !engine.platform->OutOfReach(window)) return false;
    const std::uint64_t now = engine.platform->TickCount();
    if (window != engine.lastOutOfReachWindow || now >= engine.lastOutOfReachWarning + kQuietAfterWarning) {
        ShowHostWarning(kReachWarningTitle, OutOfReachText(occasion));
    }
    engine.lastOutOfReachWindow = window;
    engine.lastOutOfReachWarning = now;
    return true;
}

void WarnInputRefused() { ShowHostWarning(kReachWarningTitle, kInputRefusedText); }

}  // namespace zirvel
