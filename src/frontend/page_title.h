// The title line at the top of a page.
#pragma once

#include <QLabel>

#include "frontend/cards.h"

namespace zirvel::frontend {

inline QLabel* MakePageTitle(const QString& text) {
    auto* title = new QLabel(text);
    SetRole(title, "pageTitle");
    return title;
}

}  // namespace zirvel::frontend
