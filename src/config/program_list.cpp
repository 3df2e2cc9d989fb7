#include "config/program_list.h"

#include "config/classic_text.h"

namespace zirvel {

std::u16string ProgramListText(const std::vector<std::u16string>& programs) {
    std::u16string text;
    for (const std::u16string& program : programs) {
        if (!text.empty()) text += u", ";
        text += program;
    }
    return text;
}

std::vector<std::u16string> ParseProgramList(std::u16string_view text) {
    std::vector<std::u16string> programs;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find(u',', start);
        if (end == std::u16string_view::npos) end = text.size();
        std::u16string_view name = text.substr(start, end - start);
        while (!name.empty() && IsClassicSpace(name.front())) name.remove_prefix(1);
        while (!name.empty() && IsClassicSpace(name.back())) name.remove_suffix(1);
        if (!name.empty()) programs.emplace_back(name);
        start = end + 1;
    }
    return programs;
}

}  // namespace zirvel
