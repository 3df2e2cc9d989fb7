// The running program's per-user local socket (mode 0600). Another process
// writes one request line, UTF-8:
//   "activate PATH\n"  make the wheels of a file current (as a second start
//                      of the program hands a file over on Windows);
//   "say TEXT\n"       treat TEXT as a recognised voice phrase (another
//                      recogniser, a switch device, scripts and tests);
// and reads "1\n" (done) or "0\n" (refused: no wheel with functions, a
// phrase that matches nothing, an unknown request).
#pragma once

#include <QLocalServer>
#include <QString>

#include <chrono>
#include <functional>

namespace zirvel::app {

struct ControlRequest;

struct ControlHandlers {
    std::function<bool(const QString& path)> activate;
    std::function<bool(const QString& text)> say;
};

class ControlServer : public QObject {
public:
    // The handlers run on the GUI thread. A client that has not sent its
    // line within `requestWait` is dropped, so idle connections cannot pile
    // up and use up the program's file descriptors.
    ControlServer(const QString& socketPath, ControlHandlers handlers,
                  std::chrono::milliseconds requestWait = std::chrono::seconds(5));
    bool Listening() const { return server_.isListening(); }

private:
    void Serve();
    bool Handle(const ControlRequest& request);

    QLocalServer server_;
    ControlHandlers handlers_;
    std::chrono::milliseconds requestWait_;
};

enum class ControlResult { Done, Refused, NotRunning };

// Sends one request to the program listening at `socketPath` and waits
// (bounded) for its answer.
ControlResult SendControlRequest(const QString& socketPath, const QString& command, const QString& argument);

// The socket's path: the runtime folder and the instance name.
QString ControlSocketPath();

}  // namespace zirvel::app
