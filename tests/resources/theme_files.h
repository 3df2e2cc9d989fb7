// The theme sheets in resources/themes, read as the program reads them.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace zirvel_test {

inline const std::vector<std::string>& ThemeIds() {
    static const std::vector<std::string> ids = {"fluent", "neon", "pro"};
    return ids;
}

inline std::string ThemePath(const std::string& id) { return std::string(ZIRVEL_THEME_DIRECTORY) + "/" + id + ".qss"; }

inline std::string ReadTheme(const std::string& id) {
    std::ifstream file(ThemePath(id), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace zirvel_test
