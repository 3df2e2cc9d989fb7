// The wheels file as the editor sees it: wheels of functions, each function
// a sequence of steps, read and written with Qt's JSON classes. The engine
// keeps its own reader; this one only has to round-trip what the editor
// shows, and never loses the old file when a save fails.
#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace zirvel::frontend {

// The numbers are the indexes of the editor's action combo box.
enum class StepKind { Click = 0, Hold = 1, Release = 2, Open = 3 };

struct Step {
    StepKind kind = StepKind::Click;
    QString key;
    // Click: repetitions 1 … 100. Hold: milliseconds, below 1 = never released.
    int value = 1;
    // Open: the address or program.
    QString target;

    bool operator==(const Step&) const = default;
};

struct WheelFunction {
    QString name;
    QString voice;
    QString icon;    // relative to the wheels file's directory, or absolute
    QColor color;    // invalid = the theme's colour
    int delay = 30;  // milliseconds between steps
    QList<Step> steps;

    bool operator==(const WheelFunction&) const = default;
};

struct Wheel {
    QString name;
    QList<WheelFunction> functions;
    // The programs the wheel belongs to ("apps"); empty for a general wheel.
    // Last, so {name, functions} still makes a general wheel.
    QStringList apps = {};

    bool operator==(const Wheel&) const = default;
};

class WheelDocument {
    Q_DECLARE_TR_FUNCTIONS(WheelDocument)

public:
    QString path;
    // Written in the "wheels" form when true, else as one "actions" list.
    bool multiWheel = false;
    QList<Wheel> wheels;

    // On failure `error` says why and the document is left as it was.
    bool Load(const QString& path, QString& error);
    // Atomic: on failure `error` says why and the old file is untouched.
    bool Save(const QString& path, QString& error);
};

// At most this many programs per wheel, as the engine reads them.
inline constexpr int kMaxWheelPrograms = 64;

// A wheel's programs as the "Programy" field shows them, and back: the
// names between commas, trimmed, empty ones left out.
QString ProgramsText(const QStringList& programs);
QStringList ProgramsFromText(const QString& text);

// One line describing a step, for the editor's step list.
QString StepSummary(const Step& step);
QJsonObject FunctionToJson(const WheelFunction& function);
WheelFunction FunctionFromJson(const QJsonObject& object);

}  // namespace zirvel::frontend
