#include "frontend/wheel_document.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

namespace zirvel::frontend {
namespace {

// Older files and hand-written ones give keys as numbers ("key": 5).
QString KeyText(const QJsonValue& value) {
    if (value.isDouble()) return QString::number(std::trunc(value.toDouble()), 'f', 0);
    return value.toString();
}

Step StepFromJson(const QJsonObject& object) {
    Step step;
    if (object.contains(QLatin1String("open"))) {
        step.kind = StepKind::Open;
        step.target = object.value(QLatin1String("open")).toString();
        return step;
    }
    step.key = KeyText(object.value(QLatin1String("key")));
    const QString action = object.value(QLatin1String("action")).toString(QStringLiteral("click"));
    const QJsonValue value = object.value(QLatin1String("value"));
    if (action == QLatin1String("hold") || action == QStringLiteral("przytrzymaj")) {
        step.kind = StepKind::Hold;
        step.value = value.toInt(0);
    } else if (action == QLatin1String("release") || action == QLatin1String("pusc") ||
               action == QStringLiteral("puść")) {
        step.kind = StepKind::Release;
    } else {
        // Unknown words count as a click, the safest thing a key can do.
        step.kind = StepKind::Click;
        step.value = std::clamp(value.toInt(1), 1, 100);
    }
    return step;
}

Step ClickOn(const QJsonValue& key) {
    Step step;
    step.key = KeyText(key);
    return step;
}

// Files from before step sequences: "keys" (a list or one key) or "key".
QList<Step> LegacySteps(const QJsonObject& object) {
    QList<Step> steps;
    const QJsonValue keys = object.value(QLatin1String("keys"));
    if (keys.isArray()) {
        for (const QJsonValue& key : keys.toArray()) steps.append(ClickOn(key));
    } else if (keys.isString()) {
        steps.append(ClickOn(keys));
    } else if (object.contains(QLatin1String("key"))) {
        steps.append(ClickOn(object.value(QLatin1String("key"))));
    }
    return steps;
}

QLatin1String ActionWord(StepKind kind) {
    switch (kind) {
        case StepKind::Hold:
            return QLatin1String("hold");
        case StepKind::Release:
            return QLatin1String("release");
        default:
            return QLatin1String("click");
    }
}

QJsonObject StepToJson(const Step& step) {
    if (step.kind == StepKind::Open) return QJsonObject{{QLatin1String("open"), step.target}};
    QJsonObject object{{QLatin1String("key"), step.key}, {QLatin1String("action"), ActionWord(step.kind)}};
    // A release has nothing to count.
    if (step.kind != StepKind::Release) object.insert(QLatin1String("value"), step.value);
    return object;
}

QList<WheelFunction> FunctionsFromJson(const QJsonValue& actions) {
    QList<WheelFunction> functions;
    for (const QJsonValue& action : actions.toArray()) functions.append(FunctionFromJson(action.toObject()));
    return functions;
}

// Only names: whatever else stands in "apps" the engine leaves out too.
QStringList AppsFromJson(const QJsonValue& apps) {
    QStringList names;
    for (const QJsonValue& app : apps.toArray()) {
        if (app.isString() && !app.toString().isEmpty() && names.size() < kMaxWheelPrograms) names.append(app.toString());
    }
    return names;
}

QJsonArray FunctionsToJson(const QList<WheelFunction>& functions) {
    QJsonArray array;
    for (const WheelFunction& function : functions) array.append(FunctionToJson(function));
    return array;
}

}  // namespace

WheelFunction FunctionFromJson(const QJsonObject& object) {
    WheelFunction function;
    function.name = object.value(QLatin1String("name")).toString();
    function.voice = object.value(QLatin1String("voice")).toString();
    function.icon = object.value(QLatin1String("icon")).toString();
    if (object.contains(QLatin1String("delay"))) function.delay = object.value(QLatin1String("delay")).toInt(30);
    const QString color = object.value(QLatin1String("color")).toString();
    if (!color.isEmpty()) function.color = QColor::fromString(color);
    const QJsonValue steps = object.value(QLatin1String("steps"));
    if (steps.isArray()) {
        for (const QJsonValue& step : steps.toArray()) function.steps.append(StepFromJson(step.toObject()));
    } else {
        function.steps = LegacySteps(object);
    }
    return function;
}

QJsonObject FunctionToJson(const WheelFunction& function) {
    QJsonObject object;
    object.insert(QLatin1String("name"), function.name);
    if (function.color.isValid()) object.insert(QLatin1String("color"), function.color.name());
    if (function.delay != 30) object.insert(QLatin1String("delay"), function.delay);
    if (!function.icon.isEmpty()) object.insert(QLatin1String("icon"), function.icon);
    if (!function.voice.isEmpty()) object.insert(QLatin1String("voice"), function.voice);
    QJsonArray steps;
    for (const Step& step : function.steps) steps.append(StepToJson(step));
    object.insert(QLatin1String("steps"), steps);
    return object;
}

QString ProgramsText(const QStringList& programs) { return programs.join(QStringLiteral(", ")); }

QStringList ProgramsFromText(const QString& text) {
    QStringList programs;
    for (const QString& part : text.split(QLatin1Char(','))) {
        const QString name = part.trimmed();
        if (!name.isEmpty()) programs.append(name);
    }
    return programs;
}

QString StepSummary(const Step& step) {
    switch (step.kind) {
        case StepKind::Open:
            return WheelDocument::tr("otwórz:  %1").arg(step.target);
        case StepKind::Release:
            return WheelDocument::tr("puść:  %1").arg(step.key);
        case StepKind::Hold:
            if (step.value < 1) return WheelDocument::tr("przytrzymaj (bez puszczania):  %1").arg(step.key);
            return WheelDocument::tr("przytrzymaj %1 ms:  %2").arg(QString::number(step.value), step.key);
        case StepKind::Click:
            break;
    }
    if (step.value > 1) return WheelDocument::tr("klik ×%1:  %2").arg(QString::number(step.value), step.key);
    return WheelDocument::tr("klik:  %1").arg(step.key);
}

bool WheelDocument::Load(const QString& filePath, QString& error) {
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        error = tr("Nie można otworzyć pliku %1").arg(filePath);
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (json.isNull() || !json.isObject()) {
        error = tr("Błąd JSON: %1").arg(parseError.errorString());
        return false;
    }
    // Built aside and taken over only once the file proved readable.
    const QJsonObject root = json.object();
    QList<Wheel> loaded;
    bool loadedMultiWheel = false;
    if (root.value(QLatin1String("wheels")).isArray()) {
        loadedMultiWheel = true;
        for (const QJsonValue& element : root.value(QLatin1String("wheels")).toArray()) {
            const QJsonObject object = element.toObject();
            loaded.append({object.value(QLatin1String("name")).toString(),
                           FunctionsFromJson(object.value(QLatin1String("actions"))),
                           AppsFromJson(object.value(QLatin1String("apps")))});
        }
    } else if (root.value(QLatin1String("actions")).isArray()) {
        loaded.append({QString(), FunctionsFromJson(root.value(QLatin1String("actions")))});
    } else {
        error = tr("Plik nie zawiera \"wheels\" ani \"actions\"");
        return false;
    }
    // The editor always needs a wheel to put functions in.
    if (loaded.isEmpty()) loaded.append({tr("Koło 1"), {}});
    path = filePath;
    multiWheel = loadedMultiWheel;
    wheels = std::move(loaded);
    return true;
}

bool WheelDocument::Save(const QString& filePath, QString& error) {
    QJsonObject root;
    if (multiWheel) {
        QJsonArray array;
        for (const Wheel& wheel : wheels) {
            QJsonObject object;
            object.insert(QLatin1String("name"), wheel.name);
            if (!wheel.apps.isEmpty()) object.insert(QLatin1String("apps"), QJsonArray::fromStringList(wheel.apps));
            object.insert(QLatin1String("actions"), FunctionsToJson(wheel.functions));
            array.append(object);
        }
        root.insert(QLatin1String("wheels"), array);
    } else {
        root.insert(QLatin1String("actions"),
                    FunctionsToJson(wheels.isEmpty() ? QList<WheelFunction>() : wheels.first().functions));
    }
    // QSaveFile writes a temporary file and renames it over the old one, so
    // a failure at any point leaves the old file whole.
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(root).toJson(QJsonDocument::Indented)) < 0 ||
        !file.commit()) {
        error = tr("Nie można zapisać pliku %1").arg(filePath);
        return false;
    }
    path = filePath;
    return true;
}

}  // namespace zirvel::frontend
