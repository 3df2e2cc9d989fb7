// One running program per user: an exclusive lock on a file that the
// system releases when the process ends, however it ends.
#pragma once

#include <QString>

namespace zirvel::app {

class SingleInstance {
public:
    // Tries to take the lock `name`.lock in `folder`.
    SingleInstance(const QString& folder, const QString& name);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // False when another process holds it. A lock file that cannot be
    // created at all does not stop the program.
    bool Acquired() const { return !heldElsewhere_; }

private:
    int descriptor_ = -1;
    bool heldElsewhere_ = false;
};

}  // namespace zirvel::app
