// AT-SPI roles as UI Automation control types, and what the element filter
// then makes of them.
#include <gtest/gtest.h>

#include "navigation/element_filter.h"
#include "platform/x11/atspi_roles.h"

namespace zirvel::x11 {
namespace {

TEST(AtspiRolesTest, EachClickableKindOfControlHasItsType) {
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_PUSH_BUTTON, false), control_type::kButton);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_TOGGLE_BUTTON, false), control_type::kButton);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_PUSH_BUTTON_MENU, false), control_type::kSplitButton);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_CHECK_BOX, false), control_type::kCheckBox);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_RADIO_BUTTON, false), control_type::kRadioButton);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_COMBO_BOX, false), control_type::kComboBox);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_ENTRY, false), control_type::kEdit);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_PASSWORD_TEXT, false), control_type::kEdit);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_LINK, false), control_type::kHyperlink);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_LIST_ITEM, false), control_type::kListItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_TABLE_CELL, false), control_type::kListItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_MENU_ITEM, false), control_type::kMenuItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_CHECK_MENU_ITEM, false), control_type::kMenuItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_RADIO_MENU_ITEM, false), control_type::kMenuItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_PAGE_TAB, false), control_type::kTabItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_TREE_ITEM, false), control_type::kTreeItem);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_SLIDER, false), control_type::kSlider);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_SPIN_BUTTON, false), control_type::kSpinner);
}

TEST(AtspiRolesTest, TextIsAnEditOnlyWhenEditable) {
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_TEXT, true), control_type::kEdit);
    EXPECT_EQ(ControlTypeForRole(ATSPI_ROLE_TEXT, false), 0);
}

TEST(AtspiRolesTest, WindowsPanesAndDocumentsAreNeverNumberedForBeingFocusable) {
    const ScreenRect area{0, 0, 1000, 1000};
    for (AtspiRole role : {ATSPI_ROLE_FRAME, ATSPI_ROLE_WINDOW, ATSPI_ROLE_DIALOG, ATSPI_ROLE_PANEL,
                           ATSPI_ROLE_FILLER, ATSPI_ROLE_DOCUMENT_WEB, ATSPI_ROLE_DOCUMENT_FRAME}) {
        const ElementRecord element{ControlTypeForRole(role, false), true, false, true, {10, 10, 110, 40}};
        EXPECT_NE(element.controlType, 0) << role;
        EXPECT_FALSE(IsElementCandidate(element, ElementScanMode::ForegroundWindow, area)) << role;
    }
    // Any other focusable element is, like a label one can select.
    const ElementRecord label{ControlTypeForRole(ATSPI_ROLE_LABEL, false), true, false, true, {10, 10, 110, 40}};
    EXPECT_TRUE(IsElementCandidate(label, ElementScanMode::ForegroundWindow, area));
}

TEST(AtspiRolesTest, DocumentsAndTopLevelWindowsAreRecognised) {
    EXPECT_TRUE(IsDocumentRole(ATSPI_ROLE_DOCUMENT_WEB));
    EXPECT_TRUE(IsDocumentRole(ATSPI_ROLE_DOCUMENT_FRAME));
    EXPECT_FALSE(IsDocumentRole(ATSPI_ROLE_FRAME));
    EXPECT_TRUE(IsTopLevelRole(ATSPI_ROLE_FRAME));
    EXPECT_TRUE(IsTopLevelRole(ATSPI_ROLE_DIALOG));
    EXPECT_TRUE(IsTopLevelRole(ATSPI_ROLE_FILLER));  // a Qt top-level widget
    EXPECT_FALSE(IsTopLevelRole(ATSPI_ROLE_PUSH_BUTTON));
}

}  // namespace
}  // namespace zirvel::x11
