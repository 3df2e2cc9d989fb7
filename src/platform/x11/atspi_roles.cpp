#include "platform/x11/atspi_roles.h"

#include "navigation/element_filter.h"

namespace zirvel::x11 {

std::int32_t ControlTypeForRole(AtspiRole role, bool editable) {
    namespace type = control_type;
    switch (role) {
        case ATSPI_ROLE_PUSH_BUTTON:
        case ATSPI_ROLE_TOGGLE_BUTTON:
            return type::kButton;
        // A button that opens a menu is what UI Automation calls a split button.
        case ATSPI_ROLE_PUSH_BUTTON_MENU:
            return type::kSplitButton;
        case ATSPI_ROLE_CHECK_BOX:
            return type::kCheckBox;
        case ATSPI_ROLE_RADIO_BUTTON:
            return type::kRadioButton;
        case ATSPI_ROLE_COMBO_BOX:
            return type::kComboBox;
        case ATSPI_ROLE_ENTRY:
        case ATSPI_ROLE_PASSWORD_TEXT:
            return type::kEdit;
        // Qt and others use "text" for labels as well: only an editable one
        // is a field to click into.
        case ATSPI_ROLE_TEXT:
            return editable ? type::kEdit : 0;
        case ATSPI_ROLE_LINK:
            return type::kHyperlink;
        // GTK's lists and trees (GtkTreeView) expose their rows only as
        // table cells, so a cell is what the user clicks to pick a row.
        case ATSPI_ROLE_LIST_ITEM:
        case ATSPI_ROLE_TABLE_CELL:
            return type::kListItem;
        // Check and radio menu items stay menu items, as in UI Automation.
        case ATSPI_ROLE_MENU_ITEM:
        case ATSPI_ROLE_CHECK_MENU_ITEM:
        case ATSPI_ROLE_RADIO_MENU_ITEM:
        case ATSPI_ROLE_TEAROFF_MENU_ITEM:
            return type::kMenuItem;
        case ATSPI_ROLE_PAGE_TAB:
            return type::kTabItem;
        case ATSPI_ROLE_TREE_ITEM:
            return type::kTreeItem;
        case ATSPI_ROLE_SLIDER:
            return type::kSlider;
        case ATSPI_ROLE_SPIN_BUTTON:
            return type::kSpinner;
        case ATSPI_ROLE_FRAME:
        case ATSPI_ROLE_WINDOW:
        case ATSPI_ROLE_DIALOG:
        case ATSPI_ROLE_ALERT:
            return type::kWindow;
        case ATSPI_ROLE_PANEL:
        case ATSPI_ROLE_FILLER:
            return type::kPane;
        default:
            return IsDocumentRole(role) ? type::kDocument : 0;
    }
}

bool IsDocumentRole(AtspiRole role) {
    switch (role) {
        case ATSPI_ROLE_DOCUMENT_WEB:
        case ATSPI_ROLE_DOCUMENT_FRAME:
        case ATSPI_ROLE_DOCUMENT_TEXT:
        case ATSPI_ROLE_DOCUMENT_EMAIL:
        case ATSPI_ROLE_DOCUMENT_PRESENTATION:
        case ATSPI_ROLE_DOCUMENT_SPREADSHEET:
            return true;
        default:
            return false;
    }
}

bool IsTopLevelRole(AtspiRole role) {
    switch (role) {
        case ATSPI_ROLE_FRAME:
        case ATSPI_ROLE_WINDOW:
        case ATSPI_ROLE_DIALOG:
        case ATSPI_ROLE_ALERT:
        case ATSPI_ROLE_FILLER:  // a Qt top-level widget that is no main window
        case ATSPI_ROLE_PANEL:   // a desktop panel
            return true;
        default:
            return false;
    }
}

}  // namespace zirvel::x11
