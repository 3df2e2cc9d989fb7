// Linux: the distribution's package manager updates Zirvel, so the updater
// does nothing. The program keeps its "check for updates" button on every
// platform; here pressing it has no effect.
#include "update/updater.h"

namespace zirvel::update {

void StartUpdater(const UpdaterDetails& /*details*/) {}

void CheckForUpdatesWithUi() {}

void StopUpdater() {}

}  // namespace zirvel::update
