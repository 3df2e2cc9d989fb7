#include "config/json_number.h"

#include <cmath>

namespace zirvel {

std::int32_t TruncateToInt32(double number) {
    if (!std::isfinite(number)) return 0;
    const double truncated = std::trunc(number);
    if (truncated < -2147483648.0 || truncated > 2147483647.0) return 0;
    return static_cast<std::int32_t>(truncated);
}

std::int32_t ClampedMilliseconds(double number, std::int32_t maximum) {
    const std::int32_t value = TruncateToInt32(number);
    if (value < 0) return 0;
    return value > maximum ? maximum : value;
}

std::int32_t ClampedNumber(double number, std::int32_t minimum, std::int32_t maximum) {
    const std::int32_t value = TruncateToInt32(number);
    if (value < minimum) return minimum;
    return value > maximum ? maximum : value;
}

}  // namespace zirvel
