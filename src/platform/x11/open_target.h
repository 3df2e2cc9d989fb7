// Opening what an Open step names: a web address, a document or a program,
// started detached so that it outlives neither the engine nor a zombie.
#pragma once

#include <string>
#include <vector>

namespace zirvel::x11 {

// The command line that opens `target` (UTF-8): a program file or a program
// on PATH runs itself; anything else (addresses, documents, folders) goes
// to xdg-open.
std::vector<std::string> OpenCommandFor(const std::string& target);

// Starts the command in a new session without waiting for it. False when
// it could not be started.
bool LaunchDetached(const std::vector<std::string>& command);

}  // namespace zirvel::x11
