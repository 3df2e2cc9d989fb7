#include "app/runtime_folder.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace zirvel::app {

QString RuntimeFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir(runtime).exists()) return runtime;
    const QString own = QDir::tempPath() + QStringLiteral("/zirvel-") + QString::number(getuid());
    QDir().mkpath(own);
    QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return own;
}

}  // namespace zirvel::app
