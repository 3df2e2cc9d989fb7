// The front-end's three fixed themes: a style sheet in the program's
// themes directory plus six colours for the widgets that paint themselves.
#pragma once

#include <QColor>
#include <QList>
#include <QString>

#include <array>

namespace zirvel::frontend {

struct Theme {
    QString id;     // settings value and base name of the style sheet
    QString label;  // text of the theme's radio button, not translated
    // 0 outline and swatch, 1 segment fill, 2 highlighted segment,
    // 3 centre disc and swatch border, 4 spare, 5 label text.
    std::array<QColor, 6> colours;
};

// The table in its fixed order: fluent, neon, pro.
const QList<Theme>& themes();
// The theme whose id matches exactly (case-sensitive), else the first one.
const Theme& themeById(const QString& id);
QString currentThemeId();
// Makes the theme current and applies its style sheet to the whole
// application; a missing sheet leaves Qt's default look.
void applyTheme(const QString& id);

}  // namespace zirvel::frontend
