#include "frontend/config_object.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#include "frontend/program_folders.h"

namespace zirvel::frontend {
namespace {

QString ConfigPath() { return CurrentProgramFolders().files + QStringLiteral("/config.json"); }

}  // namespace

QJsonObject ReadConfigObject() {
    QFile file(ConfigPath());
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

void WriteConfigObject(const QJsonObject& object) {
    QSaveFile file(ConfigPath());
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(QJsonDocument(object).toJson(QJsonDocument::Indented));
    file.commit();
}

}  // namespace zirvel::frontend
