// The scan's order, groups, rounds and timing, on a clock the test moves.
#include "engine/switch_scanner.h"

#include <gtest/gtest.h>

#include <vector>

namespace zirvel {
namespace {

using Change = SwitchScanner::Change;

std::vector<ScanEntry> Singles(std::int32_t count) { return GroupedEntries(count, 0, 0, 0); }

TEST(ScanEntries, UpToTheLimitEveryChoiceIsAnEntry) {
    EXPECT_EQ(GroupedEntries(11, 8, 4, 8), Singles(11));
    EXPECT_EQ(Singles(3), (std::vector<ScanEntry>{{0, 1}, {1, 1}, {2, 1}}));
}

TEST(ScanEntries, AboveTheLimitTheGroupedChoicesFormNearlyEqualQuarters) {
    EXPECT_EQ(GroupedEntries(27, 24, 4, 8),
              (std::vector<ScanEntry>{{0, 6}, {6, 6}, {12, 6}, {18, 6}, {24, 1}, {25, 1}, {26, 1}}));
    EXPECT_EQ(GroupedEntries(9, 9, 4, 8), (std::vector<ScanEntry>{{0, 2}, {2, 2}, {4, 2}, {6, 3}}));
}

TEST(ScanEntries, FixedSizeRows) {
    EXPECT_EQ(EntriesOfSize(7, 3), (std::vector<ScanEntry>{{0, 3}, {3, 3}, {6, 1}}));
    EXPECT_EQ(EntriesOfSize(0, 3), std::vector<ScanEntry>{});
}

TEST(SwitchScanner, AutoMovesExactlyEveryIntervalAndGivesUpAfterTheRounds) {
    SwitchScanner scan;
    scan.Start(Singles(3), 1000, 500, 2);
    EXPECT_EQ(scan.Highlighted().first, 0);
    EXPECT_EQ(scan.Tick(1499), Change::None);
    EXPECT_EQ(scan.Tick(1500), Change::Moved);
    EXPECT_EQ(scan.Highlighted().first, 1);
    // A late tick does not shift the steps after it.
    EXPECT_EQ(scan.Tick(2013), Change::Moved);
    EXPECT_EQ(scan.Highlighted().first, 2);
    EXPECT_EQ(scan.NextStepAt(), 2500u);
    EXPECT_EQ(scan.Tick(2500), Change::Moved);  // second round
    EXPECT_EQ(scan.Highlighted().first, 0);
    EXPECT_EQ(scan.Tick(3499), Change::Moved);
    EXPECT_EQ(scan.Highlighted().first, 1);
    EXPECT_TRUE(scan.Active());
    EXPECT_EQ(scan.Tick(3999), Change::Moved);
    EXPECT_EQ(scan.Highlighted().first, 2);
    // The last choice of the last round gets its whole interval too.
    EXPECT_EQ(scan.Tick(3999 + 0), Change::None);
    EXPECT_EQ(scan.Tick(4000), Change::GaveUp);
    EXPECT_FALSE(scan.Active());
    EXPECT_EQ(scan.Press(4000), -1);
}

TEST(SwitchScanner, APressTakesTheHighlightedChoiceAndStops) {
    SwitchScanner scan;
    scan.Start(Singles(4), 0, 100, 3);
    scan.Tick(250);
    EXPECT_EQ(scan.Press(260), 2);
    EXPECT_FALSE(scan.Active());
    EXPECT_EQ(scan.Tick(10000), Change::None);
}

TEST(SwitchScanner, AGroupIsEnteredAndItsChoicesScannedFromItsFirst) {
    SwitchScanner scan;
    scan.Start(GroupedEntries(26, 24, 4, 8), 0, 100, 3);
    scan.Tick(200);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{12, 6}));
    EXPECT_EQ(scan.Press(250), -1);
    EXPECT_TRUE(scan.InGroup());
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{12, 1}));
    EXPECT_EQ(scan.Tick(349), Change::None);
    EXPECT_EQ(scan.Tick(350), Change::Moved);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{13, 1}));
    scan.Tick(550);
    EXPECT_EQ(scan.Press(560), 15);
}

TEST(SwitchScanner, ARoundInsideAGroupWithoutAPressGoesBackToThatGroup) {
    SwitchScanner scan;
    scan.Start(GroupedEntries(12, 12, 4, 8), 0, 100, 1);
    scan.Tick(100);
    scan.Press(100);  // the second group: 3, 4, 5
    scan.Tick(299);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{4, 1}));
    scan.Tick(300);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{5, 1}));
    EXPECT_EQ(scan.Tick(400), Change::Moved);
    EXPECT_FALSE(scan.InGroup());
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{3, 3}));
    // A fresh round of the groups from there: one round (loops 1) of four.
    scan.Tick(700);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{0, 3}));
    EXPECT_EQ(scan.Tick(799), Change::None);
    EXPECT_EQ(scan.Tick(800), Change::GaveUp);
}

TEST(SwitchScanner, StepModeMovesOnlyOnStepsAndNeverGivesUp) {
    SwitchScanner scan;
    scan.Start(GroupedEntries(11, 9, 4, 8), 0, 100, 1);  // 4 groups, then choices 9 and 10
    for (int i = 0; i < 13; ++i) EXPECT_EQ(scan.Step(static_cast<std::uint64_t>(i)), Change::Moved);
    EXPECT_TRUE(scan.Active());
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{2, 2}));  // 13 steps over 6 entries
    EXPECT_EQ(scan.Press(20), -1);
    scan.Step(21);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{3, 1}));
    scan.Step(22);  // round inside the group done
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{2, 2}));
    for (std::uint64_t time = 23; time < 27; ++time) scan.Step(time);
    EXPECT_EQ(scan.Highlighted(), (ScanEntry{10, 1}));
    EXPECT_EQ(scan.Press(27), 10);
}

// With 24 fields and five more choices (two arrows, grid, hints, close),
// every choice is at most 8 steps away.
TEST(SwitchScanner, EveryChoiceOfATwentyFourFieldWheelTakesAtMostEightSteps) {
    const std::vector<ScanEntry> entries = GroupedEntries(29, 24, 4, 8);
    int worst = 0;
    for (std::int32_t choice = 0; choice < 29; ++choice) {
        SwitchScanner scan;
        scan.Start(entries, 0, 100, 3);
        int steps = 0;
        std::int32_t taken = -1;
        while (taken < 0 && steps < 100) {
            const ScanEntry highlighted = scan.Highlighted();
            if (highlighted.first <= choice && choice < highlighted.first + highlighted.count) {
                taken = scan.Press(0);
                if (taken >= 0) break;
                continue;
            }
            scan.Step(0);
            ++steps;
        }
        EXPECT_EQ(taken, choice);
        worst = std::max(worst, steps);
    }
    EXPECT_EQ(worst, 8);
}

}  // namespace
}  // namespace zirvel
