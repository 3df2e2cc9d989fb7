// A Qt style sheet read as plain rules, enough to check its colours: the
// comments dropped, each selector of a list on its own, declarations in
// file order (a later one wins).
#pragma once

#include <map>
#include <optional>
#include <string>

namespace zirvel_test {

// selector -> property -> value. Selectors keep Qt's spelling with the
// spaces collapsed ("QLabel[role=\"ok\"]", "QMenu::item:selected").
using StyleSheetRules = std::map<std::string, std::map<std::string, std::string>>;

StyleSheetRules ParseStyleSheet(const std::string& text);

// The value of one property of one selector, if the sheet gives it.
std::optional<std::string> Declared(const StyleSheetRules& rules, const std::string& selector,
                                    const std::string& property);

}  // namespace zirvel_test
