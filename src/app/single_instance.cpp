#include "app/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zirvel::app {

SingleInstance::SingleInstance(const QString& folder, const QString& name) {
    const QByteArray path = (folder + QLatin1Char('/') + name + QStringLiteral(".lock")).toLocal8Bit();
    const int descriptor = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) return;
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        close(descriptor);
        heldElsewhere_ = true;
        return;
    }
    descriptor_ = descriptor;
}

SingleInstance::~SingleInstance() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace zirvel::app
