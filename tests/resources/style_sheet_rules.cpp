#include "style_sheet_rules.h"

#include <cctype>

namespace zirvel_test {

namespace {

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string WithoutComments(const std::string& text) {
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        if (text.compare(at, 2, "/*") == 0) {
            const std::size_t end = text.find("*/", at + 2);
            at = end == std::string::npos ? text.size() : end + 2;
        } else {
            kept += text[at++];
        }
    }
    return kept;
}

// Runs of white space become one space; none is kept inside [...].
std::string NormalSelector(const std::string& selector) {
    std::string normal;
    bool inBrackets = false;
    bool pendingSpace = false;
    for (const char c : Trimmed(selector)) {
        if (std::isspace(static_cast<unsigned char>(c))) {
            pendingSpace = !inBrackets;
            continue;
        }
        if (pendingSpace && !normal.empty()) {
            normal += ' ';
        }
        pendingSpace = false;
        inBrackets = c == '[' ? true : (c == ']' ? false : inBrackets);
        normal += c;
    }
    return normal;
}

std::string LowerCase(std::string text) {
    for (char& c : text) {
        c = char(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

}  // namespace

StyleSheetRules ParseStyleSheet(const std::string& text) {
    const std::string sheet = WithoutComments(text);
    StyleSheetRules rules;
    for (std::size_t at = 0;;) {
        const std::size_t open = sheet.find('{', at);
        const std::size_t close = sheet.find('}', open == std::string::npos ? at : open);
        if (open == std::string::npos || close == std::string::npos) {
            break;
        }
        const std::string selectors = sheet.substr(at, open - at);
        const std::string body = sheet.substr(open + 1, close - open - 1);
        at = close + 1;

        std::map<std::string, std::string> declarations;
        for (std::size_t start = 0; start < body.size();) {
            std::size_t end = body.find(';', start);
            end = end == std::string::npos ? body.size() : end;
            const std::string declaration = body.substr(start, end - start);
            start = end + 1;
            const std::size_t colon = declaration.find(':');
            if (colon != std::string::npos) {
                declarations[LowerCase(Trimmed(declaration.substr(0, colon)))] = Trimmed(declaration.substr(colon + 1));
            }
        }
        for (std::size_t start = 0; start <= selectors.size();) {
            std::size_t end = selectors.find(',', start);
            end = end == std::string::npos ? selectors.size() : end;
            const std::string selector = NormalSelector(selectors.substr(start, end - start));
            start = end + 1;
            if (!selector.empty()) {
                for (const auto& [property, value] : declarations) {
                    rules[selector][property] = value;
                }
            }
        }
    }
    return rules;
}

std::optional<std::string> Declared(const StyleSheetRules& rules, const std::string& selector,
                                    const std::string& property) {
    const auto rule = rules.find(selector);
    if (rule == rules.end()) {
        return std::nullopt;
    }
    const auto value = rule->second.find(property);
    if (value == rule->second.end()) {
        return std::nullopt;
    }
    return value->second;
}

}  // namespace zirvel_test
