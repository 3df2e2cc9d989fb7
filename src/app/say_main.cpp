// zirvel-say "PHRASE": the running program acts as if it had heard PHRASE.
#include "app/control_tool.h"

int main(int argc, char* argv[]) {
    return zirvel::app::RunControlTool(argc, argv,
                                       {"say", "Użycie: zirvel-say \"FRAZA\"", false, "Wykonano: ",
                                        "Nie ma takiej komendy ani frazy funkcji: "});
}
