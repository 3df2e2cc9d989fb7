// The editor's wheels document: reading both file forms and older step
// forms, writing them back, the step summaries, and saving atomically.
#include "frontend/wheel_document.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include "support/frontend_test_main.h"

using zirvel::frontend::FunctionFromJson;
using zirvel::frontend::FunctionToJson;
using zirvel::frontend::Step;
using zirvel::frontend::StepKind;
using zirvel::frontend::StepSummary;
using zirvel::frontend::WheelDocument;
using zirvel::frontend::WheelFunction;

namespace {

bool WriteFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    return file.write(content) == content.size();
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject ReadJsonObject(const QString& path) { return QJsonDocument::fromJson(ReadFile(path)).object(); }

// Fixtures are written with ' for " so they read like JSON without
// escapes (raw string literals would confuse moc).
QByteArray Json(QByteArray text) { return text.replace('\'', '"'); }

WheelFunction Parse(const QByteArray& json) { return FunctionFromJson(QJsonDocument::fromJson(Json(json)).object()); }

Step MakeStep(StepKind kind, const QString& key, int value, const QString& target = QString()) {
    Step step;
    step.kind = kind;
    step.key = key;
    step.value = value;
    step.target = target;
    return step;
}

// A document that every failed load must leave exactly as it was.
WheelDocument Known() {
    WheelDocument document;
    document.path = QStringLiteral("/known/path.json");
    document.multiWheel = true;
    document.wheels.append({QStringLiteral("Stare"), {Parse("{'name': 'F', 'steps': []}")}});
    return document;
}

void CompareDocuments(const WheelDocument& actual, const WheelDocument& expected) {
    QCOMPARE(actual.path, expected.path);
    QCOMPARE(actual.multiWheel, expected.multiWheel);
    QVERIFY(actual.wheels == expected.wheels);
}

}  // namespace

class WheelDocumentTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;

    QString Write(const QString& name, const QByteArray& content) {
        const QString path = dir_.filePath(name);
        if (!WriteFile(path, Json(content))) qFatal("cannot write the test file");
        return path;
    }

    WheelDocument LoadOk(const QByteArray& content) {
        WheelDocument document;
        QString error;
        const bool ok = document.Load(Write(QStringLiteral("in.json"), content), error);
        if (!ok) qWarning("load failed: %s", qPrintable(error));
        return document;
    }

private slots:
    void initTestCase() { QVERIFY(dir_.isValid()); }

    void wheelWithoutActionsKeepsItsName() {
        const WheelDocument document = LoadOk("{'wheels': [{'name': 'A'}]}");
        QVERIFY(document.multiWheel);
        QCOMPARE(document.wheels.size(), 1);
        QCOMPARE(document.wheels[0].name, QStringLiteral("A"));
        QVERIFY(document.wheels[0].functions.isEmpty());
    }

    void emptyActionsStayInTheSingleWheelForm() {
        WheelDocument document = LoadOk("{'actions': []}");
        QVERIFY(!document.multiWheel);
        QCOMPARE(document.wheels.size(), 1);
        QCOMPARE(document.wheels[0].name, QString());
        QVERIFY(document.wheels[0].functions.isEmpty());
        const QString out = dir_.filePath(QStringLiteral("single.json"));
        QString error;
        QVERIFY(document.Save(out, error));
        const QJsonObject root = ReadJsonObject(out);
        QVERIFY(root.value(QLatin1String("actions")).isArray());
        QVERIFY(root.value(QLatin1String("actions")).toArray().isEmpty());
        QVERIFY(!root.contains(QLatin1String("wheels")));
    }

    void noWheelsGivesOneNamedWheel() {
        const WheelDocument document = LoadOk("{'wheels': []}");
        QCOMPARE(document.wheels.size(), 1);
        QCOMPARE(document.wheels[0].name, QStringLiteral("Koło 1"));
        QVERIFY(document.multiWheel);
    }

    void loadRemembersThePath() {
        WheelDocument document;
        QString error;
        const QString path = Write(QStringLiteral("path.json"), "{'actions': []}");
        QVERIFY(document.Load(path, error));
        QCOMPARE(document.path, path);
    }

    void nonObjectWheelIsAnEmptyWheel() {
        const WheelDocument document = LoadOk("{'wheels': [5, {'name': 'B', 'actions': 'x'}]}");
        QCOMPARE(document.wheels.size(), 2);
        QCOMPARE(document.wheels[0].name, QString());
        QVERIFY(document.wheels[0].functions.isEmpty());
        QCOMPARE(document.wheels[1].name, QStringLiteral("B"));
        QVERIFY(document.wheels[1].functions.isEmpty());
    }

    void moreThanTwentyFourFunctionsAreKept() {
        QJsonArray actions;
        for (int i = 0; i < 30; ++i) actions.append(QJsonObject{{QStringLiteral("name"), QString::number(i)}});
        const WheelDocument document =
            LoadOk(QJsonDocument(QJsonObject{{QStringLiteral("actions"), actions}}).toJson());
        QCOMPARE(document.wheels[0].functions.size(), 30);
        QCOMPARE(document.wheels[0].functions[29].name, QStringLiteral("29"));
    }

    void longHoldIsNotClampedAndIsSavedAsIs() {
        WheelDocument document =
            LoadOk("{'actions': [{'name': 'H', 'steps': [{'key': 'a', 'action': 'hold', 'value': 70000}]}]}");
        QCOMPARE(document.wheels[0].functions[0].steps[0].kind, StepKind::Hold);
        QCOMPARE(document.wheels[0].functions[0].steps[0].value, 70000);
        const QString out = dir_.filePath(QStringLiteral("hold.json"));
        QString error;
        QVERIFY(document.Save(out, error));
        const QJsonObject step = ReadJsonObject(out)[QLatin1String("actions")][0][QLatin1String("steps")][0].toObject();
        QCOMPARE(step.value(QLatin1String("value")).toInt(), 70000);
        QCOMPARE(step.value(QLatin1String("action")).toString(), QStringLiteral("hold"));
    }

    void colourIsWrittenInLowerCase() {
        const WheelFunction function = Parse("{'name': 'C', 'color': '#3498DB'}");
        QCOMPARE(function.color, QColor(52, 152, 219));
        QCOMPARE(FunctionToJson(function).value(QLatin1String("color")).toString(), QStringLiteral("#3498db"));
    }

    void unreadableColourIsTheDefault() {
        QVERIFY(!Parse("{'color': 'not a colour'}").color.isValid());
        QVERIFY(!Parse("{'color': ''}").color.isValid());
        QVERIFY(!FunctionToJson(Parse("{'color': 'nope'}")).contains(QLatin1String("color")));
    }

    // A failed load says why and leaves the document exactly as it was.
    void failedLoadChangesNothing_data() {
        QTest::addColumn<QByteArray>("content");  // null: no file at all
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("exactly");  // else `expected` starts a longer text
        // Qt names no error for a root that is not an object; the text is Qt's own.
        QTest::newRow("array root") << QByteArray("[1, 2]") << QStringLiteral("Błąd JSON: no error occurred") << true;
        QTest::newRow("broken") << QByteArray("{'actions': [") << QStringLiteral("Błąd JSON: ") << false;
        QTest::newRow("missing file") << QByteArray() << QStringLiteral("Nie można otworzyć pliku ") << false;
        QTest::newRow("neither key") << QByteArray("{'wheels': {}, 'other': []}")
                                     << QStringLiteral("Plik nie zawiera \"wheels\" ani \"actions\"") << true;
    }
    void failedLoadChangesNothing() {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        QFETCH(bool, exactly);
        const QString name = QStringLiteral("failing.json");
        QFile::remove(dir_.filePath(name));
        const QString path = content.isNull() ? dir_.filePath(name) : Write(name, content);
        WheelDocument document = Known();
        QString error;
        QVERIFY(!document.Load(path, error));
        if (exactly)
            QCOMPARE(error, expected);
        else
            QVERIFY2(error.startsWith(expected) && error.size() > expected.size(), qPrintable(error));
        if (content.isNull()) QCOMPARE(error, expected + path);
        CompareDocuments(document, Known());
    }

    void legacyKeysListGivesOneClickEach() {
        const WheelFunction function = Parse("{'keys': ['ctrl', 5, 'c']}");
        QCOMPARE(function.steps.size(), 3);
        QCOMPARE(function.steps[0], MakeStep(StepKind::Click, QStringLiteral("ctrl"), 1));
        QCOMPARE(function.steps[1], MakeStep(StepKind::Click, QStringLiteral("5"), 1));
        QCOMPARE(function.steps[2], MakeStep(StepKind::Click, QStringLiteral("c"), 1));
        QVERIFY(Parse("{'keys': []}").steps.isEmpty());
    }

    void legacySingleKeysString() {
        const WheelFunction function = Parse("{'keys': 'enter', 'key': 'ignored'}");
        QCOMPARE(function.steps.size(), 1);
        QCOMPARE(function.steps[0], MakeStep(StepKind::Click, QStringLiteral("enter"), 1));
    }

    void legacyKeyNumber() {
        const WheelFunction function = Parse("{'key': 5}");
        QCOMPARE(function.steps.size(), 1);
        QCOMPARE(function.steps[0], MakeStep(StepKind::Click, QStringLiteral("5"), 1));
        QVERIFY(Parse("{'name': 'no keys'}").steps.isEmpty());
    }

    void legacyFormIsIgnoredWhenStepsExist() {
        const WheelFunction function = Parse("{'keys': ['a'], 'steps': []}");
        QVERIFY(function.steps.isEmpty());
    }

    void numericKeyInAStep() {
        const WheelFunction function = Parse("{'steps': [{'key': 7}]}");
        QCOMPARE(function.steps[0], MakeStep(StepKind::Click, QStringLiteral("7"), 1));
    }

    void clickRepetitionsAreClamped_data() {
        QTest::addColumn<QByteArray>("step");
        QTest::addColumn<int>("value");
        QTest::newRow("zero") << QByteArray("{'key': 'a', 'action': 'click', 'value': 0}") << 1;
        QTest::newRow("too many") << QByteArray("{'key': 'a', 'action': 'click', 'value': 250}") << 100;
        QTest::newRow("missing") << QByteArray("{'key': 'a'}") << 1;
        QTest::newRow("in range") << QByteArray("{'key': 'a', 'action': 'klik', 'value': 3}") << 3;
    }
    void clickRepetitionsAreClamped() {
        QFETCH(QByteArray, step);
        QFETCH(int, value);
        const WheelFunction function = Parse("{'steps': [" + step + "]}");
        QCOMPARE(function.steps.size(), 1);
        QCOMPARE(function.steps[0].kind, StepKind::Click);
        QCOMPARE(function.steps[0].value, value);
    }

    void actionWords_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("kind");
        QTest::newRow("hold") << QStringLiteral("hold") << int(StepKind::Hold);
        QTest::newRow("przytrzymaj") << QStringLiteral("przytrzymaj") << int(StepKind::Hold);
        QTest::newRow("release") << QStringLiteral("release") << int(StepKind::Release);
        QTest::newRow("pusc") << QStringLiteral("pusc") << int(StepKind::Release);
        QTest::newRow("puść") << QStringLiteral("puść") << int(StepKind::Release);
        QTest::newRow("click") << QStringLiteral("click") << int(StepKind::Click);
        QTest::newRow("klik") << QStringLiteral("klik") << int(StepKind::Click);
        QTest::newRow("unknown") << QStringLiteral("jump") << int(StepKind::Click);
        QTest::newRow("upper case") << QStringLiteral("HOLD") << int(StepKind::Click);
    }
    void actionWords() {
        QFETCH(QString, action);
        QFETCH(int, kind);
        const QJsonObject step{{QStringLiteral("key"), QStringLiteral("x")}, {QStringLiteral("action"), action}};
        const WheelFunction function = FunctionFromJson(QJsonObject{{QStringLiteral("steps"), QJsonArray{step}}});
        QCOMPARE(int(function.steps[0].kind), kind);
        QCOMPARE(function.steps[0].key, QStringLiteral("x"));
    }

    void holdWithoutValueIsZero() {
        const WheelFunction function = Parse("{'steps': [{'key': 'w', 'action': 'hold'}]}");
        QCOMPARE(function.steps[0], MakeStep(StepKind::Hold, QStringLiteral("w"), 0));
    }

    void openStepTakesPrecedence() {
        const WheelFunction function =
            Parse("{'steps': [{'open': 'https://example.org', 'key': 'a', 'action': 'hold'}]}");
        QCOMPARE(function.steps[0].kind, StepKind::Open);
        QCOMPARE(function.steps[0].target, QStringLiteral("https://example.org"));
    }

    void delayDefaultsToThirtyAndIsNotWritten() {
        const WheelFunction function = Parse("{'name': 'D'}");
        QCOMPARE(function.delay, 30);
        QVERIFY(!FunctionToJson(function).contains(QLatin1String("delay")));
        const WheelFunction slow = Parse("{'delay': 5000}");
        QCOMPARE(slow.delay, 5000);
        QCOMPARE(FunctionToJson(slow).value(QLatin1String("delay")).toInt(), 5000);
    }

    void functionJsonWritesOnlyWhatIsSet() {
        const QJsonObject bare = FunctionToJson(WheelFunction{});
        QCOMPARE(bare.keys(), (QStringList{QStringLiteral("name"), QStringLiteral("steps")}));
        QVERIFY(bare.value(QLatin1String("steps")).toArray().isEmpty());

        WheelFunction full;
        full.name = QStringLiteral("Leczenie");
        full.voice = QStringLiteral("lecz");
        full.icon = QStringLiteral("icons/heart.png");
        full.steps = {MakeStep(StepKind::Click, QStringLiteral("q"), 2),
                      MakeStep(StepKind::Hold, QStringLiteral("w"), 500),
                      MakeStep(StepKind::Release, QStringLiteral("w"), 1),
                      MakeStep(StepKind::Open, QString(), 1, QStringLiteral("notepad.exe"))};
        const QJsonObject object = FunctionToJson(full);
        QCOMPARE(object.value(QLatin1String("voice")).toString(), QStringLiteral("lecz"));
        QCOMPARE(object.value(QLatin1String("icon")).toString(), QStringLiteral("icons/heart.png"));
        const QJsonArray steps = object.value(QLatin1String("steps")).toArray();
        QCOMPARE(steps[0].toObject(), (QJsonObject{{QStringLiteral("key"), QStringLiteral("q")},
                                                   {QStringLiteral("action"), QStringLiteral("click")},
                                                   {QStringLiteral("value"), 2}}));
        QCOMPARE(steps[1].toObject(), (QJsonObject{{QStringLiteral("key"), QStringLiteral("w")},
                                                   {QStringLiteral("action"), QStringLiteral("hold")},
                                                   {QStringLiteral("value"), 500}}));
        QCOMPARE(steps[2].toObject(), (QJsonObject{{QStringLiteral("key"), QStringLiteral("w")},
                                                   {QStringLiteral("action"), QStringLiteral("release")}}));
        QCOMPARE(steps[3].toObject(), (QJsonObject{{QStringLiteral("open"), QStringLiteral("notepad.exe")}}));
    }

    void roundTripKeepsEverything() {
        const QByteArray content =
            "{'wheels': [{'name': 'Walka', 'actions': ["
            "{'name': 'Atak', 'color': '#FF0000', 'delay': 0, 'voice': 'atak', 'icon': 'icons/a.png', 'steps': ["
            "{'key': 'q', 'action': 'click', 'value': 3}, {'key': 'w', 'action': 'hold', 'value': 0},"
            "{'key': 'w', 'action': 'release'},"
            "{'open': 'https://x.pl'}]},"
            "{'name': '', 'keys': ['a', 'b']}]},"
            "{'name': '', 'actions': []}]}";
        WheelDocument first = LoadOk(content);
        const QString out = dir_.filePath(QStringLiteral("round.json"));
        QString error;
        QVERIFY(first.Save(out, error));
        QCOMPARE(first.path, out);
        WheelDocument second;
        QVERIFY(second.Load(out, error));
        CompareDocuments(second, first);
        QCOMPARE(second.wheels.size(), 2);
        QCOMPARE(second.wheels[0].functions[0].steps.size(), 4);
        QCOMPARE(second.wheels[0].functions[1].steps.size(), 2);
    }

    void programsAreReadSavedAndReadBack() {
        WheelDocument first = LoadOk(
            "{'wheels': [{'name': 'Gra', 'apps': ['gra.exe', '', 5, 'Steam_App_7'], 'actions': []},"
            "{'name': 'Inne', 'apps': 'notepad.exe', 'actions': []},"
            "{'name': 'Ogólne', 'actions': []}]}");
        QCOMPARE(first.wheels[0].apps, (QStringList{QStringLiteral("gra.exe"), QStringLiteral("Steam_App_7")}));
        QVERIFY(first.wheels[1].apps.isEmpty());
        QVERIFY(first.wheels[2].apps.isEmpty());
        const QString out = dir_.filePath(QStringLiteral("programs.json"));
        QString error;
        QVERIFY(first.Save(out, error));
        const QJsonArray wheels = ReadJsonObject(out).value(QStringLiteral("wheels")).toArray();
        QCOMPARE(wheels[0].toObject().value(QStringLiteral("apps")).toArray(),
                 (QJsonArray{QStringLiteral("gra.exe"), QStringLiteral("Steam_App_7")}));
        // A general wheel is written as before: without the key.
        QVERIFY(!wheels[1].toObject().contains(QStringLiteral("apps")));
        QVERIFY(!wheels[2].toObject().contains(QStringLiteral("apps")));
        WheelDocument second;
        QVERIFY(second.Load(out, error));
        CompareDocuments(second, first);
    }

    void moreThanSixtyFourProgramsKeepTheFirst() {
        QByteArray apps;
        for (int i = 0; i < 70; ++i) apps += (i ? ", 'p" : "'p") + QByteArray::number(i) + "'";
        const WheelDocument document = LoadOk("{'wheels': [{'name': 'W', 'apps': [" + apps + "], 'actions': []}]}");
        QCOMPARE(document.wheels[0].apps.size(), 64);
        QCOMPARE(document.wheels[0].apps.last(), QStringLiteral("p63"));
    }

    void programsTextIsSplitAtCommasAndTrimmed() {
        using zirvel::frontend::ProgramsFromText;
        using zirvel::frontend::ProgramsText;
        QCOMPARE(ProgramsFromText(QStringLiteral(" notepad.exe ,firefox,, , Gra Nowa ")),
                 (QStringList{QStringLiteral("notepad.exe"), QStringLiteral("firefox"), QStringLiteral("Gra Nowa")}));
        QVERIFY(ProgramsFromText(QStringLiteral(" , ")).isEmpty());
        QCOMPARE(ProgramsText({QStringLiteral("a.exe"), QStringLiteral("b")}), QStringLiteral("a.exe, b"));
    }

    void summaries() {
        QCOMPARE(StepSummary(MakeStep(StepKind::Open, QString(), 1, QStringLiteral("calc.exe"))),
                 QStringLiteral("otwórz:  calc.exe"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Release, QStringLiteral("shift"), 1)), QStringLiteral("puść:  shift"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Hold, QStringLiteral("w"), 0)),
                 QStringLiteral("przytrzymaj (bez puszczania):  w"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Hold, QStringLiteral("w"), -5)),
                 QStringLiteral("przytrzymaj (bez puszczania):  w"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Hold, QStringLiteral("w"), 1500)),
                 QStringLiteral("przytrzymaj 1500 ms:  w"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Click, QStringLiteral("e"), 4)), QStringLiteral("klik \u00D74:  e"));
        QCOMPARE(StepSummary(MakeStep(StepKind::Click, QStringLiteral("e"), 1)), QStringLiteral("klik:  e"));
    }

    void saveIntoMissingDirectoryFails() {
        WheelDocument document = LoadOk("{'actions': [{'name': 'A'}]}");
        const QString before = document.path;
        const QString target = dir_.filePath(QStringLiteral("no/such/dir/out.json"));
        QString error;
        QVERIFY(!document.Save(target, error));
        QCOMPARE(error, QStringLiteral("Nie można zapisać pliku ") + target);
        QVERIFY(!QFile::exists(target));
        QCOMPARE(document.path, before);
    }

    void failedSaveLeavesTheOldFileWhole() {
        // A name so long that the temporary file beside it cannot be named:
        // the save fails after the old file was found, whoever runs the test
        // (permissions would not stop root).
        const QString name = QString(250, QLatin1Char('w')) + QStringLiteral(".json");
        const QByteArray old = "{'actions': [{'name': 'Stary'}]}";
        const QString target = Write(name, old);
        WheelDocument document = LoadOk("{'actions': [{'name': 'Nowy'}]}");
        QString error;
        QVERIFY(!document.Save(target, error));
        QCOMPARE(error, QStringLiteral("Nie można zapisać pliku ") + target);
        QCOMPARE(ReadFile(target), Json(old));
        QCOMPARE(QDir(dir_.path()).entryList(QDir::Files).filter(QStringLiteral("wwwww")).size(), 1);
    }
};

ZIRVEL_FRONTEND_TEST_MAIN(WheelDocumentTest)
#include "wheel_document_test.moc"
