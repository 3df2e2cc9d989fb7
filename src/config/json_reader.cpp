#include "config/json_reader.h"

#include <string_view>

#include "config/classic_text.h"
#include "config/file_io.h"
#include "config/utf.h"

namespace zirvel {
namespace {

bool IsNumberCharacter(char16_t c) {
    return IsClassicDigit(c) || c == u'.' || c == u'e' || c == u'E' || c == u'-' || c == u'+';
}

bool MatchLiteral(JsonCursor& cursor, std::u16string_view literal) {
    if (cursor.text.size() - cursor.position < literal.size()) return false;
    if (cursor.text.substr(cursor.position, literal.size()) != literal) return false;
    cursor.position += literal.size();
    return true;
}

// A sign, then any run of digits, points, exponent letters and signs; the
// token is converted as far as the runtime's wcstod converts it.
bool ParseNumber(JsonCursor& cursor, double& number) {
    const std::size_t start = cursor.position;
    if (!cursor.AtEnd() && (cursor.Current() == u'-' || cursor.Current() == u'+')) ++cursor.position;
    while (!cursor.AtEnd() && IsNumberCharacter(cursor.Current())) ++cursor.position;
    if (cursor.position == start) return false;
    number = ClassicWcstod(cursor.text.substr(start, cursor.position - start));
    return true;
}

bool ParseEscape(JsonCursor& cursor, std::u16string& out) {
    if (cursor.AtEnd()) return false;
    const char16_t escape = cursor.text[cursor.position++];
    switch (escape) {
        case u'"': out += u'"'; return true;
        case u'/': out += u'/'; return true;
        case u'\\': out += u'\\'; return true;
        case u'b': out += u'\b'; return true;
        case u'f': out += u'\f'; return true;
        case u'n': out += u'\n'; return true;
        case u'r': out += u'\r'; return true;
        case u't': out += u'\t'; return true;
        case u'u':
            // Exactly four units are consumed, whatever they are; the value is
            // what a base-16 wcstoul makes of them.
            if (cursor.text.size() - cursor.position < 4) return false;
            out += static_cast<char16_t>(ClassicWcstoulHex(cursor.text.substr(cursor.position, 4)));
            cursor.position += 4;
            return true;
        default:
            return false;
    }
}

// The cursor stands on the opening quote.
bool ParseString(JsonCursor& cursor, std::u16string& out) {
    out.clear();
    ++cursor.position;
    if (cursor.AtEnd()) return false;
    const std::u16string_view text = cursor.text;
    while (!cursor.AtEnd()) {
        // Plain characters, raw line breaks included, are copied as a run.
        std::size_t runEnd = cursor.position;
        while (runEnd < text.size() && text[runEnd] != u'"' && text[runEnd] != u'\\') ++runEnd;
        out.append(text, cursor.position, runEnd - cursor.position);
        cursor.position = runEnd;
        if (cursor.AtEnd()) return false;
        const char16_t c = text[cursor.position++];
        if (c == u'"') return true;
        if (!ParseEscape(cursor, out)) return false;
    }
    return false;
}

bool ParseScalar(JsonCursor& cursor, JsonValue& value) {
    switch (cursor.Current()) {
        case u'"':
            value.kind = JsonKind::String;
            return ParseString(cursor, value.string);
        case u't':
            value.kind = JsonKind::Bool;
            value.boolean = true;
            return MatchLiteral(cursor, u"true");
        case u'f':
            value.kind = JsonKind::Bool;
            value.boolean = false;
            return MatchLiteral(cursor, u"false");
        case u'n':
            value.kind = JsonKind::Null;
            return MatchLiteral(cursor, u"null");
        default:
            value.kind = JsonKind::Number;
            return ParseNumber(cursor, value.number);
    }
}

// An array or object under construction; `key` is the member whose value is
// being parsed.
struct OpenContainer {
    JsonValue value;
    std::u16string key;
};

}  // namespace

void SkipJsonWhitespace(JsonCursor& cursor) {
    while (!cursor.AtEnd()) {
        const char16_t c = cursor.Current();
        if (c != u' ' && c != u'\t' && c != u'\r' && c != u'\n') return;
        ++cursor.position;
    }
}

// Written as a loop over an explicit stack of open containers rather than by
// recursion, so that no nesting depth can exhaust the call stack.
bool ParseJsonValue(JsonCursor& cursor, JsonValue& value) {
    enum class Expect { Value, Key, Separator };
    std::vector<OpenContainer> open;
    JsonValue finished;
    Expect expect = Expect::Value;

    for (;;) {
        if (expect == Expect::Key) {
            SkipJsonWhitespace(cursor);
            if (cursor.AtEnd() || cursor.Current() != u'"') return false;
            if (!ParseString(cursor, open.back().key)) return false;
            SkipJsonWhitespace(cursor);
            if (cursor.AtEnd() || cursor.Current() != u':') return false;
            ++cursor.position;
            expect = Expect::Value;
            continue;
        }

        if (expect == Expect::Value) {
            SkipJsonWhitespace(cursor);
            if (cursor.AtEnd()) return false;
            const char16_t c = cursor.Current();
            if (c == u'[' || c == u'{') {
                const bool isArray = c == u'[';
                ++cursor.position;
                SkipJsonWhitespace(cursor);
                finished = JsonValue();
                finished.kind = isArray ? JsonKind::Array : JsonKind::Object;
                if (!cursor.AtEnd() && cursor.Current() == (isArray ? u']' : u'}')) {
                    ++cursor.position;  // empty container: finished as it is
                } else {
                    open.push_back(OpenContainer{std::move(finished), {}});
                    expect = isArray ? Expect::Value : Expect::Key;
                    continue;
                }
            } else {
                finished = JsonValue();
                if (!ParseScalar(cursor, finished)) return false;
            }
        }

        // A value is finished: hand it to its container, closing containers
        // for as long as their closing bracket follows.
        for (;;) {
            if (open.empty()) {
                value = std::move(finished);
                return true;
            }
            OpenContainer& container = open.back();
            const bool isArray = container.value.kind == JsonKind::Array;
            if (isArray) {
                container.value.items.push_back(std::move(finished));
            } else {
                container.value.members.emplace_back(std::move(container.key), std::move(finished));
            }
            SkipJsonWhitespace(cursor);
            if (cursor.AtEnd()) return false;
            const char16_t c = cursor.Current();
            if (c == u',') {
                ++cursor.position;
                expect = isArray ? Expect::Value : Expect::Key;
                break;
            }
            if (c != (isArray ? u']' : u'}')) return false;
            ++cursor.position;
            finished = std::move(container.value);
            open.pop_back();
        }
    }
}

bool ReadTextFile(const std::u16string& path, std::u16string& text) {
    std::string bytes;
    if (!ReadFileBytes(path, bytes)) return false;
    std::string_view content(bytes);
    if (content.size() >= 3 && content.substr(0, 3) == "\xEF\xBB\xBF") content.remove_prefix(3);
    text = Utf8ToUtf16(content);
    return true;
}

bool ParseJsonDocument(std::u16string_view text, JsonValue& root) {
    JsonCursor cursor{text, 0};
    if (!ParseJsonValue(cursor, root)) return false;
    SkipJsonWhitespace(cursor);
    return cursor.AtEnd();
}

bool ReadJsonFile(const std::u16string& path, JsonValue& root) {
    std::u16string text;
    return ReadTextFile(path, text) && ParseJsonDocument(text, root);
}

}  // namespace zirvel
