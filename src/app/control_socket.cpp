#include "app/control_socket.h"

#include <QLocalSocket>
#include <QTimer>

#include "app/control_request.h"
#include "app/runtime_folder.h"

namespace zirvel::app {
namespace {

// A longer request is no path or phrase; the connection is dropped.
constexpr qint64 kLongestRequest = 64 * 1024;
constexpr int kAnswerWait = 5000;
void Drop(QLocalSocket* client) {
    client->abort();
    client->deleteLater();
}

}  // namespace

ControlServer::ControlServer(const QString& socketPath, ControlHandlers handlers, std::chrono::milliseconds requestWait)
    : handlers_(std::move(handlers)), requestWait_(requestWait) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    // A socket left by a program that crashed: the caller holds the
    // instance lock, so nobody else is listening there.
    QLocalServer::removeServer(socketPath);
    server_.listen(socketPath);
    connect(&server_, &QLocalServer::newConnection, this, [this] { Serve(); });
}

void ControlServer::Serve() {
    while (QLocalSocket* client = server_.nextPendingConnection()) {
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        QTimer::singleShot(requestWait_, client, [client] { Drop(client); });
        connect(client, &QLocalSocket::readyRead, client, [this, client] {
            if (!client->canReadLine()) {
                if (client->bytesAvailable() > kLongestRequest) Drop(client);
                return;
            }
            const QByteArray line = client->readLine(kLongestRequest + 1);
            if (!line.endsWith('\n')) {  // longer than any request
                Drop(client);
                return;
            }
            const ControlRequest request = ParseControlRequest(line);
            client->write(Handle(request) ? "1\n" : "0\n");
            client->disconnectFromServer();
        });
    }
}

bool ControlServer::Handle(const ControlRequest& request) {
    if (!request.valid) return false;
    if (request.command == QLatin1String("activate") && handlers_.activate) return handlers_.activate(request.argument);
    if (request.command == QLatin1String("say") && handlers_.say) return handlers_.say(request.argument);
    return false;
}

ControlResult SendControlRequest(const QString& socketPath, const QString& command, const QString& argument) {
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(kAnswerWait)) return ControlResult::NotRunning;
    socket.write(command.toUtf8() + ' ' + argument.toUtf8() + '\n');
    socket.flush();
    for (int wait = 0; wait < 2 && !socket.canReadLine(); ++wait) socket.waitForReadyRead(kAnswerWait);
    if (!socket.canReadLine()) return ControlResult::NotRunning;
    return socket.readLine().startsWith('1') ? ControlResult::Done : ControlResult::Refused;
}

QString ControlSocketPath() {
    return RuntimeFolder() + QLatin1Char('/') + QString::fromLatin1(kInstanceName);
}

}  // namespace zirvel::app
