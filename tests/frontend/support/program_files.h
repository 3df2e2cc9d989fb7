// Files beside the test binary, which stands in for the program directory.
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QString>

namespace zirvel_test {

inline QString ProgramFile(const QString& name) { return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name; }

inline QByteArray ReadProgramFile(const QString& name) {
    QFile file(ProgramFile(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The program file's JSON object (empty when missing or not an object).
inline QJsonObject ReadProgramJson(const QString& name) { return QJsonDocument::fromJson(ReadProgramFile(name)).object(); }

inline bool WriteProgramFile(const QString& name, const QByteArray& content) {
    QSaveFile file(ProgramFile(name));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(content);
    return file.commit();
}

// Keeps a program file's content and puts it back (or removes the file)
// when the test ends, so a test may change or delete it.
class ProgramFileGuard {
public:
    explicit ProgramFileGuard(const QString& name) : name_(name), existed_(QFile::exists(ProgramFile(name))),
                                                     content_(ReadProgramFile(name)) {}
    ~ProgramFileGuard() {
        if (existed_) WriteProgramFile(name_, content_);
        else QFile::remove(ProgramFile(name_));
    }
    ProgramFileGuard(const ProgramFileGuard&) = delete;
    ProgramFileGuard& operator=(const ProgramFileGuard&) = delete;

private:
    QString name_;
    bool existed_;
    QByteArray content_;
};

}  // namespace zirvel_test
