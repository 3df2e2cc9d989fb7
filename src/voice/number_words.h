// Polish number words as the speech model writes them.
#pragma once

#include <string>

namespace zirvel {

// The words for 1..99 ("dwadzieścia jeden" for 21); empty for any other n.
std::u16string NumberWord(int n);

}  // namespace zirvel
