#include "frontend/cards.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace zirvel::frontend {

void SetRole(QLabel* label, const char* role) { label->setProperty("role", QString::fromLatin1(role)); }

QFrame* buildCard(QWidget* content) {
    auto* card = new QFrame;
    card->setObjectName(QStringLiteral("Card"));
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addWidget(content);
    return card;
}

QFrame* BuildValueCard(const QString& caption, const QString& value, const char* valueRole, QLabel** valueLabel) {
    auto* card = new QFrame;
    card->setObjectName(QStringLiteral("Card"));
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(14, 10, 14, 10);
    layout->setSpacing(2);
    auto* captionLabel = new QLabel(caption);
    SetRole(captionLabel, "cardTitle");
    auto* valueText = new QLabel(value);
    SetRole(valueText, valueRole);
    // A screen reader announces the value together with what it is.
    valueText->setAccessibleName(caption);
    layout->addWidget(captionLabel);
    layout->addWidget(valueText);
    if (valueLabel) *valueLabel = valueText;
    return card;
}

QVBoxLayout* SetUpSettingsCard(QFrame* card, const QString& heading) {
    card->setObjectName(QStringLiteral("Card"));
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(8);
    auto* headingLabel = new QLabel(heading);
    SetRole(headingLabel, "value");
    layout->addWidget(headingLabel);
    return layout;
}

}  // namespace zirvel::frontend
