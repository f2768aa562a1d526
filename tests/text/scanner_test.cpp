#include <brcore8/text/scanner.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/text/symbol_table.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

SKeywordTable KeywordsOf(std::initializer_list<const char*> words) {
    SKeywordTable keywords;
    long id = 0;
    for (const char* word : words)
        keywords.AddKeyword(word, ++id);
    return keywords;
}

// All tokens as "id:text id:text", the end not counted.
std::string Scan(SScanner& scanner) {
    std::string tokens;
    while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty()) {
        if (!tokens.empty()) tokens += ' ';
        tokens += std::to_string(scanner.tokenID) + ":" + std::string(scanner.token.View());
        EXPECT_TRUE(scanner.token.AssertValid());
    }
    return tokens;
}

struct Row {
    const char* name;
    std::initializer_list<const char*> keywords;
    const char* text;
    const char* tokens;
    int page = 1252;
};

const Row kRows[] = {
    {"nothing", {"if"}, "", ""},
    {"text then a keyword", {"if"}, "red if", "-1:red 1:if"},
    {"keywords in a row", {"if", "then"}, "if then if", "1:if 2:then 1:if"},
    {"the case of the text is free", {"if"}, "IF iF", "1:IF 1:iF"},
    {"letters of the page fold", {"\xE9t\xE9"}, "\xC9T\xC9", "1:\xC9T\xC9"},
    {"keywords with capitals are never found", {"If"}, "if If IF", "-1:ifIfIF"},
    {"words are joined without blanks", {"if"}, "a b\tc\r\nd if e", "-1:abcd 1:if -1:e"},
    {"delimiters inside a run stay", {"if"}, "a + b*c if", "-1:a+b*c 1:if"},
    {"delimiters at its ends go", {"if"}, "(a+b) if {c}", "-1:a+b 1:if -1:c"},
    {"a keyword inside a word", {"if"}, "gift iffy", "-1:giftiffy"},
    {"delimiters cut keywords out", {"if"}, "a(if)b", "-1:a 1:if -1:b"},
    {"a run of delimiters is skipped", {"if"}, "if () + if", "1:if 1:if"},
    {"a keyword of one character cuts words", {"&"}, "a&b", "-1:a 1:& -1:b"},
    {"a keyword that is a delimiter is trimmed away", {"+"}, "a+b", "-1:a -1:b"},
    {"unless the text ends with it", {"+"}, "a+", "-1:a 1:"},
    {"an empty keyword", {""}, "a  ", "-1:a 1:"},
    {"a long keyword",
     {"abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnop"},
     "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnop",
     "1:abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnop"},
    {"only blanks", {"if"}, " \t\n ", ""},
    {"double-byte keyword", {"\x82\x81"}, "x \x82\x60 \x82\x81", "-1:x 1:\x82\x60 1:\x82\x81", 932},
    {"one double-byte character cuts words",
     {"\x81\x41"},
     "a\x81\x41z",
     "-1:a 1:\x81\x41 -1:z",
     932},
    {"trail bytes are no delimiters", {"if"}, "\x83\x5B\x5D if", "-1:\x83\x5B 1:if", 932},
};

TEST(Scanner, FindsKeywordsAndRuns) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        SKeywordTable keywords = KeywordsOf(row.keywords);
        SScanner scanner(row.text, &keywords);
        EXPECT_EQ(scanner.tokenID, 0);
        EXPECT_EQ(Scan(scanner), row.tokens);
        EXPECT_EQ(scanner.NextTokenID(), SScanner::NoID);
    }
}

TEST(Scanner, WithoutATableTheTextIsOneRun) {
    SScanner scanner("(if a)", nullptr);
    EXPECT_EQ(scanner.InitKeywordsDelimiters(), 1);
    EXPECT_EQ(Scan(scanner), "-1:ifa");
    SScanner empty;
    EXPECT_EQ(empty.NextTokenID(), SScanner::NoID);
    EXPECT_EQ(empty.token, "");
}

TEST(Scanner, RemembersThePreviousId) {
    SKeywordTable keywords = KeywordsOf({"if", "then", "+"});
    SScanner scanner("if x then () then + y", &keywords);
    const std::pair<long, long> ids[] = {{1, 0}, {-1, 1}, {2, -1}, {2, -1}, {-1, 3}, {-1, -1}};
    for (const auto& [current, previous] : ids) {
        EXPECT_EQ(scanner.NextTokenID(), current);
        EXPECT_EQ(scanner.previousTokenID, previous);
    }
    scanner.Init("then", &keywords);
    EXPECT_EQ(scanner.previousTokenID, 0);
    scanner.NextTokenID();
    scanner.NextTokenID();
    scanner.Done();
    EXPECT_EQ(scanner.tokenID, 0);
    EXPECT_EQ(scanner.previousTokenID, 2);
    EXPECT_EQ(scanner.Init(), 1);
    EXPECT_EQ(scanner.previousTokenID, 0);
    EXPECT_EQ(Scan(scanner), "");
}

TEST(Scanner, TakesOtherDelimiters) {
    SKeywordTable keywords = KeywordsOf({"if", "&"});
    SString comma = ",";
    SScanner scanner;
    EXPECT_EQ(scanner.Init(",a,(if),b&c", &keywords, comma, 1, 1), 1);
    EXPECT_EQ(Scan(scanner), "-1:a,(if),b 2:& -1:c");
    scanner.Init("a b,if,c&d", &keywords, comma, 0, 0);  // nothing but delimiters separates
    EXPECT_EQ(Scan(scanner), "-1:a b 1:if -1:cd");
    scanner.Init("if&x;if&y;if", &keywords);
    EXPECT_EQ(scanner.NextTokenID(), 1);
    scanner.SetDelimiters(";", 1, 1);
    EXPECT_EQ(Scan(scanner), "-1:x 1:if -1:y 1:if");
    scanner.Init("if&x;if", &keywords);
    scanner.SetDelimiters(";", 1, 0);
    EXPECT_EQ(Scan(scanner), "-1:if&x 1:if");
    scanner.Init("a.b", &keywords);
    keywords.AddKeyword(".", 9);
    scanner.InitKeywordsDelimiters();
    EXPECT_EQ(Scan(scanner), "-1:a.b");
    scanner.Init("a.b", &keywords);
    EXPECT_EQ(Scan(scanner), "-1:a 9:. -1:b");
}

// The text is held; whatever happens to the table counts from the next call on.
TEST(Scanner, FollowsTheTable) {
    SKeywordTable keywords = KeywordsOf({"if", "then"});
    SScanner scanner;
    {
        SString text = "if if then if if do then if then if";
        scanner.Init(text, &keywords);
        text.Done();
    }
    EXPECT_EQ(scanner.NextTokenID(), 1);
    keywords.RetrieveKeyword("if")->id = 5;
    EXPECT_EQ(scanner.NextTokenID(), 5);
    keywords.RemoveKeyword("then");
    EXPECT_EQ(scanner.NextTokenID(), -1);
    keywords.AddKeyword("if", 6);
    EXPECT_EQ(scanner.NextTokenID(), 6);
    keywords.RemoveKeyword("if");
    keywords.AddKeyword("do", 7);
    EXPECT_EQ(scanner.NextTokenID(), -1);
    EXPECT_EQ(scanner.token, "if");
    EXPECT_EQ(scanner.NextTokenID(), 7);
    SKeywordTable other = KeywordsOf({"then"});
    std::swap(keywords, other);
    EXPECT_EQ(scanner.NextTokenID(), 1);
    keywords = KeywordsOf({"if"});
    EXPECT_EQ(scanner.NextTokenID(), 1);
    keywords.Clear();
    EXPECT_EQ(Scan(scanner), "-1:thenif");
    for (const char* word : {"one", "two"}) {  // copies, most likely at one address
        const SKeywordTable master = KeywordsOf({word});
        SKeywordTable copy(master);
        scanner.Init("one two", &copy);
        EXPECT_EQ(scanner.NextTokenID(), *word == 'o' ? 1 : -1);
    }
    scanner.Init(scanner.token, &keywords);
    EXPECT_EQ(Scan(scanner), "-1:one");
}

// The rules once more, word by word.
std::string ScanSimply(const std::string& text, const SKeywordTable& keywords,
                       const std::string& cuts) {
    const auto trim = [](std::string run) {
        const std::string set(gSN_Delimiters.View());
        run.erase(0, std::min(run.find_first_not_of(set), run.size()));
        return run.substr(0, run.find_last_not_of(set) + 1);
    };
    std::string tokens, run;
    const auto put = [&tokens](const std::string& token) {
        tokens += (tokens.empty() ? "" : " ") + token;
    };
    std::size_t at = 0;
    const std::string spaces = " \t\n\r";
    while ((at = text.find_first_not_of(spaces, at)) < text.size()) {
        std::size_t end = std::min(text.find_first_of(spaces + cuts, at), text.size());
        if (end == at) ++end;
        SString lower(std::string_view(text).substr(at, end - at));
        lower.ToLower();
        const SKTItem* const keyword = keywords.RetrieveKeyword(lower);
        const std::string word = text.substr(at, end - at);
        at = end;
        if (keyword == nullptr) {
            run += word;
            continue;
        }
        if (!trim(run).empty()) put("-1:" + trim(run));
        run.clear();
        const bool last = text.size() == end;
        if (last || !trim(word).empty()) put(std::to_string(keyword->id) + ":" + trim(word));
    }
    if (!trim(run).empty()) put("-1:" + trim(run));
    return tokens;
}

TEST(Scanner, DoesAsTheRulesSay) {
    static const char* const pieces[] = {"if", "IF", "x",    " ",    "+",   "&",
                                         "(",  "\n", "gift", "\xC9", "\xE9"};
    SKeywordTable keywords = KeywordsOf({"if", "x", "&", "\xE9", "+", "ifx", "X"});
    for (unsigned seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string text;
        for (unsigned i = random() % 40; i > 0; --i)
            text += pieces[random() % std::size(pieces)];
        SScanner scanner(SString(std::string_view(text)), &keywords);
        EXPECT_EQ(Scan(scanner),
                  ScanSimply(text, keywords, std::string(gSN_Delimiters.View()) + "&x\xE9X"))
            << text;
    }
}

TEST(Scanner, StandsWhereItStoodWithoutMemory) {
    SKeywordTable keywords = KeywordsOf({"if"});
    const SString text = SString('a', 5000) + " " + SString('b', 5000) + " if";
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        SScanner scanner(text, &keywords);
        bool failed = false;
        {
            FailNthAllocation fail(nth);
            try {
                scanner.NextTokenID();
            } catch (const SEOutOfMemory&) {
                failed = true;
                EXPECT_EQ(scanner.tokenID, 0);
            }
        }
        if (failed) scanner.NextTokenID();
        EXPECT_EQ(scanner.token.LengthByte(), 10000);
        EXPECT_EQ(scanner.NextTokenID(), 1);
        if (!failed) break;
    }
}

// Texts that would exhaust the stack, or not end today.
TEST(Scanner, LargeInputsAreLinear) {
    SKeywordTable keywords = KeywordsOf({"+", "&"});
    SScanner scanner(SString('+', 1000000), &keywords);
    EXPECT_EQ(Scan(scanner), "1:");
    scanner.Init(SString('(', 1000000) + "a", &keywords);
    EXPECT_EQ(Scan(scanner), "-1:a");
    std::string text;
    while (text.size() < 10 << 20)
        text += "word ";
    scanner.Init(SString(std::string_view(text)), &keywords);
    EXPECT_EQ(scanner.NextTokenID(), SScanner::NoID);
    EXPECT_EQ(scanner.token.LengthByte(), static_cast<int>(text.size() / 5 * 4));
    text.clear();
    for (int i = 1; i <= 100000; ++i) {
        text += "Word" + std::to_string(i) + "\n";
        keywords.AddKeyword(SString(std::string_view("word" + std::to_string(i))), i);
    }
    for (int round = 0; round < 2; ++round) {
        scanner.Init(SString(std::string_view(text)), &keywords);
        for (int i = 1; i <= 100000; ++i)
            ASSERT_EQ(scanner.NextTokenID(), i);
    }
}

}  // namespace
