// zirvel-activate PATH: hands a wheels file to the running program, which
// makes its wheels the current ones.
#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

#include "app/runtime_folder.h"
#include "app/wheel_file_handover.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fprintf(stderr, "Użycie: zirvel-activate PLIK_KÓŁ.json\n");
        return 2;
    }
    // The program runs in its own directory: send an absolute path.
    const QString path = QFileInfo(arguments[1]).absoluteFilePath();
    const QString socket = zirvel::app::RuntimeFolder() + QLatin1Char('/') +
                           QString::fromLatin1(zirvel::app::kInstanceName);
    switch (zirvel::app::HandWheelFileOver(socket, path)) {
        case zirvel::app::HandOverResult::Activated:
            std::printf("Aktywowano konfigurację: %s\n", qUtf8Printable(path));
            return 0;
        case zirvel::app::HandOverResult::Refused:
            std::fprintf(stderr, "Żadne koło w pliku nie ma funkcji — nie ma czego aktywować: %s\n",
                         qUtf8Printable(path));
            return 1;
        case zirvel::app::HandOverResult::NotRunning:
            break;
    }
    std::fprintf(stderr, "Zirvel nie działa.\n");
    return 3;
}
