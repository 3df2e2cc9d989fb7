// One engine per session on Windows, shared by Zirvel.exe and
// zirvel-engine.exe: a named mutex that the process holds until it ends.
#pragma once

namespace zirvel::app {

// Takes the session's engine mutex; false when another engine holds it.
// An engine run as administrator holds a mutex that this one may not even
// open (ERROR_ACCESS_DENIED): that engine runs too.
bool TakeEngineInstance();

}  // namespace zirvel::app
