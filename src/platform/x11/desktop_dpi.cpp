#include "platform/x11/desktop_dpi.h"

#include <charconv>
#include <cmath>

#include "core/dpi_scale.h"

namespace zirvel::x11 {
namespace {

constexpr std::string_view kDpiResource = "Xft.dpi";
constexpr double kLargestDpi = 2000.0;

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

}  // namespace

std::uint32_t DpiFromResources(std::string_view resources) {
    std::uint32_t dpi = kDefaultDpi;
    while (!resources.empty()) {
        const std::size_t end = resources.find('\n');
        const std::string_view line = resources.substr(0, end);
        resources = end == std::string_view::npos ? std::string_view{} : resources.substr(end + 1);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || Trimmed(line.substr(0, colon)) != kDpiResource) continue;
        const std::string_view value = Trimmed(line.substr(colon + 1));
        double parsed = 0.0;
        const auto [rest, error] = std::from_chars(value.data(), value.data() + value.size(), parsed);
        // The last entry wins, as in Xrm; a broken one leaves the default.
        dpi = error == std::errc{} && rest == value.data() + value.size() && parsed >= 1.0 && parsed <= kLargestDpi
                  ? static_cast<std::uint32_t>(std::lround(parsed))
                  : kDefaultDpi;
    }
    return dpi;
}

}  // namespace zirvel::x11
