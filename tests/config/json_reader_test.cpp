// The lenient JSON reader: values, documents, files and string escaping.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "config/json_escape.h"
#include "config/json_reader.h"
#include "config/json_value.h"
#include "config/utf.h"
#include "test_files.h"

namespace zirvel {
namespace {

using zirvel_test::TempDirectory;
using zirvel_test::WriteBytes;

// ParseJsonValue on a cursor at the start of `text`; gives the position the
// cursor was left at.
bool ParseValueAt(std::u16string_view text, JsonValue& value, std::size_t& position) {
    JsonCursor cursor{text, 0};
    const bool ok = ParseJsonValue(cursor, value);
    position = cursor.position;
    return ok;
}

bool Parses(std::u16string_view text) {
    JsonValue root;
    return ParseJsonDocument(text, root);
}

// The number held by a document that is a single number.
double NumberDocument(std::u16string_view text) {
    JsonValue root;
    EXPECT_TRUE(ParseJsonDocument(text, root));
    EXPECT_EQ(root.kind, JsonKind::Number);
    return root.number;
}

// The text held by a document that is a single string.
std::u16string StringDocument(std::u16string_view text) {
    JsonValue root;
    EXPECT_TRUE(ParseJsonDocument(text, root));
    EXPECT_EQ(root.kind, JsonKind::String);
    return root.string;
}

// ---------------------------------------------------------------------------
// Empty containers, white space, trailing commas

TEST(JsonContainers, EmptyObjectWithAnyWhiteSpaceInside) {
    for (std::u16string_view text : {u"{}", u"{ }", u"{\t}", u"{\r\n}", u"{ \t\r\n \n}",
                                     u"  \n{}\t\r\n "}) {
        JsonValue root;
        ASSERT_TRUE(ParseJsonDocument(text, root));
        EXPECT_EQ(root.kind, JsonKind::Object);
        EXPECT_TRUE(root.members.empty());
        EXPECT_TRUE(root.items.empty());
    }
}

TEST(JsonContainers, EmptyArrayWithAnyWhiteSpaceInside) {
    for (std::u16string_view text : {u"[]", u"[ ]", u"[\t]", u"[\r\n]", u"[ \t\r\n \n]",
                                     u"\r\n[]  "}) {
        JsonValue root;
        ASSERT_TRUE(ParseJsonDocument(text, root));
        EXPECT_EQ(root.kind, JsonKind::Array);
        EXPECT_TRUE(root.items.empty());
        EXPECT_TRUE(root.members.empty());
    }
}

TEST(JsonContainers, TrailingCommaInObjectFails) {
    EXPECT_FALSE(Parses(u"{\"a\":1,}"));
    EXPECT_FALSE(Parses(u"{\"a\":1 , }"));
    EXPECT_FALSE(Parses(u"{,}"));
}

TEST(JsonContainers, TrailingCommaInArrayFails) {
    EXPECT_FALSE(Parses(u"[1,2,]"));
    EXPECT_FALSE(Parses(u"[1, 2 ,\n]"));
    EXPECT_FALSE(Parses(u"[,]"));
    EXPECT_FALSE(Parses(u"[1,,2]"));
}

TEST(JsonContainers, ArrayKeepsElementsInOrder) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"[ 1 , \"b\" ,true,null , [ ] , { } ,false]", root));
    ASSERT_EQ(root.kind, JsonKind::Array);
    ASSERT_EQ(root.items.size(), 7u);
    EXPECT_EQ(root.items[0].kind, JsonKind::Number);
    EXPECT_EQ(root.items[0].number, 1.0);
    EXPECT_EQ(root.items[1].kind, JsonKind::String);
    EXPECT_EQ(root.items[1].string, u"b");
    EXPECT_EQ(root.items[2].kind, JsonKind::Bool);
    EXPECT_TRUE(root.items[2].boolean);
    EXPECT_EQ(root.items[3].kind, JsonKind::Null);
    EXPECT_EQ(root.items[4].kind, JsonKind::Array);
    EXPECT_EQ(root.items[5].kind, JsonKind::Object);
    EXPECT_EQ(root.items[6].kind, JsonKind::Bool);
    EXPECT_FALSE(root.items[6].boolean);
}

TEST(JsonContainers, NestedObjectsAndArrays) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(
        u"{ \"w\" : [ 1 , { \"x\" : null } ] ,\n \"b\":{\"c\":\"d\"} }", root));
    ASSERT_EQ(root.kind, JsonKind::Object);
    ASSERT_EQ(root.members.size(), 2u);
    EXPECT_EQ(root.members[0].first, u"w");
    const JsonValue& w = root.members[0].second;
    ASSERT_EQ(w.kind, JsonKind::Array);
    ASSERT_EQ(w.items.size(), 2u);
    EXPECT_EQ(w.items[0].number, 1.0);
    ASSERT_EQ(w.items[1].kind, JsonKind::Object);
    ASSERT_EQ(w.items[1].members.size(), 1u);
    EXPECT_EQ(w.items[1].members[0].first, u"x");
    EXPECT_EQ(w.items[1].members[0].second.kind, JsonKind::Null);
    const JsonValue* b = root.Find(u"b");
    ASSERT_NE(b, nullptr);
    const JsonValue* c = b->Find(u"c");
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->string, u"d");
}

TEST(JsonContainers, MalformedObjectsFail) {
    EXPECT_FALSE(Parses(u"{"));
    EXPECT_FALSE(Parses(u"{\"a\""));
    EXPECT_FALSE(Parses(u"{\"a\":"));
    EXPECT_FALSE(Parses(u"{\"a\":1"));
    EXPECT_FALSE(Parses(u"{\"a\":1 \"b\":2}"));
    EXPECT_FALSE(Parses(u"{\"a\" 1}"));
    EXPECT_FALSE(Parses(u"{\"a\":}"));
    EXPECT_FALSE(Parses(u"{a:1}"));
    EXPECT_FALSE(Parses(u"{'a':1}"));
    EXPECT_FALSE(Parses(u"{1:1}"));
    EXPECT_FALSE(Parses(u"}"));
}

TEST(JsonContainers, MalformedArraysFail) {
    EXPECT_FALSE(Parses(u"["));
    EXPECT_FALSE(Parses(u"[1"));
    EXPECT_FALSE(Parses(u"[1,"));
    EXPECT_FALSE(Parses(u"[1 2]"));
    EXPECT_FALSE(Parses(u"[1;2]"));
    EXPECT_FALSE(Parses(u"]"));
}

TEST(JsonContainers, CommentsAreNotAccepted) {
    EXPECT_FALSE(Parses(u"// komentarz\n{}"));
    EXPECT_FALSE(Parses(u"{} // komentarz"));
    EXPECT_FALSE(Parses(u"/* a */ {}"));
    EXPECT_FALSE(Parses(u"{ /* a */ }"));
}

TEST(JsonContainers, EmptyTextFails) {
    EXPECT_FALSE(Parses(u""));
    EXPECT_FALSE(Parses(u" \t\r\n"));
    JsonValue value;
    std::size_t position = 0;
    EXPECT_FALSE(ParseValueAt(u"", value, position));
    EXPECT_FALSE(ParseValueAt(u"   ", value, position));
}

// ---------------------------------------------------------------------------
// Documents: one value, then only white space

TEST(JsonDocument, TrailingTextAfterTheRootIsRejected) {
    const std::u16string_view text = u"{\"a\":1} x";
    JsonValue value;
    std::size_t position = 0;
    ASSERT_TRUE(ParseValueAt(text, value, position));
    EXPECT_EQ(value.kind, JsonKind::Object);
    EXPECT_EQ(position, 7u);

    JsonCursor cursor{text, position};
    SkipJsonWhitespace(cursor);
    EXPECT_EQ(cursor.position, 8u);
    EXPECT_FALSE(cursor.AtEnd());

    JsonValue root;
    EXPECT_FALSE(ParseJsonDocument(text, root));
}

TEST(JsonDocument, SecondValueOrStrayBraceIsRejected) {
    EXPECT_FALSE(Parses(u"{} {}"));
    EXPECT_FALSE(Parses(u"{}}"));
    EXPECT_FALSE(Parses(u"[]]"));
    EXPECT_FALSE(Parses(u"1 2"));
    EXPECT_FALSE(Parses(u"\"a\" \"b\""));
}

TEST(JsonDocument, TrailingWhiteSpaceIsAccepted) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"{\"a\":1} \t\r\n \n", root));
    ASSERT_EQ(root.kind, JsonKind::Object);
    const JsonValue* a = root.Find(u"a");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->number, 1.0);
}

TEST(JsonDocument, ParseValueLeavesTheCursorJustBehindTheValue) {
    JsonValue value;
    std::size_t position = 0;
    ASSERT_TRUE(ParseValueAt(u"  12  ,", value, position));
    EXPECT_EQ(value.number, 12.0);
    EXPECT_EQ(position, 4u);

    ASSERT_TRUE(ParseValueAt(u"\n\"ab\"x", value, position));
    EXPECT_EQ(value.string, u"ab");
    EXPECT_EQ(position, 5u);

    ASSERT_TRUE(ParseValueAt(u"[1, 2] ]", value, position));
    EXPECT_EQ(value.items.size(), 2u);
    EXPECT_EQ(position, 6u);

    ASSERT_TRUE(ParseValueAt(u"null,", value, position));
    EXPECT_EQ(value.kind, JsonKind::Null);
    EXPECT_EQ(position, 4u);
}

// ---------------------------------------------------------------------------
// Literals

TEST(JsonLiterals, TrueFalseNull) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"true", root));
    EXPECT_EQ(root.kind, JsonKind::Bool);
    EXPECT_TRUE(root.boolean);

    JsonValue falseRoot;
    ASSERT_TRUE(ParseJsonDocument(u" false ", falseRoot));
    EXPECT_EQ(falseRoot.kind, JsonKind::Bool);
    EXPECT_FALSE(falseRoot.boolean);

    JsonValue nullRoot;
    ASSERT_TRUE(ParseJsonDocument(u"null", nullRoot));
    EXPECT_EQ(nullRoot.kind, JsonKind::Null);
}

TEST(JsonLiterals, TruncatedLiteralAtTheEndFails) {
    EXPECT_FALSE(Parses(u"tru"));
    EXPECT_FALSE(Parses(u"nul"));
    EXPECT_FALSE(Parses(u"fals"));
    EXPECT_FALSE(Parses(u"t"));
    EXPECT_FALSE(Parses(u"n"));
    EXPECT_FALSE(Parses(u"[tru"));
    EXPECT_FALSE(Parses(u"{\"a\":nul"));
    JsonValue value;
    std::size_t position = 0;
    EXPECT_FALSE(ParseValueAt(u"tru", value, position));
    EXPECT_FALSE(ParseValueAt(u"nul", value, position));
}

TEST(JsonLiterals, MisspelledLiteralFails) {
    EXPECT_FALSE(Parses(u"trve"));
    EXPECT_FALSE(Parses(u"nulL"));
    EXPECT_FALSE(Parses(u"True"));
    EXPECT_FALSE(Parses(u"NULL"));
    EXPECT_FALSE(Parses(u"[falsy]"));
}

TEST(JsonLiterals, NothingAfterTheLiteralIsCheckedByTheValueItself) {
    JsonValue value;
    std::size_t position = 0;
    ASSERT_TRUE(ParseValueAt(u"truex", value, position));
    EXPECT_EQ(value.kind, JsonKind::Bool);
    EXPECT_TRUE(value.boolean);
    EXPECT_EQ(position, 4u);

    JsonValue nullValue;
    ASSERT_TRUE(ParseValueAt(u"nullnull", nullValue, position));
    EXPECT_EQ(nullValue.kind, JsonKind::Null);
    EXPECT_EQ(position, 4u);
}

TEST(JsonLiterals, LiteralFollowedByLettersFailsInAnArray) {
    EXPECT_FALSE(Parses(u"[truex]"));
    EXPECT_FALSE(Parses(u"[nullx]"));
    EXPECT_FALSE(Parses(u"truex"));
    EXPECT_TRUE(Parses(u"[true]"));
}

// ---------------------------------------------------------------------------
// Numbers

TEST(JsonNumbers, PlainNumbers) {
    EXPECT_EQ(NumberDocument(u"0"), 0.0);
    EXPECT_EQ(NumberDocument(u"5"), 5.0);
    EXPECT_EQ(NumberDocument(u"-5"), -5.0);
    EXPECT_EQ(NumberDocument(u"250"), 250.0);
    EXPECT_DOUBLE_EQ(NumberDocument(u"2.5"), 2.5);
    EXPECT_DOUBLE_EQ(NumberDocument(u"-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(NumberDocument(u"10000.7"), 10000.7);
    EXPECT_EQ(NumberDocument(u"1E2"), 100.0);
    EXPECT_DOUBLE_EQ(NumberDocument(u"1e-2"), 0.01);
    EXPECT_EQ(NumberDocument(u"12e+1"), 120.0);
    EXPECT_DOUBLE_EQ(NumberDocument(u".5"), 0.5);
    EXPECT_EQ(NumberDocument(u"5."), 5.0);
}

TEST(JsonNumbers, LeadingPlusIsAccepted) {
    EXPECT_EQ(NumberDocument(u"+5"), 5.0);
    EXPECT_DOUBLE_EQ(NumberDocument(u"+2.5"), 2.5);
}

TEST(JsonNumbers, LoneSignIsZero) {
    EXPECT_EQ(NumberDocument(u"-"), 0.0);
    EXPECT_EQ(NumberDocument(u"+"), 0.0);
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"[-, +]", root));
    ASSERT_EQ(root.items.size(), 2u);
    EXPECT_EQ(root.items[0].kind, JsonKind::Number);
    EXPECT_EQ(root.items[0].number, 0.0);
    EXPECT_EQ(root.items[1].kind, JsonKind::Number);
    EXPECT_EQ(root.items[1].number, 0.0);
}

TEST(JsonNumbers, ExponentForm) {
    EXPECT_EQ(NumberDocument(u"1e5"), 100000.0);
    EXPECT_EQ(NumberDocument(u"1e12"), 1e12);
}

TEST(JsonNumbers, UnusedTailOfTheTokenIsIgnored) {
    EXPECT_EQ(NumberDocument(u"1-2"), 1.0);
    EXPECT_DOUBLE_EQ(NumberDocument(u"1.2.3"), 1.2);
    EXPECT_EQ(NumberDocument(u"7e"), 7.0);
    EXPECT_EQ(NumberDocument(u"--5"), 0.0);
    EXPECT_EQ(NumberDocument(u"+-3"), 0.0);
    // The whole run is one token, so nothing is left for the document.
    JsonValue value;
    std::size_t position = 0;
    ASSERT_TRUE(ParseValueAt(u"1.2.3,", value, position));
    EXPECT_EQ(position, 5u);
}

TEST(JsonNumbers, HexadecimalPrefixStopsTheToken) {
    JsonValue value;
    std::size_t position = 0;
    ASSERT_TRUE(ParseValueAt(u"0x10", value, position));
    EXPECT_EQ(value.kind, JsonKind::Number);
    EXPECT_EQ(value.number, 0.0);
    EXPECT_EQ(position, 1u);
    EXPECT_FALSE(Parses(u"0x10"));
    EXPECT_FALSE(Parses(u"[0x10]"));
}

TEST(JsonNumbers, OutOfRangeGivesInfinity) {
    const double big = NumberDocument(u"1e400");
    EXPECT_TRUE(std::isinf(big));
    EXPECT_GT(big, 0.0);
    const double negative = NumberDocument(u"-1e400");
    EXPECT_TRUE(std::isinf(negative));
    EXPECT_LT(negative, 0.0);
}

TEST(JsonNumbers, CharacterThatCannotStartAValueFails) {
    for (std::u16string_view text : {u"x", u":", u",", u"'a'", u"#", u"\u00A0"}) {
        JsonValue value;
        std::size_t position = 0;
        EXPECT_FALSE(ParseValueAt(text, value, position));
    }
}

TEST(JsonNumbers, TheDigitRunIncludesEveryCharacterTheRuntimeCallsADigit) {
    // U+00B2 (superscript two) counts as a digit for the token but not for
    // the conversion, which stops before it.
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"[1\u00B2]", root));
    ASSERT_EQ(root.items.size(), 1u);
    EXPECT_EQ(root.items[0].number, 1.0);
}

// ---------------------------------------------------------------------------
// Strings

TEST(JsonStrings, SimpleEscapes) {
    EXPECT_EQ(StringDocument(u"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\""), u"\"\\/\b\f\n\r\t");
    EXPECT_EQ(StringDocument(u"\"a\\/b\""), u"a/b");
    EXPECT_EQ(StringDocument(u"\"\""), u"");
}

TEST(JsonStrings, UnicodeEscapeGivesOneUnit) {
    EXPECT_EQ(StringDocument(u"\"\\u0041\""), u"A");
    EXPECT_EQ(StringDocument(u"\"\\u00e9\\u00E9\""), u"éé");
    EXPECT_EQ(StringDocument(u"\"x\\u0105y\""), u"xąy");
}

TEST(JsonStrings, SurrogatePairEscapesStayTwoUnits) {
    const std::u16string text = StringDocument(u"\"\\uD83D\\uDE00\"");
    ASSERT_EQ(text.size(), 2u);
    EXPECT_EQ(text[0], char16_t{0xD83D});
    EXPECT_EQ(text[1], char16_t{0xDE00});
    EXPECT_EQ(text, u"😀");
}

TEST(JsonStrings, LoneSurrogateEscapeIsKept) {
    const std::u16string text = StringDocument(u"\"a\\uDE00b\"");
    ASSERT_EQ(text.size(), 3u);
    EXPECT_EQ(text[1], char16_t{0xDE00});
}

TEST(JsonStrings, UnicodeEscapeDigitsAreNotChecked) {
    const std::u16string zz = StringDocument(u"\"\\u00zz\"");
    ASSERT_EQ(zz.size(), 1u);
    EXPECT_EQ(zz[0], char16_t{0});

    const std::u16string noDigits = StringDocument(u"\"\\uzzzzA\"");
    ASSERT_EQ(noDigits.size(), 2u);
    EXPECT_EQ(noDigits[0], char16_t{0});
    EXPECT_EQ(noDigits[1], u'A');

    // The base-16 conversion takes a "0x" prefix.
    EXPECT_EQ(StringDocument(u"\"\\u0x41\""), u"A");
}

TEST(JsonStrings, UnicodeEscapeNeedsFourCharactersBeforeTheEnd) {
    EXPECT_FALSE(Parses(u"\"\\u"));
    EXPECT_FALSE(Parses(u"\"\\u0"));
    EXPECT_FALSE(Parses(u"\"\\u00"));
    EXPECT_FALSE(Parses(u"\"\\u004"));
    JsonValue value;
    std::size_t position = 0;
    EXPECT_FALSE(ParseValueAt(u"\"\\u41", value, position));
}

TEST(JsonStrings, UnicodeEscapeConsumesAClosingQuote) {
    // "\u004" + quote: the quote is the fourth character of the escape, so the
    // string is not closed.
    EXPECT_FALSE(Parses(u"\"\\u004\""));
    const std::u16string text = StringDocument(u"\"\\u004\"x\"");
    ASSERT_EQ(text.size(), 2u);
    EXPECT_EQ(text[0], char16_t{4});
    EXPECT_EQ(text[1], u'x');
}

TEST(JsonStrings, UnknownEscapeFails) {
    EXPECT_FALSE(Parses(u"\"a\\qb\""));
    EXPECT_FALSE(Parses(u"\"\\x41\""));
    EXPECT_FALSE(Parses(u"\"\\U0041\""));
    EXPECT_FALSE(Parses(u"\"\\'\""));
    EXPECT_FALSE(Parses(u"\"\\0\""));
}

TEST(JsonStrings, BackslashAtTheEndFails) {
    EXPECT_FALSE(Parses(u"\"\\"));
    EXPECT_FALSE(Parses(u"\"abc\\"));
}

TEST(JsonStrings, UnterminatedStringFails) {
    EXPECT_FALSE(Parses(u"\""));
    EXPECT_FALSE(Parses(u"\"abc"));
    EXPECT_FALSE(Parses(u"[\"abc]"));
    EXPECT_FALSE(Parses(u"{\"a"));
}

TEST(JsonStrings, RawLineBreaksAndControlCharactersAreKept) {
    EXPECT_EQ(StringDocument(u"\"a\nb\""), u"a\nb");
    EXPECT_EQ(StringDocument(u"\"a\r\nb\""), u"a\r\nb");
    EXPECT_EQ(StringDocument(u"\"\ta\t\""), u"\ta\t");
    EXPECT_EQ(StringDocument(u"\"\x01\x1f\""), u"\x01\x1f");
}

TEST(JsonStrings, NonAsciiTextIsKept) {
    EXPECT_EQ(StringDocument(u"\"Zażółć gęślą jaźń €\""), u"Zażółć gęślą jaźń €");
    EXPECT_EQ(StringDocument(u"\"😀\""), u"😀");
}

TEST(JsonStrings, KeysResolveEscapes) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"{\"\\u0061b\": 1, \"c\\\"d\": 2}", root));
    ASSERT_EQ(root.members.size(), 2u);
    EXPECT_EQ(root.members[0].first, u"ab");
    EXPECT_EQ(root.members[1].first, u"c\"d");
    ASSERT_NE(root.Find(u"ab"), nullptr);
    EXPECT_EQ(root.Find(u"ab")->number, 1.0);
}

// ---------------------------------------------------------------------------
// Objects keep order and duplicates

TEST(JsonObjects, DuplicateKeysAreAllKeptAndLookupTakesTheFirst) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"{\"b\": 1, \"a\": 2, \"b\": 3}", root));
    ASSERT_EQ(root.members.size(), 3u);
    EXPECT_EQ(root.members[0].first, u"b");
    EXPECT_EQ(root.members[0].second.number, 1.0);
    EXPECT_EQ(root.members[1].first, u"a");
    EXPECT_EQ(root.members[1].second.number, 2.0);
    EXPECT_EQ(root.members[2].first, u"b");
    EXPECT_EQ(root.members[2].second.number, 3.0);

    const JsonValue* b = root.Find(u"b");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b, &root.members[0].second);
    EXPECT_EQ(b->number, 1.0);
}

TEST(JsonObjects, LookupIsExactAndCaseSensitive) {
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(u"{\"name\": \"x\", \"\": 5}", root));
    EXPECT_EQ(root.Find(u"Name"), nullptr);
    EXPECT_EQ(root.Find(u"nam"), nullptr);
    EXPECT_EQ(root.Find(u"name "), nullptr);
    EXPECT_EQ(root.Find(u"other"), nullptr);
    ASSERT_NE(root.Find(u"name"), nullptr);
    ASSERT_NE(root.Find(u""), nullptr);
    EXPECT_EQ(root.Find(u"")->number, 5.0);

    JsonValue array;
    ASSERT_TRUE(ParseJsonDocument(u"[\"name\"]", array));
    EXPECT_EQ(array.Find(u"name"), nullptr);
}

// ---------------------------------------------------------------------------
// White space

TEST(JsonWhitespace, OnlyFourCharactersAreSkipped) {
    JsonCursor cursor{u" \t\r\n X", 0};
    SkipJsonWhitespace(cursor);
    EXPECT_EQ(cursor.position, 5u);

    for (std::u16string_view text :
         {u"\u00A0X", u"\uFEFFX", u"\vX", u"\fX", u"\u2003X", u"\u3000X", u"\u2028X"}) {
        JsonCursor other{text, 0};
        SkipJsonWhitespace(other);
        EXPECT_EQ(other.position, 0u);
    }

    JsonCursor empty{u"", 0};
    SkipJsonWhitespace(empty);
    EXPECT_EQ(empty.position, 0u);
    JsonCursor allSpace{u"  ", 0};
    SkipJsonWhitespace(allSpace);
    EXPECT_EQ(allSpace.position, 2u);
    EXPECT_TRUE(allSpace.AtEnd());
}

TEST(JsonWhitespace, OtherSpaceCharactersBreakTheDocument) {
    EXPECT_FALSE(Parses(u"\u00A0{}"));
    EXPECT_FALSE(Parses(u"{}\u00A0"));
    EXPECT_FALSE(Parses(u"{\u00A0}"));
    EXPECT_FALSE(Parses(u"[1,\u00A02]"));
    EXPECT_FALSE(Parses(u"\uFEFF{}"));
    EXPECT_FALSE(Parses(u"{}\uFEFF"));
    EXPECT_FALSE(Parses(u"\f{}"));
    EXPECT_FALSE(Parses(u"{\"a\":\v1}"));
}

// ---------------------------------------------------------------------------
// Depth

constexpr std::size_t kDeepNesting = 1000000;

TEST(JsonDepth, MillionNestedArraysParse) {
    std::u16string text(kDeepNesting, u'[');
    text.append(kDeepNesting, u']');
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(text, root));
    std::size_t depth = 1;
    const JsonValue* node = &root;
    for (;;) {
        ASSERT_EQ(node->kind, JsonKind::Array);
        if (node->items.empty()) {
            break;
        }
        ASSERT_EQ(node->items.size(), 1u);
        node = &node->items.front();
        ++depth;
    }
    EXPECT_EQ(depth, kDeepNesting);
}

TEST(JsonDepth, MillionUnclosedArraysFail) {
    std::u16string text(kDeepNesting, u'[');
    EXPECT_FALSE(Parses(text));
    text.append(kDeepNesting - 1, u']');
    EXPECT_FALSE(Parses(text));
    JsonValue value;
    std::size_t position = 0;
    EXPECT_FALSE(ParseValueAt(text, value, position));
}

std::u16string NestedObjects(std::size_t depth, bool closed) {
    std::u16string text;
    text.reserve(depth * 6 + 2);
    for (std::size_t i = 0; i < depth; ++i) {
        text += u"{\"a\":";
    }
    text += u"{}";
    if (closed) {
        text.append(depth, u'}');
    }
    return text;
}

TEST(JsonDepth, MillionNestedObjectsParse) {
    const std::u16string text = NestedObjects(kDeepNesting - 1, true);
    JsonValue root;
    ASSERT_TRUE(ParseJsonDocument(text, root));
    std::size_t depth = 1;
    const JsonValue* node = &root;
    for (;;) {
        ASSERT_EQ(node->kind, JsonKind::Object);
        if (node->members.empty()) {
            break;
        }
        ASSERT_EQ(node->members.size(), 1u);
        ASSERT_EQ(node->members.front().first, u"a");
        node = &node->members.front().second;
        ++depth;
    }
    EXPECT_EQ(depth, kDeepNesting);
}

TEST(JsonDepth, MillionUnclosedObjectsFail) {
    const std::u16string text = NestedObjects(kDeepNesting, false);
    EXPECT_FALSE(Parses(text));
    JsonValue value;
    std::size_t position = 0;
    EXPECT_FALSE(ParseValueAt(text, value, position));
}

// ---------------------------------------------------------------------------
// Files

TEST(JsonFiles, MissingFileCannotBeRead) {
    TempDirectory dir;
    std::u16string text = u"unchanged?";
    EXPECT_FALSE(ReadTextFile(dir.File("missing.json").u16string(), text));
    JsonValue root;
    EXPECT_FALSE(ReadJsonFile(dir.File("missing.json").u16string(), root));
}

TEST(JsonFiles, EmptyFileGivesEmptyText) {
    TempDirectory dir;
    WriteBytes(dir.File("empty.json"), "");
    std::u16string text = u"old";
    ASSERT_TRUE(ReadTextFile(dir.File("empty.json").u16string(), text));
    EXPECT_TRUE(text.empty());
    JsonValue root;
    EXPECT_FALSE(ReadJsonFile(dir.File("empty.json").u16string(), root));
}

TEST(JsonFiles, Utf8IsDecoded) {
    TempDirectory dir;
    WriteBytes(dir.File("utf8.json"), "{\"k\": \"Zażółć 😀\"}");
    std::u16string text;
    ASSERT_TRUE(ReadTextFile(dir.File("utf8.json").u16string(), text));
    EXPECT_EQ(text, u"{\"k\": \"Zażółć 😀\"}");
}

TEST(JsonFiles, ByteOrderMarkIsSkipped) {
    TempDirectory dir;
    const std::string body = "{\"name\": \"Koło\", \"n\": [1, 2]}";
    WriteBytes(dir.File("plain.json"), body);
    WriteBytes(dir.File("bom.json"), "\xEF\xBB\xBF" + body);

    std::u16string plain;
    std::u16string withBom;
    ASSERT_TRUE(ReadTextFile(dir.File("plain.json").u16string(), plain));
    ASSERT_TRUE(ReadTextFile(dir.File("bom.json").u16string(), withBom));
    EXPECT_EQ(plain, withBom);

    JsonValue root;
    ASSERT_TRUE(ReadJsonFile(dir.File("bom.json").u16string(), root));
    ASSERT_EQ(root.kind, JsonKind::Object);
    ASSERT_NE(root.Find(u"name"), nullptr);
    EXPECT_EQ(root.Find(u"name")->string, u"Koło");
    ASSERT_NE(root.Find(u"n"), nullptr);
    EXPECT_EQ(root.Find(u"n")->items.size(), 2u);
}

TEST(JsonFiles, FileOfOnlyAByteOrderMarkIsEmpty) {
    TempDirectory dir;
    WriteBytes(dir.File("bom.json"), "\xEF\xBB\xBF");
    std::u16string text = u"old";
    ASSERT_TRUE(ReadTextFile(dir.File("bom.json").u16string(), text));
    EXPECT_TRUE(text.empty());
}

TEST(JsonFiles, OnlyOneByteOrderMarkIsSkipped) {
    TempDirectory dir;
    WriteBytes(dir.File("twice.json"), "\xEF\xBB\xBF\xEF\xBB\xBF{}");
    std::u16string text;
    ASSERT_TRUE(ReadTextFile(dir.File("twice.json").u16string(), text));
    EXPECT_EQ(text, u"\uFEFF{}");
    JsonValue root;
    EXPECT_FALSE(ReadJsonFile(dir.File("twice.json").u16string(), root));
}

TEST(JsonFiles, Utf16FileFailsToParse) {
    TempDirectory dir;
    const std::string utf16le("\xFF\xFE{\0}\0", 6);
    WriteBytes(dir.File("utf16.json"), utf16le);
    std::u16string text;
    EXPECT_TRUE(ReadTextFile(dir.File("utf16.json").u16string(), text));
    JsonValue root;
    EXPECT_FALSE(ReadJsonFile(dir.File("utf16.json").u16string(), root));
}

TEST(JsonFiles, InvalidUtf8DoesNotFailTheRead) {
    TempDirectory dir;
    WriteBytes(dir.File("bad.txt"), "a\xFF\xFE" "b\xC3");
    std::u16string text;
    ASSERT_TRUE(ReadTextFile(dir.File("bad.txt").u16string(), text));
    ASSERT_GE(text.size(), 3u);
    EXPECT_EQ(text.front(), u'a');
    EXPECT_NE(text.find(u'b'), std::u16string::npos);

    WriteBytes(dir.File("bad.json"), "{\"a\": \"x\xC0\xFFy\"}");
    JsonValue root;
    ASSERT_TRUE(ReadJsonFile(dir.File("bad.json").u16string(), root));
    const JsonValue* a = root.Find(u"a");
    ASSERT_NE(a, nullptr);
    ASSERT_GE(a->string.size(), 3u);
    EXPECT_EQ(a->string.front(), u'x');
    EXPECT_EQ(a->string.back(), u'y');
}

TEST(JsonFiles, ReadJsonFileRejectsTrailingText) {
    TempDirectory dir;
    WriteBytes(dir.File("trail.json"), "{\"a\":1} x");
    JsonValue root;
    EXPECT_FALSE(ReadJsonFile(dir.File("trail.json").u16string(), root));
    WriteBytes(dir.File("ok.json"), "{\"a\":1}\r\n\r\n");
    JsonValue good;
    EXPECT_TRUE(ReadJsonFile(dir.File("ok.json").u16string(), good));
}

// ---------------------------------------------------------------------------
// Escaping for writing

TEST(JsonEscape, NamedEscapes) {
    EXPECT_EQ(EscapeJsonString(u"\t"), "\\t");
    EXPECT_EQ(EscapeJsonString(u"\n"), "\\n");
    EXPECT_EQ(EscapeJsonString(u"\r"), "\\r");
    EXPECT_EQ(EscapeJsonString(u"\""), "\\\"");
    EXPECT_EQ(EscapeJsonString(u"\\"), "\\\\");
}

TEST(JsonEscape, OtherControlCharactersUseLowerCaseHex) {
    EXPECT_EQ(EscapeJsonString(std::u16string(1, u'\0')), "\\u0000");
    EXPECT_EQ(EscapeJsonString(u"\x01"), "\\u0001");
    EXPECT_EQ(EscapeJsonString(u"\b"), "\\u0008");
    EXPECT_EQ(EscapeJsonString(u"\v"), "\\u000b");
    EXPECT_EQ(EscapeJsonString(u"\f"), "\\u000c");
    EXPECT_EQ(EscapeJsonString(u"\x1b"), "\\u001b");
    EXPECT_EQ(EscapeJsonString(u"\x1f"), "\\u001f");

    const char* const hex = "0123456789abcdef";
    for (char16_t c = 0; c < 0x20; ++c) {
        if (c == u'\t' || c == u'\n' || c == u'\r') {
            continue;
        }
        std::string expected = "\\u00";
        expected += hex[c >> 4];
        expected += hex[c & 0xF];
        EXPECT_EQ(EscapeJsonString(std::u16string(1, c)), expected) << "unit " << int(c);
    }
}

TEST(JsonEscape, EverythingFromSpaceUpPassesThrough) {
    EXPECT_EQ(EscapeJsonString(u"/"), "/");
    EXPECT_EQ(EscapeJsonString(u"https://example.com/a?b=1"), "https://example.com/a?b=1");
    EXPECT_EQ(EscapeJsonString(u" "), " ");
    EXPECT_EQ(EscapeJsonString(u"~\x7f"), "~\x7f");
    EXPECT_EQ(EscapeJsonString(u"'"), "'");
    EXPECT_EQ(EscapeJsonString(u""), "");
}

TEST(JsonEscape, NonAsciiIsWrittenAsUtf8) {
    EXPECT_EQ(EscapeJsonString(u"Zażółć gęślą jaźń"), "Zażółć gęślą jaźń");
    EXPECT_EQ(EscapeJsonString(u"€"), "\xE2\x82\xAC");
    EXPECT_EQ(EscapeJsonString(u"\u00A0"), "\xC2\xA0");
    EXPECT_EQ(EscapeJsonString(u"😀"), "\xF0\x9F\x98\x80");
}

TEST(JsonEscape, MixedText) {
    EXPECT_EQ(EscapeJsonString(u"a\"b\\c/d\te\r\nf\x02ł"),
              "a\\\"b\\\\c/d\\te\\r\\nf\\u0002ł");
}

TEST(JsonEscape, EscapedTextReadsBackUnchanged) {
    std::u16string original;
    for (char16_t c = 0; c < 0x80; ++c) {
        original += c;
    }
    original += u"ąęłńóśźż€😀";
    const std::u16string document = u"\"" + Utf8ToUtf16(EscapeJsonString(original)) + u"\"";
    EXPECT_EQ(StringDocument(document), original);
}

}  // namespace
}  // namespace zirvel
