#include "app/control_tool.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

#include "app/control_socket.h"

namespace zirvel::app {

int RunControlTool(int argc, char* argv[], const ControlTool& tool) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2 || arguments[1].isEmpty()) {
        std::fprintf(stderr, "%s\n", tool.usage);
        return 2;
    }
    const QString argument = tool.argumentIsPath ? QFileInfo(arguments[1]).absoluteFilePath() : arguments[1];
    switch (SendControlRequest(ControlSocketPath(), QString::fromLatin1(tool.command), argument)) {
        case ControlResult::Done:
            std::printf("%s%s\n", tool.doneMessage, qUtf8Printable(argument));
            return 0;
        case ControlResult::Refused:
            std::fprintf(stderr, "%s%s\n", tool.refusedMessage, qUtf8Printable(argument));
            return 1;
        case ControlResult::NotRunning:
            break;
    }
    std::fprintf(stderr, "Zirvel nie działa.\n");
    return 3;
}

}  // namespace zirvel::app
