// zirvel-activate PATH: makes the wheels of a file the running program's.
#include "app/control_tool.h"

int main(int argc, char* argv[]) {
    return zirvel::app::RunControlTool(
        argc, argv,
        {"activate", "Użycie: zirvel-activate PLIK_KÓŁ.json", true, "Aktywowano konfigurację: ",
         "Żadne koło w pliku nie ma funkcji — nie ma czego aktywować: "});
}
