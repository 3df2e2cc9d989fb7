// A wheel's programs as one line of text: the names separated by commas, as
// the editors show them in their "Programy" fields.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zirvel {

std::u16string ProgramListText(const std::vector<std::u16string>& programs);

// The names between the commas, without the spaces around them; empty
// names are left out. Cuts nothing: the caller decides about too many.
std::vector<std::u16string> ParseProgramList(std::u16string_view text);

}  // namespace zirvel
