// The small command-line tools that talk to the running program.
#pragma once

namespace zirvel::app {

struct ControlTool {
    const char* command;         // the request's first word
    const char* usage;           // printed for a wrong command line
    bool argumentIsPath;         // made absolute: the program runs elsewhere
    const char* doneMessage;     // printed with the argument on success
    const char* refusedMessage;  // printed with the argument when refused
};

// Exit codes: 0 done, 1 refused, 2 wrong command line, 3 not running, 4
// running as administrator while the tool is not (Windows).
int RunControlTool(int argc, char* argv[], const ControlTool& tool);

}  // namespace zirvel::app
