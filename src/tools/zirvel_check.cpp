// zirvel-check PATH...: runs the engine's own readers on settings and wheels
// files that users edit by hand, and says what the engine will make of them.
#include <cstdio>
#include <string>
#include <vector>

#include "tools/configuration_check.h"
#include "tools/console.h"

namespace {

constexpr char kUsage[] =
    "Użycie: zirvel-check [--settings | --wheels] PLIK...\n"
    "        zirvel-check --init KATALOG\n"
    "Sprawdza pliki konfiguracji Zirvel (config.json, pliki kół) tak, jak czyta je silnik.\n"
    "  --settings      traktuj następne pliki jako pliki ustawień\n"
    "  --wheels        traktuj następne pliki jako pliki kół\n"
    "  --init KATALOG  utwórz brakujące pliki startowe (config.json, default.json,\n"
    "                  voice.json) tak jak silnik przy pierwszym uruchomieniu i sprawdź je\n"
    "Kod wyjścia: 0 gdy wszystkie pliki są poprawne, 1 gdy są uwagi, 2 przy złym wywołaniu.\n";

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::u16string> arguments = zirvel::CommandLineArguments(argc, argv);
    if (arguments.size() == 2 && arguments[0] == u"--init") {
        arguments = zirvel::WriteFirstRunFiles(arguments[1]);
    }
    bool anyFile = false;
    bool allClean = true;
    bool forced = false;
    zirvel::ConfigurationFileKind forcedKind = zirvel::ConfigurationFileKind::Wheels;
    for (const std::u16string& argument : arguments) {
        if (argument == u"--help" || argument == u"-h") {
            zirvel::WriteUtf8(stdout, kUsage);
            return 0;
        }
        if (argument == u"--settings" || argument == u"--wheels") {
            forced = true;
            forcedKind = argument == u"--settings" ? zirvel::ConfigurationFileKind::Settings
                                                   : zirvel::ConfigurationFileKind::Wheels;
            continue;
        }
        const auto kind = forced ? forcedKind : zirvel::GuessConfigurationFileKind(argument);
        const zirvel::CheckResult result = zirvel::CheckConfigurationFile(argument, kind);
        if (anyFile) zirvel::WriteUtf8(stdout, "\n");
        zirvel::WriteUtf8(stdout, result.report);
        anyFile = true;
        allClean = allClean && result.clean;
    }
    if (!anyFile) {
        zirvel::WriteUtf8(stderr, kUsage);
        return 2;
    }
    return allClean ? 0 : 1;
}
