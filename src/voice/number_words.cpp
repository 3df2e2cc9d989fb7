#include "voice/number_words.h"

#include <array>
#include <string_view>

namespace zirvel {
namespace {

constexpr std::array<std::u16string_view, 20> kUnitWords = {
    u"",
    u"jeden",
    u"dwa",
    u"trzy",
    u"cztery",
    u"pięć",
    u"sześć",
    u"siedem",
    u"osiem",
    u"dziewięć",
    u"dziesięć",
    u"jedenaście",
    u"dwanaście",
    u"trzynaście",
    u"czternaście",
    u"piętnaście",
    u"szesnaście",
    u"siedemnaście",
    u"osiemnaście",
    u"dziewiętnaście",
};

// Indexed by the tens digit; 0 and 1 are covered by kUnitWords.
constexpr std::array<std::u16string_view, 10> kTensWords = {
    u"",
    u"",
    u"dwadzieścia",
    u"trzydzieści",
    u"czterdzieści",
    u"pięćdziesiąt",
    u"sześćdziesiąt",
    u"siedemdziesiąt",
    u"osiemdziesiąt",
    u"dziewięćdziesiąt",
};

}  // namespace

std::u16string NumberWord(int n) {
    if (n < 1 || n > 99) return {};
    if (n < 20) return std::u16string(kUnitWords[static_cast<std::size_t>(n)]);
    std::u16string word(kTensWords[static_cast<std::size_t>(n / 10)]);
    if (n % 10 != 0) {
        word += u' ';
        word += kUnitWords[static_cast<std::size_t>(n % 10)];
    }
    return word;
}

}  // namespace zirvel
