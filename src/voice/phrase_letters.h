// Lower-casing the letters of a voice phrase. The recogniser's vocabulary
// is lower case, so a capital left in a phrase can never be heard.
#pragma once

namespace zirvel {

// The small letter of a capital, the same on every platform and in every
// locale: ASCII, Latin-1, Latin Extended-A (Polish ĄĆĘŁŃÓŚŹŻ among them),
// basic Greek and Cyrillic. Anything else is returned as it is.
char16_t LowerPhraseLetter(char16_t c);

}  // namespace zirvel
