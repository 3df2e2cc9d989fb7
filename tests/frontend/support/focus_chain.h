// Keyboard reach: the widgets that Tab visits, in order, and what a screen
// reader would call them.
#pragma once

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QWidget>

#include <vector>

namespace zirvel_test {

// The line edit inside a spin box or an editable combo box is part of that
// control: Tab and screen readers treat the two as one.
inline bool IsInnerEditor(const QWidget* widget) {
    const QWidget* parent = widget->parentWidget();
    return qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent);
}

// The visible, enabled widgets that take focus with Tab, in focus-chain
// order from `root`, once each.
inline std::vector<QWidget*> TabChain(QWidget* root) {
    std::vector<QWidget*> chain;
    QWidget* widget = root;
    for (int guard = 0; guard < 2000; ++guard) {
        widget = widget->nextInFocusChain();
        if (widget == root) break;
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) &&
            root->isAncestorOf(widget) && !IsInnerEditor(widget)) {
            chain.push_back(widget);
        }
    }
    return chain;
}

// The name a screen reader announces: the accessible name, or the visible
// text that Qt's accessibility layer uses for buttons and boxes.
inline QString SpokenName(QWidget* widget) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

inline QString Describe(QWidget* widget) {
    return QStringLiteral("%1 \"%2\"").arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName());
}

}  // namespace zirvel_test
