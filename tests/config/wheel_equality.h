// Field-by-field comparison of wheel models, with readable failures.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/key_code.h"
#include "config/wheel.h"

namespace zirvel_test {

inline void ExpectSameKey(const zirvel::KeyCode& expected, const zirvel::KeyCode& actual) {
    EXPECT_EQ(expected.vk, actual.vk);
    EXPECT_EQ(expected.extended, actual.extended);
    EXPECT_EQ(expected.isMouse, actual.isMouse);
    EXPECT_EQ(expected.button, actual.button);
    EXPECT_EQ(expected.valid, actual.valid);
    EXPECT_EQ(expected.name, actual.name);
}

// An Open step uses only its target; its key and value carry nothing.
inline void ExpectSameStep(const zirvel::Step& expected, const zirvel::Step& actual) {
    EXPECT_EQ(static_cast<int>(expected.kind), static_cast<int>(actual.kind));
    if (expected.kind == zirvel::StepKind::Open) {
        EXPECT_EQ(expected.target, actual.target);
        return;
    }
    ExpectSameKey(expected.key, actual.key);
    EXPECT_EQ(expected.value, actual.value);
    EXPECT_EQ(expected.target, actual.target);
}

inline void ExpectSameFunction(const zirvel::WheelFunction& expected,
                               const zirvel::WheelFunction& actual) {
    EXPECT_EQ(expected.name, actual.name);
    EXPECT_EQ(expected.delay, actual.delay);
    EXPECT_EQ(expected.hasColor, actual.hasColor);
    EXPECT_EQ(expected.color, actual.color);
    EXPECT_EQ(expected.icon, actual.icon);
    EXPECT_EQ(expected.voice, actual.voice);
    ASSERT_EQ(expected.steps.size(), actual.steps.size());
    for (std::size_t i = 0; i < expected.steps.size(); ++i) {
        SCOPED_TRACE("step " + std::to_string(i));
        ExpectSameStep(expected.steps[i], actual.steps[i]);
    }
}

inline void ExpectSameFunctions(const std::vector<zirvel::WheelFunction>& expected,
                                const std::vector<zirvel::WheelFunction>& actual) {
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE("function " + std::to_string(i));
        ExpectSameFunction(expected[i], actual[i]);
    }
}

inline void ExpectSameWheels(const std::vector<zirvel::Wheel>& expected,
                             const std::vector<zirvel::Wheel>& actual) {
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE("wheel " + std::to_string(i));
        EXPECT_EQ(expected[i].name, actual[i].name);
        EXPECT_EQ(expected[i].apps, actual[i].apps);
        ExpectSameFunctions(expected[i].functions, actual[i].functions);
    }
}

// Builders for expected models.
inline zirvel::Step KeyStep(std::u16string_view keyName, zirvel::StepKind kind,
                            std::int32_t value) {
    zirvel::Step step;
    step.key = zirvel::ParseKeyName(keyName);
    step.kind = kind;
    step.value = value;
    return step;
}

inline zirvel::Step OpenStep(std::u16string target) {
    zirvel::Step step;
    step.kind = zirvel::StepKind::Open;
    step.target = std::move(target);
    return step;
}

}  // namespace zirvel_test
