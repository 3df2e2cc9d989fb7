// main() of a front-end test: a QApplication on the offscreen platform (or
// the one the environment names), front-end settings in a private scratch
// folder, and the engine started on the null platform with the test
// binary's directory as its program directory, as the program does.
#pragma once

#include <QApplication>
#include <QIcon>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "engine/engine_state.h"
#include "engine/overlay_exports.h"
#include "frontend/frontend_identity.h"
#include "platform/null/null_platform.h"

namespace zirvel_test {

// Front-end settings in a private scratch folder: QSettings must never reach
// the developer's own "Zirvel"/"UI" settings. Call before QApplication.
class PrivateSettingsHome {
public:
    PrivateSettingsHome() {
        qputenv("XDG_CONFIG_HOME", home_.path().toUtf8());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home_.path());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home_.path());
    }

private:
    QTemporaryDir home_;
};

// The application as the program sets it up.
inline void PrepareApplication() {
    QCoreApplication::setOrganizationName(zirvel::frontend::kOrganisationName);
    QCoreApplication::setApplicationName(zirvel::frontend::kApplicationName);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QCoreApplication::applicationDirPath() + QStringLiteral("/zirvel.ico")));
}

template <typename TestObject>
int RunFrontendTest(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    PrivateSettingsHome settingsHome;
    QApplication application(argc, argv);
    PrepareApplication();

    zirvel::NullPlatform platform(zirvel::NullPlatform::Clock::Real);
    zirvel::ResetEngineState(platform, QCoreApplication::applicationDirPath().toStdU16String());
    OverlayEngineStart();
    TestObject test;
    const int result = QTest::qExec(&test, argc, argv);
    OverlayEngineStop();
    return result;
}

}  // namespace zirvel_test

#define ZIRVEL_FRONTEND_TEST_MAIN(TestObject) \
    int main(int argc, char** argv) { return zirvel_test::RunFrontendTest<TestObject>(argc, argv); }
