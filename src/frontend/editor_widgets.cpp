#include "frontend/editor_widgets.h"

#include <QLabel>
#include <QPushButton>

#include "frontend/cards.h"

namespace zirvel::frontend {

QPushButton* MakeButton(const QString& text, const QString& objectName, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(objectName);
    return button;
}

QLabel* MakeCaption(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* caption = new QLabel(text, parent);
    SetRole(caption, "cardTitle");
    if (buddy) caption->setBuddy(buddy);
    return caption;
}

}  // namespace zirvel::frontend
