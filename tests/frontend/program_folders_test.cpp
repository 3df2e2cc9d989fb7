// Where the program keeps its files: beside itself while it can write
// there, else in the user's folder, with what it ships read from the
// installation; and where a field's icon is found.
#include <QDir>
#include <QTemporaryDir>

#include "frontend/program_folders.h"
#include "support/frontend_test_main.h"

using namespace zirvel::frontend;

namespace {

void Touch(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

}  // namespace

class ProgramFoldersTest : public QObject {
    Q_OBJECT

    QTemporaryDir scratch_;
    ProgramFolders before_;

private slots:
    void init() { before_ = CurrentProgramFolders(); }
    void cleanup() { UseProgramFolders(before_); }

    void aWritableFolderWithTheShippedFilesHoldsEverything() {
        QVERIFY(QDir(scratch_.path()).mkpath("themes"));
        const ProgramFolders folders =
            ChooseProgramFolders(scratch_.path(), scratch_.filePath("user"), scratch_.filePath("share"));
        QCOMPARE(folders.files, scratch_.path());
        QCOMPARE(folders.shipped, scratch_.path());
        QVERIFY(QDir(scratch_.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());  // the probe is gone
    }

    // An installed bin/ may be writable (by root) but holds nothing shipped.
    void aFolderWithoutTheShippedFilesIsAnInstallation() {
        const QString bin = scratch_.filePath("usr/bin");
        QVERIFY(QDir().mkpath(bin));
        const ProgramFolders folders = ChooseProgramFolders(bin, scratch_.filePath("user/zirvel"), scratch_.filePath("usr/share/zirvel"));
        QCOMPARE(folders.files, scratch_.filePath("user/zirvel"));
        QCOMPARE(folders.shipped, scratch_.filePath("usr/share/zirvel"));
    }

    void anUnwritableFolderSendsTheFilesToTheUsersFolder() {
        // A folder that cannot be written, even by root.
        const QString missing = scratch_.filePath(QStringLiteral("no/such/folder"));
        const ProgramFolders folders = ChooseProgramFolders(missing, scratch_.filePath("user/zirvel"), "/usr/share/zirvel");
        QCOMPARE(folders.files, scratch_.filePath("user/zirvel"));
        QCOMPARE(folders.shipped, QStringLiteral("/usr/share/zirvel"));
    }

    void usingFoldersCreatesTheFilesFolder() {
        const ProgramFolders folders{scratch_.filePath("made/zirvel"), scratch_.filePath("share")};
        QVERIFY(UseProgramFolders(folders));
        QVERIFY(QFileInfo(folders.files).isDir());
        QCOMPARE(CurrentProgramFolders().files, folders.files);
        QCOMPARE(CurrentProgramFolders().shipped, folders.shipped);
    }

    void anIconIsFoundBesideTheFileFirstThenInTheShippedIcons() {
        const QString user = scratch_.filePath("icons-user");
        const QString shipped = scratch_.filePath("icons-shipped");
        QVERIFY(UseProgramFolders({user, shipped}));
        Touch(user + "/icons/own.png");
        Touch(shipped + "/icons/own.png");
        Touch(shipped + "/icons/arrow.png");
        QCOMPARE(IconFile(user, "icons/own.png"), user + "/icons/own.png");
        QCOMPARE(IconFile(user, "icons/arrow.png"), shipped + "/icons/arrow.png");
        QCOMPARE(IconFile(user, "icons/none.png"), user + "/icons/none.png");
        QCOMPARE(IconFile(user, "/opt/x.png"), QStringLiteral("/opt/x.png"));
#ifndef _WIN32
        QCOMPARE(IconFile(user, "icons\\arrow.png"), shipped + "/icons/arrow.png");
#endif
        QCOMPARE(IconFolders(user), (QStringList{user + "/icons", shipped + "/icons"}));
        QCOMPARE(IconFolders(shipped), QStringList{shipped + "/icons"});
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(ProgramFoldersTest)

#include "program_folders_test.moc"
