// The programs of the open windows, as names a wheel's "Programy" can list.
#pragma once

#include <QList>
#include <QString>

#include <vector>

#include "engine/platform.h"

namespace zirvel::frontend {

struct OpenProgram {
    QString name;   // the executable's file name, or a window class name
    QString title;  // of a window that program shows
};

// Every name a wheel could list for the windows, each once (compared without
// regard to case), in window order: the executable's file name first, then
// the window's class names.
QList<OpenProgram> OpenProgramsOf(const std::vector<OpenWindow>& windows);

// The open windows of this desktop, asked of the system. Talks to the
// window system: call it off the GUI thread.
QList<OpenProgram> ListOpenPrograms();

}  // namespace zirvel::frontend
