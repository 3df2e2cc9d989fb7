// Small widgets the editor's page makes in several places.
#pragma once

#include <QString>

class QLabel;
class QPushButton;
class QWidget;

namespace zirvel::frontend {

// A push button that tests and style sheets find by its object name.
QPushButton* MakeButton(const QString& text, const QString& objectName, QWidget* parent);

// Captions share the style sheets' "cardTitle" look and name their field
// for screen readers through the buddy link.
QLabel* MakeCaption(const QString& text, QWidget* buddy, QWidget* parent);

}  // namespace zirvel::frontend
