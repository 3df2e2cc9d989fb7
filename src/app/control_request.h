// One request line as the control socket receives it, taken apart without
// the socket: "COMMAND ARGUMENT", split at the first space.
#pragma once

#include <QByteArray>
#include <QString>

namespace zirvel::app {

struct ControlRequest {
    bool valid = false;  // a command and a non-empty argument
    QString command;     // not checked against the known commands
    QString argument;    // everything after the first space, as sent
};

// `line` is what one readLine gave, with or without its line feed. Invalid
// when the bytes are not UTF-8, when there is no space, the command is
// empty or nothing follows the space.
ControlRequest ParseControlRequest(QByteArray line);

}  // namespace zirvel::app
