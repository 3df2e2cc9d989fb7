#include "app/wheel_file_handover.h"

#include <QLocalSocket>

namespace zirvel::app {
namespace {

// A path longer than this is not a path; the connection is dropped.
constexpr qint64 kLongestRequest = 64 * 1024;
constexpr int kAnswerWait = 5000;

}  // namespace

WheelFileHandOverServer::WheelFileHandOverServer(const QString& socketPath,
                                                 std::function<bool(const QString&)> activate)
    : activate_(std::move(activate)) {
    // Only this user may connect (mode 0600).
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    // A socket left by a program that crashed: the caller holds the
    // instance lock, so nobody else is listening there.
    QLocalServer::removeServer(socketPath);
    server_.listen(socketPath);
    connect(&server_, &QLocalServer::newConnection, this, [this] { Serve(); });
}

void WheelFileHandOverServer::Serve() {
    while (QLocalSocket* client = server_.nextPendingConnection()) {
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        connect(client, &QLocalSocket::readyRead, client, [this, client] {
            if (!client->canReadLine()) {
                if (client->bytesAvailable() > kLongestRequest) client->abort();
                return;
            }
            QByteArray line = client->readLine(kLongestRequest);
            line.chop(1);
            const bool activated = !line.isEmpty() && activate_(QString::fromUtf8(line));
            client->write(activated ? "1\n" : "0\n");
            client->disconnectFromServer();
        });
    }
}

HandOverResult HandWheelFileOver(const QString& socketPath, const QString& path) {
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(kAnswerWait)) return HandOverResult::NotRunning;
    socket.write(path.toUtf8() + '\n');
    socket.flush();
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(kAnswerWait)) return HandOverResult::NotRunning;
    }
    return socket.readLine().startsWith('1') ? HandOverResult::Activated : HandOverResult::Refused;
}

}  // namespace zirvel::app
