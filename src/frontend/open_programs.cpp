#include "frontend/open_programs.h"

#include <QRegularExpression>

#ifdef _WIN32
#include "platform/win32/window_program.h"
#else
#include "platform/x11/open_windows.h"
#endif

namespace zirvel::frontend {
namespace {

QString ToQString(const std::u16string& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

void AddOnce(QList<OpenProgram>& programs, const QString& name, const QString& title) {
    if (name.isEmpty()) return;
    for (const OpenProgram& known : programs) {
        if (known.name.compare(name, Qt::CaseInsensitive) == 0) return;
    }
    programs.append({name, title});
}

std::vector<OpenWindow> SystemWindows() {
#ifdef _WIN32
    return win32::ListOpenWindows();
#else
    return x11::ListOpenWindows();
#endif
}

}  // namespace

QList<OpenProgram> OpenProgramsOf(const std::vector<OpenWindow>& windows) {
    QList<OpenProgram> programs;
    for (const OpenWindow& window : windows) {
        const QString title = ToQString(window.title);
        // Either separator: a Windows path read on Linux keeps its backslashes.
        QString executable = ToQString(window.program.executable);
        executable = executable.mid(executable.lastIndexOf(QRegularExpression(QStringLiteral("[/\\\\]"))) + 1);
        AddOnce(programs, executable, title);
        for (const std::u16string& name : window.program.windowClasses) AddOnce(programs, ToQString(name), title);
    }
    return programs;
}

QList<OpenProgram> ListOpenPrograms() { return OpenProgramsOf(SystemWindows()); }

}  // namespace zirvel::frontend
