// Where the program's files are. The program's own folder holds everything
// while the program can write there: a build folder, a portable copy, a
// per-user installation on Windows. An installed program cannot write
// beside itself: its files (config.json, default.json, voice.json, the
// speech model) then live in the user's configuration folder, and what it
// ships (icons/, themes/, its icon) in the installation's data folder.
#pragma once

#include <QString>
#include <QStringList>

namespace zirvel::frontend {

struct ProgramFolders {
    QString files;    // written: config.json, default.json, voice.json, the speech model
    QString shipped;  // read only: icons/, themes/, zirvel.ico
};

// The choice itself: `executableFolder` when it holds what the program
// ships (themes/) and can be written, else `userFolder` for the files and
// `installedDataFolder` for what ships.
ProgramFolders ChooseProgramFolders(const QString& executableFolder, const QString& userFolder,
                                    const QString& installedDataFolder);

// The choice for this process: on Linux the user's folder is
// $XDG_CONFIG_HOME/zirvel (~/.config/zirvel without it) and the data
// folder share/zirvel beside the executable's bin/; on Windows the program
// is installed per user, so its own folder is always the one.
ProgramFolders ProgramFoldersForThisProcess();

// Makes `folders` the process's folders, creating the files' folder when
// it is missing; false when it cannot be made.
bool UseProgramFolders(const ProgramFolders& folders);

// The folders in use: by default both are the executable's folder.
ProgramFolders CurrentProgramFolders();

// The file a field's icon path names, as the engine finds it: the path
// itself when absolute, else relative to `folder` (the wheels file's) when
// that file exists, else in the shipped folder.
QString IconFile(const QString& folder, const QString& icon);

// Where the icon picker looks for icons: `folder`'s icons/ and then the
// shipped icons/ (once when they are the same).
QStringList IconFolders(const QString& folder);

}  // namespace zirvel::frontend
