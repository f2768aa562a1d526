#include <brcore8/strings/tokenizer.h>

#include <brcore8/core/exception.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

using namespace std::string_literals;
using Tokens = std::vector<std::string>;

Tokens Rest(SStringTokenizer& tokenizer) {
    Tokens tokens;
    for (std::string_view token; tokenizer.NextTokenView(&token), !token.empty();)
        tokens.emplace_back(token);
    return tokens;
}

struct CutRow {
    const char* name;
    int page;
    std::string text;
    std::string delimiters;
    int returned, added;
    Tokens tokens;
};

const CutRow kCuts[] = {
    {"empty text", 1252, "", ",", 1, 1, {}},
    {"only separators", 1252, " \t\r\n", ",", 1, 1, {}},
    {"delimiters are tokens", 1252, "a+b ++", "+", 1, 1, {"a", "+", "b", "+", "+"}},
    {"delimiters only cut", 1252, "+a+b c+", "+", 0, 1, {"a", "b", "c"}},
    {"delimiters replace blanks", 1252, " a b,c", ",", 0, 0, {" a b", "c"}},
    {"and are tokens", 1252, " a b,c", ",", 1, 0, {" a b", ",", "c"}},
    {"no delimiters leave blanks", 1252, "a b", "", 0, 0, {"a", "b"}},
    {"a blank as delimiter is a token", 1252, "a b\tc", " ", 1, 1, {"a", " ", "b", "c"}},
    {"zero and last byte are text", 1252, "a\0b \xFF"s, ",", 1, 1, {"a\0b"s, "\xFF"}},
    {"delimiter as trail byte", 932, "\x83+a+b", "+", 1, 1, {"\x83+a", "+", "b"}},
    {"blank as trail byte", 932, "\x83 a", "+", 1, 1, {"\x83 a"}},
    {"double-byte delimiter",
     932,
     "a\x81\x41"
     "b\x81\x42",
     "\x81\x41",
     1,
     1,
     {"a", "\x81\x41", "b\x81\x42"}},
    {"its halves cut nothing",
     932,
     "\x81\x42"
     "A",
     "\x81\x41",
     1,
     1,
     {"\x81\x42"
      "A"}},
    {"double-byte delimiter given twice",
     932,
     "\x81\x41"
     "b",
     "\x81\x41\x81\x41",
     0,
     0,
     {"b"}},
    {"lead byte before a zero byte", 932, "\x83\0+"s, "+", 1, 1, {"\x83\0"s, "+"}},
    {"lead byte at the end", 932, "+\x83", "+", 1, 1, {"+", "\x83"}},
};

TEST(Tokenizer, CutsText) {
    for (const CutRow& row : kCuts) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString text{std::string_view(row.text)};
        const SString delimiters{std::string_view(row.delimiters)};
        SStringTokenizer tokenizer;
        tokenizer.Init(text, delimiters, row.returned, row.added);
        EXPECT_EQ(Rest(tokenizer), row.tokens);
        EXPECT_EQ(tokenizer.NextToken(), "");
        SStringTokenizer later;
        later.Init(text, 0);
        later.SetDelimiters(delimiters, row.returned, row.added);
        EXPECT_EQ(Rest(later), row.tokens);
        if (!row.added && !row.delimiters.empty()) continue;
        Tokens single;
        SString token;
        later.Init(text, "x", 0, 0);
        while (later.NextTokenParam(&token, nullptr, delimiters, row.returned), !token.IsEmpty())
            single.emplace_back(token.View());
        EXPECT_EQ(single, row.tokens);
    }
}

TEST(Tokenizer, HasMoreTokensSkipsOnlyWithoutReturnedDelimiters) {
    SStringTokenizer tokenizer;
    EXPECT_FALSE(tokenizer.HasMoreTokens());
    tokenizer.Init("a  ", "+", 1, 1);
    EXPECT_EQ(tokenizer.NextToken(), "a");
    EXPECT_TRUE(tokenizer.HasMoreTokens());
    tokenizer.SkipSpaces();
    EXPECT_FALSE(tokenizer.HasMoreTokens());
    tokenizer.Init("a +  ", "+", 0, 1);
    EXPECT_EQ(tokenizer.NextToken(), "a");
    EXPECT_FALSE(tokenizer.HasMoreTokens());
}

TEST(Tokenizer, InitKeepsDelimitersAndDoneForgetsThem) {
    SStringTokenizer tokenizer;
    tokenizer.AddSimpleToken("::", 7);
    tokenizer.Init("a", "+", 1, 0);
    tokenizer.Init("a+b c", 1);
    EXPECT_EQ(Rest(tokenizer), (Tokens{"a", "+", "b", "c"}));
    tokenizer.SetDelimiters(";", 1, 1);
    tokenizer.SetDelimiters(",", 1, 1);
    tokenizer.RestoreState(0);
    EXPECT_EQ(Rest(tokenizer), (Tokens{"a+b", "c"}));
    tokenizer.Done();
    EXPECT_FALSE(tokenizer.HasMoreTokens());
    tokenizer.Init("a,b::c", 1);
    EXPECT_EQ(Rest(tokenizer), (Tokens{"a,b", "::", "c"}));
}

struct RegisteredRow {
    const char* name;
    int page;
    const char* text;
    std::vector<std::pair<std::string, long>> tokens;
};

constexpr long kNone = SStringTokenizer::NoId;

const RegisteredRow kRegistered[] = {
    {"amid text", 1252, "a:=b", {{"a", kNone}, {":=", 1}, {"b", kNone}}},
    {"longest first", 1252, ":==", {{":==", 2}}},
    {"before delimiters", 1252, "/ //", {{"/", kNone}, {"//", 3}}},
    {"before separators", 1252, "a \n\n b", {{"a", kNone}, {"\n\n", 4}, {"b", kNone}}},
    {"the later registration counts", 1252, "->", {{"->", 6}}},
    {"between delimiters", 1252, "<a /b>c", {{"a /b", 7}, {"c", kNone}}},
    {"with delimiters", 1252, "x\"a b\" y", {{"x", kNone}, {"\"a b\"", 8}, {"y", kNone}}},
    {"unended", 1252, "\"a //", {{"\"a //", 8}}},
    {"empty between delimiters", 1252, "<>c", {{"", 7}, {"c", kNone}}},
    {"start as trail byte", 932, "\x83<a", {{"\x83<a", kNone}}},
    {"end as trail byte", 932, "<\x83>>", {{"\x83>", 7}}},
};

TEST(Tokenizer, RecognisesRegisteredTokens) {
    SStringTokenizer tokenizer;
    tokenizer.AddSimpleToken(":=", 1);
    tokenizer.AddSimpleToken(":==", 2);
    tokenizer.AddSimpleToken("//", 3);
    tokenizer.AddSimpleToken("\n\n", 4);
    tokenizer.AddSimpleToken("->", 5);
    tokenizer.AddSimpleToken("->", 6);
    tokenizer.AddSimpleToken("", 9);
    tokenizer.AddDelimitedToken("angle", "<", ">", 0, 7);
    tokenizer.AddDelimitedToken("quoted", "\"", "\"", 1, 8);
    for (const RegisteredRow& row : kRegistered) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        tokenizer.Init(row.text, "/", 1, 1);
        for (const auto& [text, id] : row.tokens) {
            SString token;
            const SDelimitedToken* matched = nullptr;
            EXPECT_EQ(tokenizer.NextTokenParam(&token, &matched), id);
            EXPECT_EQ(token.View(), text);
            ASSERT_EQ(matched != nullptr, id != kNone);
            if (!matched) continue;
            EXPECT_EQ(matched->id, id);
            EXPECT_EQ(matched->name.View(), id == 7 ? "angle" : id == 8 ? "quoted" : text);
        }
        EXPECT_EQ(tokenizer.NextTokenParam(nullptr), kNone);
    }
}

struct UntilRow {
    const char* name;
    int page;
    const char* text;
    const char* stop;
    int found;
    const char* taken;
    const char* next;
};

const UntilRow kUntils[] = {
    {"found", 1252, "a b*/c", "*/", 1, "a b", "c"},
    {"found at once", 1252, "*/c", "*/", 1, "", "c"},
    {"never", 1252, "a b", "*/", 0, "a b", ""},
    {"empty stop", 1252, "a", "", 1, "", "a"},
    {"stop as trail byte", 932, "\x83\"a\"b", "\"", 1, "\x83\"a", "b"},
};

TEST(Tokenizer, RetrievesRawText) {
    for (const UntilRow& row : kUntils) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        SStringTokenizer tokenizer;
        tokenizer.Init(row.text, 0);
        SString taken = "old";
        EXPECT_EQ(tokenizer.RetrieveUntil(row.stop, &taken), row.found);
        EXPECT_EQ(taken, row.taken);
        EXPECT_EQ(tokenizer.NextToken(), row.next);
    }
}

TEST(Tokenizer, PositionsAndTextAreItsOwn) {
    SString text = "one two";
    SStringTokenizer tokenizer;
    tokenizer.Init(text, 0);
    EXPECT_EQ(tokenizer.NextToken(), "one");
    const unsigned int saved = tokenizer.SaveState();
    text = "other";
    EXPECT_EQ(tokenizer.NextToken(), "two");
    tokenizer.RestoreState(saved);
    EXPECT_EQ(tokenizer.NextToken(), "two");
    tokenizer.RestoreState(99);
    EXPECT_FALSE(tokenizer.HasMoreTokens());
}

TEST(Tokenizer, StaysWhereItWasWithoutMemory) {
    const std::string longToken(5000, 'x');  // too long for a pool, so that it needs the heap
    SStringTokenizer tokenizer;
    tokenizer.Init(SString(std::string_view(longToken)), 0);
    {
        FailNthAllocation fail(1, true);
        SString token;
        EXPECT_THROW(tokenizer.NextTokenParam(&token), SEOutOfMemory);
        EXPECT_THROW(tokenizer.RetrieveUntil("y", &token), SEOutOfMemory);
    }
    EXPECT_EQ(tokenizer.NextToken().View(), longToken);
}

}  // namespace
