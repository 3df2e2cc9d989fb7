// Handing a wheels file to the running program through a per-user local
// socket: the sender writes the path (UTF-8) and a newline, the program
// activates the file and answers "1\n", or "0\n" when it had no wheel with
// functions.
#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>

namespace zirvel::app {

class WheelFileHandOverServer : public QObject {
public:
    // `activate` runs on the GUI thread and says whether the file was taken.
    WheelFileHandOverServer(const QString& socketPath, std::function<bool(const QString&)> activate);
    bool Listening() const { return server_.isListening(); }

private:
    void Serve();

    QLocalServer server_;
    std::function<bool(const QString&)> activate_;
};

enum class HandOverResult { Activated, Refused, NotRunning };

// Sends `path` to the program listening at `socketPath` and waits (bounded)
// for its answer.
HandOverResult HandWheelFileOver(const QString& socketPath, const QString& path);

}  // namespace zirvel::app
