// Turning JSON numbers into the integers the configuration stores.
#pragma once

#include <cstdint>

namespace zirvel {

// Truncated toward zero; a value whose truncation does not fit in 32 bits
// (NaN and infinities included) gives 0.
std::int32_t TruncateToInt32(double number);

// TruncateToInt32, then negative gives 0 and above `maximum` gives `maximum`.
std::int32_t ClampedMilliseconds(double number, std::int32_t maximum);

// TruncateToInt32, then clamped to minimum..maximum.
std::int32_t ClampedNumber(double number, std::int32_t minimum, std::int32_t maximum);

}  // namespace zirvel
