#include "engine/help_page.h"

#include "config/text.h"
#include "engine/engine_state.h"
#include "engine/status_texts.h"

namespace zirvel {
namespace {

// Said only while switch scanning is on.
std::u16string ScanningText(const EngineSettings& settings) {
    if (!settings.scanEnabled) return {};
    const std::u16string moves =
        settings.ScanSteppedByKey()
            ? Concat({u"'", settings.scanStepKey, u"' przesuwa podświetlenie."})
            : Concat({u"podświetlenie przesuwa się co ", DecimalText(settings.scanInterval), u" ms."});
    return Concat({u"Skanowanie przełącznikiem: '", settings.toggleKey,
                   u"' pokazuje koło i wybiera podświetlone\npole, strzałkę, \"siatka\", \"elementy\" albo "
                   u"\"zamknij\"; ",
                   moves, u"\n\n"});
}

}  // namespace

std::u16string HelpPageText(const EngineState& engine) {
    const auto& wheels = engine.Wheels();
    const std::size_t firstWheelFields = wheels.empty() ? 0 : wheels.front().functions.size();
    return Concat({
        u"Zirvel — koło wyboru funkcji\n\n•  Naciśnij  '",
        engine.Settings().toggleKey,
        u"'  aby pokazać / schować nakładkę.\n"
        u"•  Gdy koło jest widoczne, prawdziwa mysz jest zablokowana,\n"
        u"    a polami steruje wirtualny kursor (działa też w grach FPS).\n"
        u"•  Najedź wirtualnym kursorem na pole — stanie się\n"
        u"    nieprzezroczyste; kliknięcie chowa koło i wykonuje funkcję.\n\n"
        u"Konfiguracja (w katalogu programu, wczytywana przy starcie):\n"
        u"    config.json — kolor pól, klawisz wywołania, czasy\n"
        u"    default.json — koła funkcji (nazwy i klawisze pól);\n"
        u"    przy kilku kołach strzałki po bokach je przełączają\n"
        u"Kół funkcji: ",
        DecimalText(static_cast<std::int64_t>(wheels.size())),
        u", pól w pierwszym: ",
        DecimalText(static_cast<std::int64_t>(firstWheelFields)),
        u"\nTobii Eye Tracker: ",
        GazeStatusText(engine.gazeStatus.load()),
        u"\nKomendy głosowe: ",
        VoiceStatusText(engine.voiceStatus.load()),
        u"\nSiatka: \"pokaż siatkę\", cyfry słownie zawężają obszar,\n"
        u"\"kliknij\" / \"dwuklik\" / \"prawy klik\", \"schowaj siatkę\".\n"
        u"Elementy: \"pokaż elementy\", liczba = klik w element,\n"
        u"\"kliknij dwa razy na N\", \"kliknij prawy na N\", \"ukryj elementy\".\n\n",
        ScanningText(engine.Settings()),
        u"Minimalizacja / zamknięcie chowa program do zasobnika.\n"
        u"Zakończenie: prawy przycisk na ikonie w zasobniku → Zakończ.",
    });
}

}  // namespace zirvel
