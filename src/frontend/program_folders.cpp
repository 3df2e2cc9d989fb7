#include "frontend/program_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <optional>

namespace zirvel::frontend {
namespace {

std::optional<ProgramFolders> chosen;

// Whether a file can be made in `folder` (not just whether its permission
// bits say so: root may write anywhere, a read-only mount nowhere).
bool CanWriteIn(const QString& folder) {
    QFile probe(QDir(folder).filePath(QStringLiteral(".zirvel-write-test")));
    if (!probe.open(QIODevice::WriteOnly)) return false;
    probe.close();
    probe.remove();
    return true;
}

}  // namespace

ProgramFolders ChooseProgramFolders(const QString& executableFolder, const QString& userFolder,
                                    const QString& installedDataFolder) {
    // An installed program's bin/ holds no themes/ (and root could write there).
    const bool shipsBesideItself = QFileInfo(QDir(executableFolder).filePath(QStringLiteral("themes"))).isDir();
    if (shipsBesideItself && CanWriteIn(executableFolder)) return {executableFolder, executableFolder};
    return {userFolder, installedDataFolder};
}

ProgramFolders ProgramFoldersForThisProcess() {
    const QString executableFolder = QCoreApplication::applicationDirPath();
#ifdef _WIN32
    return {executableFolder, executableFolder};
#else
    QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (configHome.isEmpty() || QDir::isRelativePath(configHome)) configHome = QDir::homePath() + QStringLiteral("/.config");
    return ChooseProgramFolders(executableFolder, configHome + QStringLiteral("/zirvel"),
                                QDir::cleanPath(executableFolder + QStringLiteral("/../share/zirvel")));
#endif
}

bool UseProgramFolders(const ProgramFolders& folders) {
    if (!QDir().mkpath(folders.files)) return false;
    chosen = folders;
    return true;
}

QString IconFile(const QString& folder, const QString& icon) {
    QString path = icon;
#ifndef _WIN32
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));  // wheel files written on Windows
#endif
    if (QDir::isAbsolutePath(path)) return path;
    const QString own = QDir(folder).filePath(path);
    const QString shipped = QDir(CurrentProgramFolders().shipped).filePath(path);
    return QFile::exists(own) || !QFile::exists(shipped) ? own : shipped;
}

QStringList IconFolders(const QString& folder) {
    const QString own = QDir::cleanPath(folder + QStringLiteral("/icons"));
    const QString shipped = QDir::cleanPath(CurrentProgramFolders().shipped + QStringLiteral("/icons"));
    return own == shipped ? QStringList{own} : QStringList{own, shipped};
}

ProgramFolders CurrentProgramFolders() {
    if (chosen) return *chosen;
    const QString executableFolder = QCoreApplication::applicationDirPath();
    return {executableFolder, executableFolder};
}

}  // namespace zirvel::frontend
