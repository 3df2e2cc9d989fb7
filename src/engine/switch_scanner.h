// Switch scanning over a list of choices: a highlight moves over entries in
// turn (by itself every interval, or at each press of a step key) and a
// press of the select switch takes the highlighted one. An entry is one
// choice or a group of neighbouring choices; a press on a group scans the
// choices inside it. Pure logic on the caller's clock: the engine decides
// what the choices are and what taking one does.
#pragma once

#include <cstdint>
#include <vector>

namespace zirvel {

// Choices first .. first + count - 1 of the caller's list; count 1 is a
// single choice, more is a group.
struct ScanEntry {
    std::int32_t first = 0;
    std::int32_t count = 1;
    friend bool operator==(const ScanEntry&, const ScanEntry&) = default;
};

// `choiceCount` choices, the first `groupedCount` of them gathered into
// `groupCount` nearly equal neighbouring groups (when groupedCount exceeds
// `groupAbove`), each of the rest an entry of its own.
std::vector<ScanEntry> GroupedEntries(std::int32_t choiceCount, std::int32_t groupedCount, std::int32_t groupCount,
                                      std::int32_t groupAbove);

// Entries of `size` neighbouring choices each (the last may be shorter),
// for `choiceCount` choices.
std::vector<ScanEntry> EntriesOfSize(std::int32_t choiceCount, std::int32_t size);

class SwitchScanner {
public:
    // What a tick or a step did.
    enum class Change { None, Moved, GaveUp };

    // Starts on the first entry at `now`. `loops` rounds of the top entries
    // without a press give up (auto only); a round inside a group without a
    // press goes back to the groups.
    void Start(std::vector<ScanEntry> entries, std::uint64_t now, std::int32_t interval, std::int32_t loops);
    void Stop() { active_ = false; }
    bool Active() const { return active_; }

    // Auto mode: every step due by `now`, each exactly `interval` after the
    // one before (late ticks do not shift later steps).
    Change Tick(std::uint64_t now);
    // Step mode: one step now; never gives up by itself.
    Change Step(std::uint64_t now);
    // The select switch: a group is entered (-1 returned, the scan goes on
    // inside it at its first choice), a choice is returned and the scan stops.
    std::int32_t Press(std::uint64_t now);

    // The highlighted entry (a group or one choice).
    ScanEntry Highlighted() const;
    bool InGroup() const { return inGroup_; }
    // When the next step falls due in auto mode.
    std::uint64_t NextStepAt() const;

private:
    std::int32_t Size() const;
    // Moves one step; false when the scan gave up instead.
    bool Advance(bool giveUpAfterLoops, std::uint64_t stepTime);
    void Enter(std::int32_t topIndex, std::uint64_t now);

    bool active_ = false;
    std::vector<ScanEntry> entries_;
    std::int32_t interval_ = 1000;
    std::int32_t loops_ = 1;
    bool inGroup_ = false;
    std::int32_t groupIndex_ = 0;   // the top entry being scanned inside
    std::int32_t startIndex_ = 0;   // where this pass over the level began
    std::int32_t steps_ = 0;        // steps since then
    std::uint64_t passStart_ = 0;   // when this pass began
};

}  // namespace zirvel
