#include "frontend/remembered_division.h"

#include <QEvent>
#include <QSettings>
#include <QSplitter>

#include <utility>

#include "frontend/frontend_identity.h"

namespace zirvel::frontend {

namespace {

// Saves once per drag, when the handle is let go, rather than on every
// step of it.
class DivisionSaver : public QObject {
public:
    DivisionSaver(QSplitter* splitter, QString settingsKey)
        : QObject(splitter), splitter_(splitter), settingsKey_(std::move(settingsKey)) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease) {
            QSettings(kOrganisationName, kSettingsScope).setValue(settingsKey_, splitter_->saveState());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QSplitter* splitter_;
    QString settingsKey_;
};

}  // namespace

void RememberDivision(QSplitter* splitter, const QString& settingsKey) {
    // A missing or unreadable state leaves the splitter's own sizes.
    splitter->restoreState(QSettings(kOrganisationName, kSettingsScope).value(settingsKey).toByteArray());
    auto* saver = new DivisionSaver(splitter, settingsKey);
    for (int i = 1; i < splitter->count(); ++i) splitter->handle(i)->installEventFilter(saver);
}

}  // namespace zirvel::frontend
