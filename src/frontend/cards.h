// The rounded "Card" frames of the pages; the theme style sheets draw them.
#pragma once

#include <QString>

class QFrame;
class QLabel;
class QVBoxLayout;
class QWidget;

namespace zirvel::frontend {

// Tags a label for the style sheets: "pageTitle", "cardTitle", "value", "ok".
void SetRole(QLabel* label, const char* role);

// A card around `content` (margins 14, 12, 14, 12).
QFrame* buildCard(QWidget* content);

// Makes `card` a settings card under its heading (margins 14, 12, 14, 12,
// spacing 8); returns the layout that takes the card's rows.
QVBoxLayout* SetUpSettingsCard(QFrame* card, const QString& heading);

// A card with a caption over a value label (margins 14, 10, 14, 10,
// spacing 2); the value label is handed back through `valueLabel`.
QFrame* BuildValueCard(const QString& caption, const QString& value, const char* valueRole,
                       QLabel** valueLabel = nullptr);

}  // namespace zirvel::frontend
