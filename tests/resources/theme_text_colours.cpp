#include "theme_text_colours.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <set>

namespace zirvel_test {

namespace {

constexpr double kTextMinimum = 4.5;
constexpr double kDisabledTextMinimum = 3.0;
constexpr int kLongestChain = 16;

const std::vector<std::string> kAnySurface = {"QMainWindow", "QDialog", "QMessageBox", "QFrame#Card"};

// The start of the selector's last compound ("QMenu::item" in "QMenu QMenu::item").
std::size_t LastCompound(const std::string& selector) {
    const std::size_t space = selector.rfind(' ');
    return space == std::string::npos ? 0 : space + 1;
}

std::optional<std::string> WithoutLastState(const std::string& selector) {
    const std::size_t colon = selector.rfind(':');
    if (colon == std::string::npos || colon < LastCompound(selector) || colon == 0 || selector[colon - 1] == ':') {
        return std::nullopt;
    }
    return selector.substr(0, colon);
}

std::optional<std::string> WithoutSubControl(const std::string& selector) {
    const std::size_t colons = selector.rfind("::");
    if (colons == std::string::npos || colons < LastCompound(selector)) {
        return std::nullopt;
    }
    return selector.substr(0, colons);
}

std::optional<std::string> WithoutQualifiers(const std::string& selector) {
    static const std::regex kQualifier(R"(#[A-Za-z0-9_-]+|\[[^\]]*\])");
    const std::size_t start = LastCompound(selector);
    const std::string last = std::regex_replace(selector.substr(start), kQualifier, "");
    if (last.size() == selector.size() - start) {
        return std::nullopt;
    }
    return selector.substr(0, start) + last;
}

std::optional<std::string> WithoutAncestors(const std::string& selector) {
    const std::size_t start = LastCompound(selector);
    if (start == 0) {
        return std::nullopt;
    }
    return selector.substr(start);
}

bool DrawsNoText(const std::string& selector) {
    static const char* const kTextlessParts[] = {
        "::indicator", "::groove",   "::handle",   "::sub-page",   "::add-page",  "::add-line",    "::sub-line",
        "::separator", "::drop-down", "::down-arrow", "::up-arrow", "::up-button", "::down-button", "::chunk",
        "::branch"};
    for (const char* part : kTextlessParts) {
        if (selector.find(part) != std::string::npos) {
            return true;
        }
    }
    return selector.rfind("QScrollBar", 0) == 0 || selector.rfind("QSlider", 0) == 0;
}

std::vector<std::string> HexTokens(const std::string& value) {
    static const std::regex kHex("#[0-9A-Fa-f]{6}(?![0-9A-Fa-f])|#[0-9A-Fa-f]{3}(?![0-9A-Fa-f])");
    std::vector<std::string> tokens;
    for (auto match = std::sregex_iterator(value.begin(), value.end(), kHex); match != std::sregex_iterator(); ++match) {
        tokens.push_back(match->str());
    }
    return tokens;
}

class Resolver {
public:
    explicit Resolver(const StyleSheetRules& rules) : rules_(rules) {}

    std::optional<Rgb> TextColour(const std::string& selector, const std::string& property) {
        std::optional<std::string> current = selector;
        for (int step = 0; current && step < kLongestChain; ++step) {
            if (const auto value = Declared(rules_, *current, property)) {
                const auto colour = ParseHexColour(*value);
                if (!colour) {
                    problems_.push_back(*current + " { " + property + ": " + *value + " }: not a #hex colour");
                }
                return colour;
            }
            current = NextForText(*current);
        }
        problems_.push_back(selector + ": no " + property + " found");
        return std::nullopt;
    }

    std::optional<std::vector<Rgb>> Backgrounds(const std::string& selector, int depth = 0) {
        if (depth > kLongestChain) {
            problems_.push_back(selector + ": the placements go round in a circle");
            return std::nullopt;
        }
        const std::optional<std::string> own = OwnBackground(selector);
        if (own && *own != "transparent" && *own != "none") {
            return ColoursOfBackground(selector, *own);
        }
        if (const auto parent = WithoutLastState(selector)) {
            return Backgrounds(*parent, depth + 1);
        }
        if (const auto parent = WithoutSubControl(selector)) {
            return Backgrounds(*parent, depth + 1);
        }
        if (const auto placed = Placements().find(selector); placed != Placements().end()) {
            std::vector<Rgb> all;
            for (const std::string& surface : placed->second) {
                const auto colours = Backgrounds(surface, depth + 1);
                if (!colours) {
                    return std::nullopt;
                }
                all.insert(all.end(), colours->begin(), colours->end());
            }
            return all;
        }
        if (const auto parent = WithoutQualifiers(selector)) {
            return Backgrounds(*parent, depth + 1);
        }
        problems_.push_back(selector + ": no background found; say in Placements() where it is drawn");
        return std::nullopt;
    }

    std::optional<std::vector<Rgb>> ColoursOf(const std::string& selector, const std::string& property) {
        return ColoursOfBackground(selector, *Declared(rules_, selector, property));
    }

    std::vector<std::string> TakeProblems() { return std::move(problems_); }

private:
    static std::optional<std::string> NextForText(const std::string& selector) {
        for (const auto& step : {WithoutLastState, WithoutSubControl, WithoutQualifiers, WithoutAncestors}) {
            if (auto next = step(selector)) {
                return next;
            }
        }
        return selector == "QWidget" ? std::nullopt : std::optional<std::string>("QWidget");
    }

    std::optional<std::string> OwnBackground(const std::string& selector) const {
        if (auto colour = Declared(rules_, selector, "background-color")) {
            return colour;
        }
        return Declared(rules_, selector, "background");
    }

    // Every stop of a gradient is a background of its own. A background
    // that is partly transparent lets an unknown surface through.
    std::optional<std::vector<Rgb>> ColoursOfBackground(const std::string& selector, const std::string& value) {
        const std::vector<std::string> tokens = HexTokens(value);
        if (tokens.empty() || value.find("transparent") != std::string::npos) {
            problems_.push_back(selector + " background \"" + value + "\": not one or more #hex colours");
            return std::nullopt;
        }
        std::vector<Rgb> colours;
        for (const std::string& token : tokens) {
            colours.push_back(*ParseHexColour(token));
        }
        return colours;
    }

    const StyleSheetRules& rules_;
    std::vector<std::string> problems_;
};

void AddPairs(ThemeTextColours& colours, const std::string& selector, const std::string& what,
              const std::optional<Rgb>& text, const std::optional<std::vector<Rgb>>& backgrounds) {
    if (!text || !backgrounds) {
        return;
    }
    const double minimum = selector.find(":disabled") != std::string::npos ? kDisabledTextMinimum : kTextMinimum;
    std::vector<Rgb> seen;
    for (const Rgb& background : *backgrounds) {
        if (std::find(seen.begin(), seen.end(), background) == seen.end()) {
            seen.push_back(background);
            colours.pairs.push_back({selector, what, *text, background, minimum});
        }
    }
}

}  // namespace

const std::map<std::string, std::vector<std::string>>& Placements() {
    static const std::map<std::string, std::vector<std::string>> placements = {
        {"QWidget", kAnySurface},
        {"QLabel", kAnySurface},
        {"QCheckBox", kAnySurface},
        {"QRadioButton", kAnySurface},
        {"QGroupBox", kAnySurface},
        {"QStackedWidget", {"QMainWindow"}},
        {"QFrame#Card", {"QMainWindow"}},
        {"QMessageBox", {"QDialog"}},
        {"QMessageBox QLabel", {"QMessageBox"}},
        {"QLabel[role=\"pageTitle\"]", {"QMainWindow"}},
        {"QLabel[role=\"cardTitle\"]", {"QFrame#Card"}},
        {"QLabel[role=\"value\"]", {"QFrame#Card"}},
        {"QLabel[role=\"ok\"]", {"QFrame#Card"}},
    };
    return placements;
}

const std::vector<std::string>& FrontEndHooks() {
    static const std::vector<std::string> hooks = {
        "QListWidget#Sidebar::item",      "QListWidget#Sidebar::item:hover", "QListWidget#Sidebar::item:selected",
        "QPushButton#Primary",            "QLabel[role=\"pageTitle\"]",      "QLabel[role=\"cardTitle\"]",
        "QLabel[role=\"value\"]",         "QLabel[role=\"ok\"]"};
    return hooks;
}

ThemeTextColours TextColoursOf(const StyleSheetRules& rules) {
    ThemeTextColours colours;
    Resolver resolver(rules);

    std::set<std::string> textSelectors(FrontEndHooks().begin(), FrontEndHooks().end());
    textSelectors.insert("QWidget");
    for (const auto& [selector, declarations] : rules) {
        if (!DrawsNoText(selector) &&
            (declarations.count("color") || declarations.count("background-color") || declarations.count("background"))) {
            textSelectors.insert(selector);
        }
    }
    for (const std::string& selector : textSelectors) {
        AddPairs(colours, selector, "text", resolver.TextColour(selector, "color"), resolver.Backgrounds(selector));
    }

    for (const auto& [selector, declarations] : rules) {
        if (declarations.count("selection-background-color")) {
            AddPairs(colours, selector, "selected text", resolver.TextColour(selector, "selection-color"),
                     resolver.ColoursOf(selector, "selection-background-color"));
        }
        if (declarations.count("alternate-background-color")) {
            AddPairs(colours, selector, "text on alternate rows", resolver.TextColour(selector, "color"),
                     resolver.ColoursOf(selector, "alternate-background-color"));
        }
    }
    if (rules.count("QProgressBar")) {
        AddPairs(colours, "QProgressBar", "text over the filled part", resolver.TextColour("QProgressBar", "color"),
                 resolver.Backgrounds("QProgressBar::chunk"));
    }
    colours.problems = resolver.TakeProblems();
    return colours;
}

}  // namespace zirvel_test
