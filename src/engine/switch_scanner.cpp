#include "engine/switch_scanner.h"

#include <algorithm>

namespace zirvel {

std::vector<ScanEntry> GroupedEntries(std::int32_t choiceCount, std::int32_t groupedCount, std::int32_t groupCount,
                                      std::int32_t groupAbove) {
    std::vector<ScanEntry> entries;
    std::int32_t next = 0;
    if (groupedCount > groupAbove && groupCount > 0) {
        for (std::int32_t g = 0; g < groupCount; ++g) {
            const std::int32_t end = (g + 1) * groupedCount / groupCount;
            if (end > next) entries.push_back({next, end - next});
            next = end;
        }
    }
    for (; next < choiceCount; ++next) entries.push_back({next, 1});
    return entries;
}

std::vector<ScanEntry> EntriesOfSize(std::int32_t choiceCount, std::int32_t size) {
    std::vector<ScanEntry> entries;
    const std::int32_t step = std::max<std::int32_t>(size, 1);
    for (std::int32_t first = 0; first < choiceCount; first += step) {
        entries.push_back({first, std::min(step, choiceCount - first)});
    }
    return entries;
}

void SwitchScanner::Start(std::vector<ScanEntry> entries, std::uint64_t now, std::int32_t interval,
                          std::int32_t loops) {
    entries_ = std::move(entries);
    interval_ = std::max<std::int32_t>(interval, 1);
    loops_ = std::max<std::int32_t>(loops, 1);
    active_ = !entries_.empty();
    inGroup_ = false;
    groupIndex_ = 0;
    startIndex_ = 0;
    steps_ = 0;
    passStart_ = now;
}

std::int32_t SwitchScanner::Size() const {
    return inGroup_ ? entries_[static_cast<std::size_t>(groupIndex_)].count : static_cast<std::int32_t>(entries_.size());
}

ScanEntry SwitchScanner::Highlighted() const {
    if (!active_) return {-1, 0};
    const std::int32_t index = (startIndex_ + steps_) % Size();
    if (inGroup_) return {entries_[static_cast<std::size_t>(groupIndex_)].first + index, 1};
    return entries_[static_cast<std::size_t>(index)];
}

std::uint64_t SwitchScanner::NextStepAt() const {
    return passStart_ + static_cast<std::uint64_t>(steps_ + 1) * static_cast<std::uint64_t>(interval_);
}

bool SwitchScanner::Advance(bool giveUpAfterLoops, std::uint64_t stepTime) {
    if (inGroup_) {
        if (steps_ + 1 >= Size()) {
            // A whole round inside the group without a press: back to the groups, on this one.
            inGroup_ = false;
            startIndex_ = groupIndex_;
            steps_ = 0;
            passStart_ = stepTime;
            return true;
        }
    } else if (giveUpAfterLoops && steps_ + 1 >= Size() * loops_) {
        active_ = false;
        return false;
    }
    ++steps_;
    return true;
}

SwitchScanner::Change SwitchScanner::Tick(std::uint64_t now) {
    Change change = Change::None;
    while (active_ && now >= NextStepAt()) {
        if (!Advance(true, NextStepAt())) return Change::GaveUp;
        change = Change::Moved;
    }
    return change;
}

SwitchScanner::Change SwitchScanner::Step(std::uint64_t now) {
    if (!active_) return Change::None;
    Advance(false, now);
    return Change::Moved;
}

void SwitchScanner::Enter(std::int32_t topIndex, std::uint64_t now) {
    inGroup_ = true;
    groupIndex_ = topIndex;
    startIndex_ = 0;
    steps_ = 0;
    passStart_ = now;
}

std::int32_t SwitchScanner::Press(std::uint64_t now) {
    if (!active_) return -1;
    const ScanEntry entry = Highlighted();
    if (!inGroup_ && entry.count > 1) {
        Enter((startIndex_ + steps_) % Size(), now);
        return -1;
    }
    active_ = false;
    return entry.first;
}

}  // namespace zirvel
