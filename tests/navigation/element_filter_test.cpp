#include "navigation/element_filter.h"

#include <gtest/gtest.h>

#include <vector>

namespace zirvel {
namespace {

constexpr ScreenRect kMonitor{0, 0, 1920, 1080};
constexpr auto kWindow = ElementScanMode::ForegroundWindow;
constexpr auto kPage = ElementScanMode::BrowserPage;

ElementRecord Control(std::int32_t type, ScreenRect rect, bool focusable = false) {
    ElementRecord e;
    e.controlType = type;
    e.enabled = true;
    e.offscreen = false;
    e.focusable = focusable;
    e.rect = rect;
    return e;
}

ElementRecord Button(ScreenRect rect) {
    return Control(control_type::kButton, rect);
}

ScreenRect Sized(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
    return ScreenRect{left, top, left + width, top + height};
}

std::vector<ScreenRect> Accept(const std::vector<ElementRecord>& found, ElementScanMode mode = kWindow,
                               ScreenRect area = kMonitor) {
    std::vector<ScreenRect> accepted;
    AcceptElements(found, mode, area, accepted);
    return accepted;
}

// Distinct, non-overlapping 20 x 20 buttons laid out in rows of 40.
std::vector<ElementRecord> DistinctButtons(int count, std::int32_t top) {
    std::vector<ElementRecord> buttons;
    for (int i = 0; i < count; ++i) {
        buttons.push_back(Button(Sized((i % 40) * 30, top + (i / 40) * 30, 20, 20)));
    }
    return buttons;
}

TEST(ClickableControlTypes, ThirteenTypesInSearchOrder) {
    const std::array<std::int32_t, 13> expected = {50000, 50031, 50002, 50013, 50003, 50004, 50005,
                                                   50007, 50011, 50019, 50024, 50015, 50016};
    EXPECT_EQ(kClickableControlTypes, expected);
    for (std::int32_t type : expected) {
        EXPECT_TRUE(IsClickableControlType(type)) << type;
    }
    for (std::int32_t type : {0, 50001, 50006, 50020, 50025, 50030, 50032, 50033}) {
        EXPECT_FALSE(IsClickableControlType(type)) << type;
    }
}

TEST(AcceptElements, EveryClickableTypeIsNumberedWithoutFocus) {
    std::vector<ElementRecord> found;
    for (std::size_t i = 0; i < kClickableControlTypes.size(); ++i) {
        found.push_back(Control(kClickableControlTypes[i], Sized(static_cast<std::int32_t>(i) * 50, 0, 40, 20)));
    }
    EXPECT_EQ(Accept(found).size(), kClickableControlTypes.size());
}

TEST(AcceptElements, TooNarrowDisabledAndOffscreenControlsAreSkipped) {
    ElementRecord narrow = Button(Sized(0, 0, 7, 30));
    ElementRecord disabled = Button(Sized(100, 0, 60, 30));
    disabled.enabled = false;
    ElementRecord offscreen = Control(control_type::kListItem, Sized(200, 0, 60, 30));
    offscreen.offscreen = true;
    const ElementRecord ok = Button(Sized(300, 0, 60, 30));
    const auto accepted = Accept({narrow, disabled, offscreen, ok});
    ASSERT_EQ(accepted.size(), 1u);
    EXPECT_EQ(accepted[0], ok.rect);
}

TEST(AcceptElements, FocusableContainersAreSkippedOtherFocusableElementsKept) {
    const ElementRecord pane = Control(control_type::kPane, Sized(0, 0, 200, 200), true);
    const ElementRecord document = Control(control_type::kDocument, Sized(300, 0, 200, 200), true);
    const ElementRecord window = Control(control_type::kWindow, Sized(600, 0, 200, 200), true);
    const ElementRecord splitButton = Control(control_type::kSplitButton, Sized(0, 300, 80, 24), true);
    const ElementRecord focusableText = Control(50020, Sized(100, 300, 80, 24), true);
    const ElementRecord focusableCustom = Control(50025, Sized(200, 300, 80, 24), true);
    const ElementRecord plainText = Control(50020, Sized(300, 300, 80, 24), false);
    const ElementRecord plainPane = Control(control_type::kPane, Sized(400, 300, 80, 24), false);
    const auto accepted =
        Accept({pane, document, window, splitButton, focusableText, focusableCustom, plainText, plainPane});
    EXPECT_EQ(accepted, (std::vector<ScreenRect>{splitButton.rect, focusableText.rect, focusableCustom.rect}));
}

TEST(ElementRecord, UnreadablePropertiesNeverQualify) {
    const ScreenRect rect = Sized(10, 10, 50, 20);
    ElementRecord allDefaults;
    allDefaults.rect = rect;
    EXPECT_FALSE(IsElementCandidate(allDefaults, kWindow, kMonitor));

    ElementRecord enabledUnread = Button(rect);
    enabledUnread.enabled = ElementRecord{}.enabled;
    EXPECT_FALSE(IsElementCandidate(enabledUnread, kWindow, kMonitor));

    ElementRecord offscreenUnread = Button(rect);
    offscreenUnread.offscreen = ElementRecord{}.offscreen;
    EXPECT_FALSE(IsElementCandidate(offscreenUnread, kWindow, kMonitor));

    ElementRecord typeUnread = Control(ElementRecord{}.controlType, rect, false);
    EXPECT_FALSE(IsElementCandidate(typeUnread, kWindow, kMonitor));

    ElementRecord focusUnread = Control(50020, rect, ElementRecord{}.focusable);
    EXPECT_FALSE(IsElementCandidate(focusUnread, kWindow, kMonitor));

    ElementRecord rectUnread = Button(ElementRecord{}.rect);
    EXPECT_FALSE(IsElementCandidate(rectUnread, kWindow, kMonitor));

    EXPECT_TRUE(IsElementCandidate(Button(rect), kWindow, kMonitor));
}

TEST(IsElementCandidate, SizeLimitsInWindowMode) {
    EXPECT_TRUE(IsElementCandidate(Button(Sized(0, 0, 8, 8)), kWindow, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 7, 8)), kWindow, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 8, 7)), kWindow, kMonitor));
    EXPECT_TRUE(IsElementCandidate(Button(Sized(0, 0, 900, 700)), kWindow, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 901, 700)), kWindow, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 900, 701)), kWindow, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(ScreenRect{100, 100, 50, 150}), kWindow, kMonitor));
}

TEST(IsElementCandidate, SizeLimitsInPageMode) {
    EXPECT_TRUE(IsElementCandidate(Button(Sized(0, 0, 8, 8)), kPage, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 7, 30)), kPage, kMonitor));
    EXPECT_TRUE(IsElementCandidate(Button(Sized(0, 0, 1400, 1000)), kPage, kMonitor));
    EXPECT_TRUE(IsElementCandidate(Button(Sized(0, 0, 901, 701)), kPage, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 1401, 1000)), kPage, kMonitor));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 1400, 1001)), kPage, kMonitor));
}

TEST(LargestElement, DependsOnTheMode) {
    EXPECT_EQ(LargestElement(kWindow).maxWidth, 900);
    EXPECT_EQ(LargestElement(kWindow).maxHeight, 700);
    EXPECT_EQ(LargestElement(kPage).maxWidth, 1400);
    EXPECT_EQ(LargestElement(kPage).maxHeight, 1000);
}

TEST(IsElementCandidate, MustOverlapTheArea) {
    const ScreenRect area{-1920, 0, 0, 1080};
    EXPECT_TRUE(IsElementCandidate(Button(Sized(-100, 100, 50, 20)), kWindow, area));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(10, 100, 50, 20)), kWindow, area));
    // Touching the right edge shares no pixel; one pixel inside does.
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 100, 50, 20)), kWindow, area));
    EXPECT_TRUE(IsElementCandidate(Button(Sized(-1, 100, 50, 20)), kWindow, area));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(-100, 1080, 50, 20)), kWindow, area));
    EXPECT_FALSE(IsElementCandidate(Button(Sized(-100, -20, 50, 20)), kWindow, area));
    // Nothing overlaps an empty area.
    EXPECT_FALSE(IsElementCandidate(Button(Sized(0, 0, 50, 20)), kWindow, ScreenRect{}));
}

TEST(AcceptElements, PartlyVisibleElementsKeepTheirWholeRectangle) {
    const ScreenRect area{0, 0, 1000, 800};
    const ElementRecord straddling = Button(Sized(980, 790, 60, 30));
    const auto accepted = Accept({straddling}, kWindow, area);
    ASSERT_EQ(accepted.size(), 1u);
    EXPECT_EQ(accepted[0], straddling.rect);
}

TEST(AcceptElements, NearlyIdenticalRectanglesGiveOneHintTheFirstFound) {
    const ElementRecord outer = Button(Sized(100, 100, 100, 30));
    const ElementRecord inner = Control(control_type::kEdit, Sized(101, 101, 98, 28));
    EXPECT_EQ(Accept({outer, inner}), (std::vector<ScreenRect>{outer.rect}));
    EXPECT_EQ(Accept({inner, outer}), (std::vector<ScreenRect>{inner.rect}));
    // Shifted slightly rather than nested.
    const ElementRecord shifted = Button(Sized(103, 102, 98, 28));
    EXPECT_EQ(Accept({outer, shifted}), (std::vector<ScreenRect>{outer.rect}));
}

TEST(AcceptElements, SmallButtonInsideLargeListItemGivesTwoHints) {
    const ElementRecord item = Control(control_type::kListItem, Sized(100, 100, 400, 300));
    const ElementRecord button = Button(Sized(150, 150, 100, 30));
    EXPECT_EQ(Accept({item, button}), (std::vector<ScreenRect>{item.rect, button.rect}));
}

TEST(IsDuplicateElement, OverlapMustExceedEightyFivePercentOfTheSmaller) {
    const std::vector<ScreenRect> accepted = {Sized(0, 0, 100, 100)};
    EXPECT_FALSE(IsDuplicateElement(Sized(15, 0, 100, 100), accepted));  // exactly 85 %
    EXPECT_TRUE(IsDuplicateElement(Sized(14, 0, 100, 100), accepted));   // 86 %
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 15, 100, 100), accepted));
    EXPECT_TRUE(IsDuplicateElement(Sized(0, 14, 100, 100), accepted));
}

TEST(IsDuplicateElement, SmallerMustExceedFiftyFivePercentOfTheLarger) {
    const std::vector<ScreenRect> accepted = {Sized(0, 0, 100, 100)};
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 0, 55, 100), accepted));  // exactly 55 %
    EXPECT_TRUE(IsDuplicateElement(Sized(0, 0, 56, 100), accepted));
    // The same holds when the new rectangle is the larger one.
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 0, 100, 100), std::vector<ScreenRect>{Sized(0, 0, 55, 100)}));
    EXPECT_TRUE(IsDuplicateElement(Sized(0, 0, 100, 100), std::vector<ScreenRect>{Sized(0, 0, 56, 100)}));
}

TEST(IsDuplicateElement, BothConditionsAreNeeded) {
    // Similar size but only half overlapping.
    EXPECT_FALSE(IsDuplicateElement(Sized(50, 0, 100, 100), std::vector<ScreenRect>{Sized(0, 0, 100, 100)}));
    // Fully covered but much smaller.
    EXPECT_FALSE(IsDuplicateElement(Sized(10, 10, 20, 20), std::vector<ScreenRect>{Sized(0, 0, 100, 100)}));
}

TEST(IsDuplicateElement, EdgeToEdgeRectanglesAreDistinct) {
    const std::vector<ScreenRect> accepted = {Sized(0, 0, 100, 30)};
    EXPECT_FALSE(IsDuplicateElement(Sized(100, 0, 100, 30), accepted));
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 30, 100, 30), accepted));
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 0, 100, 30), std::vector<ScreenRect>{}));
}

TEST(IsDuplicateElement, EmptyAcceptedRectanglesMatchNothing) {
    const std::vector<ScreenRect> accepted = {ScreenRect{10, 10, 10, 40}};
    EXPECT_FALSE(IsDuplicateElement(Sized(0, 0, 100, 100), accepted));
}

TEST(AcceptElements, DuplicatesAreCheckedAgainstEveryAcceptedRectangle) {
    const ElementRecord first = Button(Sized(0, 0, 100, 30));
    const ElementRecord second = Button(Sized(500, 500, 100, 30));
    const ElementRecord copyOfFirst = Control(control_type::kHyperlink, Sized(1, 1, 99, 29));
    EXPECT_EQ(Accept({first, second, copyOfFirst}), (std::vector<ScreenRect>{first.rect, second.rect}));
}

TEST(AcceptElements, RejectedElementsDoNotHideLaterOnes) {
    ElementRecord disabled = Button(Sized(0, 0, 100, 30));
    disabled.enabled = false;
    const ElementRecord copy = Button(Sized(1, 1, 98, 28));
    EXPECT_EQ(Accept({disabled, copy}), (std::vector<ScreenRect>{copy.rect}));
}

TEST(AcceptElements, DuplicatesAcrossRoots) {
    std::vector<ScreenRect> accepted;
    const std::vector<ElementRecord> window = {Button(Sized(0, 1040, 100, 40))};
    const std::vector<ElementRecord> taskbar = {Button(Sized(1, 1041, 98, 39)), Button(Sized(200, 1040, 48, 40))};
    AcceptElements(window, kWindow, kMonitor, accepted);
    AcceptElements(taskbar, kWindow, kMonitor, accepted);
    EXPECT_EQ(accepted, (std::vector<ScreenRect>{window[0].rect, taskbar[1].rect}));
}

TEST(AcceptElements, TaskbarButtonsComeAfterTheWindowsControls) {
    const std::vector<ElementRecord> window = {Button(Sized(10, 10, 80, 24)), Button(Sized(100, 10, 80, 24)),
                                               Control(control_type::kEdit, Sized(10, 50, 300, 24))};
    const std::vector<ElementRecord> taskbar = {Button(Sized(0, 1040, 48, 40)), Button(Sized(48, 1040, 48, 40))};
    std::vector<ScreenRect> accepted;
    EXPECT_EQ(AcceptElements(window, kWindow, kMonitor, accepted), 3u);
    EXPECT_EQ(AcceptElements(taskbar, kWindow, kMonitor, accepted), 2u);
    EXPECT_EQ(accepted, (std::vector<ScreenRect>{window[0].rect, window[1].rect, window[2].rect,
                                                 taskbar[0].rect, taskbar[1].rect}));
}

TEST(AcceptElements, StopsAtNinetyNineInOneRoot) {
    const auto found = DistinctButtons(150, 0);
    std::vector<ScreenRect> accepted;
    EXPECT_EQ(AcceptElements(found, kWindow, kMonitor, accepted), 99u);
    ASSERT_EQ(accepted.size(), 99u);
    EXPECT_TRUE(ElementListFull(accepted));
    for (std::size_t i = 0; i < accepted.size(); ++i) {
        EXPECT_EQ(accepted[i], found[i].rect) << i;
    }
}

TEST(AcceptElements, NinetyNineIsTheLimitAcrossRoots) {
    const auto window = DistinctButtons(60, 0);
    const auto taskbar = DistinctButtons(60, 600);
    std::vector<ScreenRect> accepted;
    EXPECT_EQ(AcceptElements(window, kWindow, kMonitor, accepted), 60u);
    EXPECT_FALSE(ElementListFull(accepted));
    EXPECT_EQ(AcceptElements(taskbar, kWindow, kMonitor, accepted), 39u);
    ASSERT_EQ(accepted.size(), 99u);
    EXPECT_EQ(accepted[59], window[59].rect);
    EXPECT_EQ(accepted[60], taskbar[0].rect);
    EXPECT_EQ(accepted[98], taskbar[38].rect);
    // A further root is not looked at.
    EXPECT_EQ(AcceptElements(DistinctButtons(5, 900), kWindow, kMonitor, accepted), 0u);
    EXPECT_EQ(accepted.size(), 99u);
}

TEST(AcceptElements, RejectedRecordsDoNotCountTowardsTheLimit) {
    std::vector<ElementRecord> found;
    for (const ElementRecord& button : DistinctButtons(100, 0)) {
        ElementRecord tiny = Button(Sized(button.rect.left, button.rect.top + 25, 4, 4));
        found.push_back(tiny);
        found.push_back(button);
    }
    std::vector<ScreenRect> accepted;
    EXPECT_EQ(AcceptElements(found, kWindow, kMonitor, accepted), 198u);
    ASSERT_EQ(accepted.size(), 99u);
    EXPECT_EQ(accepted.back(), found[197].rect);
}

TEST(AcceptElement, RefusesOnceTheListIsFull) {
    std::vector<ScreenRect> accepted;
    AcceptElements(DistinctButtons(99, 0), kWindow, kMonitor, accepted);
    ASSERT_EQ(accepted.size(), 99u);
    EXPECT_FALSE(AcceptElement(Button(Sized(1500, 900, 50, 50)), kWindow, kMonitor, accepted));
    EXPECT_EQ(accepted.size(), 99u);

    std::vector<ScreenRect> fresh;
    EXPECT_TRUE(AcceptElement(Button(Sized(1500, 900, 50, 50)), kWindow, kMonitor, fresh));
    EXPECT_FALSE(AcceptElement(Button(Sized(1501, 901, 49, 49)), kWindow, kMonitor, fresh));
    EXPECT_EQ(fresh.size(), 1u);
}

TEST(IntersectRects, CommonPartOrAllZero) {
    EXPECT_EQ(IntersectRects(ScreenRect{0, 0, 1920, 1080}, ScreenRect{300, -50, 2400, 900}),
              (ScreenRect{300, 0, 1920, 900}));
    EXPECT_EQ(IntersectRects(ScreenRect{0, 0, 100, 100}, ScreenRect{100, 0, 200, 100}), ScreenRect{});
    EXPECT_EQ(IntersectRects(ScreenRect{-1920, 0, 0, 1080}, ScreenRect{10, 10, 500, 500}), ScreenRect{});
    EXPECT_TRUE(RectsIntersect(ScreenRect{0, 0, 100, 100}, ScreenRect{99, 99, 200, 200}));
    EXPECT_FALSE(RectsIntersect(ScreenRect{0, 0, 100, 100}, ScreenRect{100, 99, 200, 200}));
}

TEST(AcceptElements, PageModeKeepsOnlyElementsOverTheContentWindow) {
    const ScreenRect content{0, 120, 1920, 1040};
    const ScreenRect area = IntersectRects(kMonitor, content);
    const ElementRecord toolbarButton = Button(Sized(10, 40, 30, 30));
    const ElementRecord link = Control(control_type::kHyperlink, Sized(100, 300, 120, 20));
    const ElementRecord bigImageLink = Control(control_type::kHyperlink, Sized(200, 130, 1200, 900));
    const ElementRecord statusButton = Button(Sized(10, 1045, 30, 30));
    EXPECT_EQ(Accept({toolbarButton, link, bigImageLink, statusButton}, kPage, area),
              (std::vector<ScreenRect>{link.rect, bigImageLink.rect}));
}

TEST(AcceptElements, ContentWindowOffTheMonitorLeavesNothing) {
    const ScreenRect area = IntersectRects(kMonitor, ScreenRect{2000, 0, 3000, 800});
    EXPECT_TRUE(Accept({Button(Sized(2100, 100, 50, 20)), Button(Sized(100, 100, 50, 20))}, kPage, area).empty());
}

TEST(IsBrowserContentWindow, KnownClassesLargerThanTwoHundredPixels) {
    const ScreenRect big{0, 100, 1200, 900};
    EXPECT_TRUE(IsBrowserContentWindow(u"Chrome_RenderWidgetHostHWND", true, big));
    EXPECT_TRUE(IsBrowserContentWindow(u"MozillaWindowClass", true, big));
    EXPECT_TRUE(IsBrowserContentWindow(u"MozillaContentWindowClass", true, big));
    EXPECT_TRUE(IsBrowserContentWindow(u"Intermediate Chrome_RenderWidgetHostHWND 2", true, big));
    EXPECT_FALSE(IsBrowserContentWindow(u"Chrome_WidgetWin_1", true, big));
    EXPECT_FALSE(IsBrowserContentWindow(u"mozillawindowclass", true, big));
    EXPECT_FALSE(IsBrowserContentWindow(u"", true, big));
    EXPECT_FALSE(IsBrowserContentWindow(u"MozillaWindowClass", false, big));
}

TEST(IsBrowserContentWindow, TwoHundredPixelsOrLessIsNotRecognised) {
    EXPECT_FALSE(IsBrowserContentWindow(u"Chrome_RenderWidgetHostHWND", true, Sized(50, 50, 200, 800)));
    EXPECT_FALSE(IsBrowserContentWindow(u"Chrome_RenderWidgetHostHWND", true, Sized(50, 50, 800, 200)));
    EXPECT_TRUE(IsBrowserContentWindow(u"Chrome_RenderWidgetHostHWND", true, Sized(-500, -50, 201, 201)));
}

TEST(HintLabelBox, NinePixelsPerDigitPlusFourteenEighteenHigh) {
    EXPECT_EQ(HintLabelBox(1, 5, 6), (HintBox{5, 6, 23, 18}));
    EXPECT_EQ(HintLabelBox(9, 0, 0), (HintBox{0, 0, 23, 18}));
    EXPECT_EQ(HintLabelBox(10, 0, 0), (HintBox{0, 0, 32, 18}));
    EXPECT_EQ(HintLabelBox(99, -3, 4), (HintBox{-3, 4, 32, 18}));
    EXPECT_EQ(HintLabelBox(100, 0, 0), (HintBox{0, 0, 41, 18}));
}

TEST(DecimalDigitCount, CountsDigits) {
    EXPECT_EQ(DecimalDigitCount(0), 1);
    EXPECT_EQ(DecimalDigitCount(7), 1);
    EXPECT_EQ(DecimalDigitCount(10), 2);
    EXPECT_EQ(DecimalDigitCount(99), 2);
    EXPECT_EQ(DecimalDigitCount(100), 3);
    EXPECT_EQ(DecimalDigitCount(12345), 5);
}

TEST(LayOutHints, PositionsAreRelativeToTheArea) {
    const ScreenRect area{-1920, -200, 0, 880};
    std::vector<ScreenRect> elements = {Sized(-1900, -190, 80, 24)};
    for (int i = 0; i < 10; ++i) {
        elements.push_back(Sized(-1000 + i * 50, 100, 40, 30));
    }
    const auto hints = LayOutHints(area, elements);
    ASSERT_EQ(hints.size(), 11u);
    EXPECT_EQ(hints[0].number, 1);
    EXPECT_EQ(hints[0].element, (HintBox{20, 10, 80, 24}));
    EXPECT_EQ(hints[0].label, (HintBox{20, 10, 23, 18}));
    EXPECT_EQ(hints[10].number, 11);
    EXPECT_EQ(hints[10].element, (HintBox{1370, 300, 40, 30}));
    EXPECT_EQ(hints[10].label, (HintBox{1370, 300, 32, 18}));
}

TEST(LayOutHints, NothingForAnEmptyArea) {
    const std::vector<ScreenRect> elements = {Sized(10, 10, 40, 30)};
    EXPECT_TRUE(LayOutHints(ScreenRect{0, 0, 0, 1080}, elements).empty());
    EXPECT_TRUE(LayOutHints(ScreenRect{0, 0, 1920, 0}, elements).empty());
    EXPECT_EQ(LayOutHints(ScreenRect{0, 0, 1, 1}, elements).size(), 1u);
    EXPECT_FALSE(HintAreaDrawable(ScreenRect{}));
}

TEST(HintClickPoint, CentreOfTheNumberedElement) {
    std::vector<ScreenRect> hints;
    for (int i = 0; i < 5; ++i) {
        hints.push_back(Sized(i * 100, 50, 41, 21));
    }
    EXPECT_EQ(HintClickPoint(hints, 5), (ScreenPoint{420, 60}));
    EXPECT_EQ(HintClickPoint(hints, 1), (ScreenPoint{20, 60}));
    EXPECT_FALSE(HintClickPoint(hints, 6).has_value());
    EXPECT_FALSE(HintClickPoint(hints, 0).has_value());
    EXPECT_FALSE(HintClickPoint(hints, -1).has_value());

    hints.pop_back();
    EXPECT_FALSE(HintClickPoint(hints, 5).has_value());
    EXPECT_EQ(HintClickPoint(hints, 4), (ScreenPoint{320, 60}));
}

TEST(HintClickPoint, NegativeCoordinatesTruncateTowardZero) {
    const std::vector<ScreenRect> hints = {ScreenRect{-101, -51, -10, -20}};
    EXPECT_EQ(HintClickPoint(hints, 1), (ScreenPoint{-55, -35}));
}

}  // namespace
}  // namespace zirvel
