#include "frontend/themes.h"

#include <QApplication>
#include <QFile>

#include "frontend/program_folders.h"

namespace zirvel::frontend {
namespace {

QString& CurrentId() {
    static QString id = QStringLiteral("fluent");
    return id;
}

Theme MakeTheme(const char* id, const char* label, std::array<const char*, 6> colours) {
    Theme theme{QString::fromUtf8(id), QString::fromUtf8(label), {}};
    for (std::size_t i = 0; i < colours.size(); ++i) theme.colours[i] = QColor(QString::fromLatin1(colours[i]));
    return theme;
}

}  // namespace

const QList<Theme>& themes() {
    // Built once on first use; a function-local static is safe to initialise concurrently.
    static const QList<Theme> table{
        MakeTheme("fluent", "Fluent (jasny)", {"#185FA5", "#E6F1FB", "#378ADD", "#F4F6FB", "#0F6E56", "#1B2433"}),
        MakeTheme("neon", "Neon (gaming)", {"#39D5C9", "#1B2340", "#2AA39B", "#101423", "#39D5C9", "#E8ECFF"}),
        MakeTheme("pro", "Pro studio (grafit)", {"#EFA02F", "#2C2F38", "#BA7517", "#1D1F24", "#9FE1CB", "#E8E6DF"}),
    };
    return table;
}

const Theme& themeById(const QString& id) {
    for (const Theme& theme : themes()) {
        if (theme.id == id) return theme;
    }
    return themes().front();
}

QString currentThemeId() { return CurrentId(); }

void applyTheme(const QString& id) {
    const Theme& theme = themeById(id);
    CurrentId() = theme.id;
    QFile sheet(CurrentProgramFolders().shipped + QStringLiteral("/themes/") + theme.id + QStringLiteral(".qss"));
    QString text;
    if (sheet.open(QIODevice::ReadOnly | QIODevice::Text)) text = QString::fromUtf8(sheet.readAll());
    qApp->setStyleSheet(text);
}

}  // namespace zirvel::frontend
