#include "voice/phrase_letters.h"

namespace zirvel {
namespace {

constexpr bool Between(char16_t c, char16_t first, char16_t last) { return c >= first && c <= last; }

char16_t Plus(char16_t c, int offset) { return static_cast<char16_t>(c + offset); }

// Latin Extended-A pairs each capital with the small letter after it; the
// pairs start on an even code point before U+0138 and after U+0149, and on
// an odd one between them (Ĺ…Ň) and from U+0179 (Ź Ż Ž).
char16_t LowerLatinExtendedA(char16_t c) {
    if (c == u'\u0130') return u'i';       // İ: the dotless small i is Turkish only
    if (c == u'\u0178') return u'\u00FF';  // Ÿ → ÿ, whose capital lies outside Latin-1
    const bool oddCapitals = Between(c, u'\u0139', u'\u0148') || Between(c, u'\u0179', u'\u017E');
    const bool evenCapitals = Between(c, u'\u0100', u'\u0137') || Between(c, u'\u014A', u'\u0177');
    if (oddCapitals && c % 2 == 1) return Plus(c, 1);
    if (evenCapitals && c % 2 == 0) return Plus(c, 1);
    return c;
}

}  // namespace

char16_t LowerPhraseLetter(char16_t c) {
    if (Between(c, u'A', u'Z')) return Plus(c, 0x20);
    if (Between(c, u'\u00C0', u'\u00DE') && c != u'\u00D7') return Plus(c, 0x20);  // × is no letter
    if (Between(c, u'\u0100', u'\u017F')) return LowerLatinExtendedA(c);
    if (c == u'\u0386') return u'\u03AC';                                          // Ά
    if (Between(c, u'\u0388', u'\u038A')) return Plus(c, 0x25);                    // Έ Ή Ί
    if (c == u'\u038C') return u'\u03CC';                                          // Ό
    if (Between(c, u'\u038E', u'\u038F')) return Plus(c, 0x3F);                    // Ύ Ώ
    if (Between(c, u'\u0391', u'\u03AB') && c != u'\u03A2') return Plus(c, 0x20);  // Α…Ϋ
    if (Between(c, u'\u0400', u'\u040F')) return Plus(c, 0x50);                    // Ѐ…Џ
    if (Between(c, u'\u0410', u'\u042F')) return Plus(c, 0x20);                    // А…Я
    return c;
}

}  // namespace zirvel
