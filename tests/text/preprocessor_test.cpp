#include <brcore8/text/preprocessor.h>

#include <brcore8/core/exception.h>
#include <brcore8/text/symbol_table.h>

#include <gtest/gtest.h>
#include <pthread.h>

#include <map>
#include <random>
#include <string>
#include <string_view>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

using namespace std::string_literals;

std::string Preprocess(std::string_view input, SSymbolTable* symbols = nullptr, char with = '#') {
    SPreprocessor preprocessor(with);
    const SString output = preprocessor.Preprocess(SString(input), symbols);
    EXPECT_TRUE(output.AssertValid());
    return std::string(output.View());
}

struct Row {
    const char* name;
    std::string input;
    std::string output;
    char directive = '#';
    int page = 1252;
};

const Row kRows[] = {
    {"empty input", "", ""},
    {"only blanks", " \n\t\r ", ""},
    {"two words", "one two", "one two "},
    {"blanks vanish", "\r\n one\t\ttwo \n", "one two "},
    {"delimiters stand alone", "a+b=\"c\\", "a + b = \" c \\ "},
    {"zero and last byte are text", "a\0b \xFF"s, "a\0b \xFF "s},
    {"comment signs without the character", "a /* b */ // c", "a /* b * / // c "},
    {"block comment", "a #/* b # \n */ c", "a c "},
    {"block comment to the end", "a #/* b", "a "},
    {"line comment", "a #// b # */\nc", "a c "},
    {"line comment to the end", "a #// b", "a "},
    {"doubled character", "a ## b", "a ## b "},
    {"doubled in a region left out", "#ifdef A ## b #endif c", "c "},
    {"blanks after the character", "# \n define A 1 b", "b "},
    {"character at the end", "a #", "a "},
    {"value on the next line", "#define A\n1 b", "b "},
    {"define at the end", "a #define A", "a "},
    {"minus one leaves its digit", "#define A -1", "1 "},
    {"define then ifdef", "#define A 1 #ifdef A yes #else no #endif", "yes "},
    {"ifndef", "#ifndef A yes #else no #endif end", "yes end "},
    {"undef does not undo define", "#define A 1 #undef A #ifdef A yes #endif", "yes "},
    {"define left out defines nothing", "#ifdef A #define B 1 #endif #ifdef B yes #endif", ""},
    {"else inside a region left out", "#ifdef A #ifdef B one #else two #endif #endif", "two "},
    {"second else toggles back", "#ifdef A 1 #else 2 #else 3 #else 4 #endif 5", "2 4 5 "},
    {"nested regions", "#ifndef A 1 #ifdef B 2 #endif 3 #endif 4", "1 3 4 "},
    {"if and elif drop their keyword", "#if A 1 #elif B 2 #endif 3", "A 1 B 2 3 "},
    {"if inside a region", "#ifndef A #if B #endif C", "B C "},
    {"else and endif outside", "#else a #endif b", "a b "},
    {"unended region", "#ifndef A a #ifdef B b", "a "},
    {"unended region left out", "#ifdef A a", ""},
    {"error with a text", "a #error \"b # c\" d", "a d "},
    {"message in a region left out", "#ifdef A #message \"#endif\" b #endif c", "c "},
    {"error without a text", "#error b c", "c "},
    {"message to the end", "a #message \"b c", "a "},
    {"ifdef at the end", "a #ifdef", "a "},
    {"keywords differ by case", "#DEFINE A 1", "A 1 "},
    {"a zero byte in a keyword", "#define\0 A 1"s, "A 1 "},
    {"names differ behind a zero byte", "#define A\0 1 #ifdef A a #endif b"s, "b "},
    {"a delimiter as character", "a -define A 1 -ifdef A # b -endif", "a # b ", '-'},
    {"another character opens a token", "a @x define A 1 b @x ifdef A c @x endif", "a b c ", '@'},
    {"and the rest of it is dropped", "a @define b", "a ", '@'},
    {"and the next is the keyword", "@define error \"b\" c", "c ", '@'},
    {"a letter as character", "a dx define A 1 b", "a b ", 'd'},
    {"slash: comment signs open too", "a // define A 1 b", "a b ", '/'},
    {"a high byte as character", "a \xE9x /* b */ c", "a c ", '\xE9'},
    {"character as trail byte", "a\x83#ifdef b", "a\x83#ifdef b ", '#', 932},
    {"quote as trail byte", "#error \"\x83\" b\" c", "c ", '#', 932},
    {"comment's end as trail byte", "#/* \x83*/ */ c", "c ", '#', 932},
    {"the same bytes in a single-byte page", "#/* \x83*/ c", "c "},
};

TEST(Preprocessor, FollowsItsRules) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        EXPECT_EQ(Preprocess(row.input, nullptr, row.directive), row.output);
    }
}

struct DefineRow {
    const char* name;
    const char* token;
    int numeric;
    const char* value;
    int page = 1252;
};

const DefineRow kDefines[] = {
    {"number", "12", 1, "12"},
    {"leading zeros go", "007", 1, "7"},
    {"number with a tail", "12ab", 1, "12"},
    {"word", "ab12", 0, "ab12"},
    {"no value", "", 0, ""},
    {"minus sign", "-1", 0, "-"},
    {"digit as trail byte",
     "\x83"
     "1",
     0,
     "\x83"
     "1",
     932},
};

TEST(Preprocessor, DefinesNumbersAndTexts) {
    for (const DefineRow& row : kDefines) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        SSymbolTable symbols;
        Preprocess("#define A "s + row.token, &symbols);
        const SSTItem* const item = symbols.RetrieveSymbol("A", -1);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->numeric, row.numeric);
        EXPECT_EQ(item->value, row.value);
    }
    SSymbolTable symbols;
    const SString tooLong = "99999999999999999999999";  // each system's atol has its own answer
    Preprocess("#define A "s + static_cast<const char*>(tooLong), &symbols);
    EXPECT_EQ(symbols.RetrieveSymbol("A", -1)->value, SString(tooLong.operator long()));
}

TEST(Preprocessor, SymbolsOfTheCallerCountAndStay) {
    SSymbolTable symbols;
    symbols.AddSymbol("GIVEN", "1", -1);
    symbols.AddSymbol("ELSEWHERE", "1", 0);
    EXPECT_EQ(Preprocess("#ifdef GIVEN a #endif #ifdef ELSEWHERE b #endif #define NEW 1", &symbols),
              "a ");
    EXPECT_EQ(Preprocess("#ifdef NEW c #endif #undef ELSEWHERE #undef GIVEN", &symbols), "c ");
    EXPECT_FALSE(symbols.IsSymbolDefined("ELSEWHERE", 0));
    EXPECT_TRUE(symbols.IsSymbolDefined("GIVEN", -1));
    EXPECT_EQ(Preprocess("#ifdef A #undef B #endif", &symbols), "");
}

TEST(Preprocessor, OneObjectTakesManyInputsAndCharacters) {
    SPreprocessor preprocessor('#');
    SSymbolTable symbols;
    EXPECT_EQ(preprocessor.Preprocess("#ifdef A a", &symbols), "");
    EXPECT_EQ(preprocessor.Preprocess("b #define A 1", &symbols), "b ");
    preprocessor.Init('-');
    EXPECT_EQ(preprocessor.Preprocess("-ifdef A # -endif", &symbols), "# ");
}

TEST(Preprocessor, ExportsItsVocabulary) {
    EXPECT_EQ(gPP_Delimiters, "#+=-/*\\\"");
    const std::pair<const SString*, const char*> words[] = {
        {&gPP_Space, " "},         {&gPP_define, "define"}, {&gPP_undef, "undef"},
        {&gPP_ifdef, "ifdef"},     {&gPP_ifndef, "ifndef"}, {&gPP_else, "else"},
        {&gPP_endif, "endif"},     {&gPP_error, "error"},   {&gPP_message, "message"},
        {&gPP_BeginComment, "/*"}, {&gPP_EndComment, "*/"}, {&gPP_LineComment, "//"},
        {&gPP_EOL, "\n"},          {&gPP_if, "if"},         {&gPP_elif, "elif"},
        {&gPP_defined, "defined"},
    };
    for (const auto& [word, text] : words)
        EXPECT_EQ(*word, text);
}

TEST(Preprocessor, WithoutMemoryItThrowsAndCanBeUsedAgain) {
    const std::string input = "#define A 1 #ifdef A " + std::string(5000, 'x') + " #endif";
    SPreprocessor preprocessor('#');
    bool done = false;
    for (int nth = 1; !done && nth < 100; ++nth) {
        SSymbolTable symbols;
        const SString text{std::string_view(input)};
        {
            FailNthAllocation fail(nth);
            try {
                (void)preprocessor.Preprocess(text, &symbols);
                done = !fail.Triggered();
            } catch (const SEOutOfMemory&) {
            }
        }
        EXPECT_EQ(preprocessor.Preprocess(text, &symbols).LengthByte(), 5001);
    }
    EXPECT_TRUE(done);
}

// ---- Depth and length ---------------------------------------------------------------------------

// Runs the function in a thread of that small a stack.
void RunInSmallStack(void* (*function)(void*), void* argument) {
    pthread_attr_t attributes;
    pthread_t thread;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    ASSERT_EQ(pthread_create(&thread, &attributes, function, argument), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    ASSERT_EQ(pthread_attr_destroy(&attributes), 0);
}

std::string Repeated(int count, std::string_view piece) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

TEST(Preprocessor, AMillionNestedRegionsFitInASmallStack) {
    constexpr int kDepth = 1000000;
    struct Job {
        std::string input, output;
    };
    const std::string longName(1000000, 'n');
    std::string defines;
    for (int i = 0; i < 200000; ++i)
        defines += "#define N" + std::to_string(i) + " 1 ";
    const Job kJobs[] = {
        {Repeated(kDepth, "#ifndef A ") + "deep " + Repeated(kDepth, "#endif ") + "end",
         "deep end "},
        {Repeated(kDepth, "#ifdef A ") + "deep " + Repeated(kDepth, "#endif ") + "end", "end "},
        {Repeated(kDepth, "#ifdef A x #else ") + "deep", "deep "},
        {"#ifdef A " + Repeated(kDepth, "#else ") + "even #else odd", "odd "},
        {Repeated(kDepth, "#/* #// */ ##"), Repeated(kDepth, "## ")},
        {"#define " + longName + " 1 #ifdef " + longName + " named #endif", "named "},
        {defines + "#ifdef N199999 last #endif #ifdef N200000 more #endif", "last "},
    };
    for (const Job& job : kJobs) {
        std::pair<const std::string*, std::string> work{&job.input, {}};
        RunInSmallStack(
            [](void* argument) -> void* {
                auto& [input, output] = *static_cast<decltype(work)*>(argument);
                output = Preprocess(*input);
                return nullptr;
            },
            &work);
        EXPECT_TRUE(work.second == job.output) << job.input.substr(0, 40);
    }
}

// ---- Against the rules written down once more, recursively --------------------------------------

class Model {
public:
    Model(std::string_view text, bool doubleByte) : text_(text), doubleByte_(doubleByte) {}

    std::string Run() {
        while (position_ < text_.size())
            if (Scan(true)) Directive(true);
        return out_;
    }
    const std::map<std::string, std::string>& Defined() const { return defined_; }

private:
    std::size_t Width() const {
        const auto byte = static_cast<unsigned char>(text_[position_]);
        const bool lead =
            doubleByte_ && ((byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC));
        return lead && position_ + 1 < text_.size() && text_[position_ + 1] != 0 ? 2 : 1;
    }
    bool At(std::string_view wanted) const { return text_.substr(position_).starts_with(wanted); }
    bool AtOneOf(std::string_view set) const { return set.find(text_[position_]) != set.npos; }

    std::string Next() {
        while (position_ < text_.size() && AtOneOf(" \t\n\r"))
            ++position_;
        const std::size_t start = position_;
        if (At("/*") || At("//"))
            position_ += 2;
        else if (position_ < text_.size() && AtOneOf(kDelimiters))
            ++position_;
        else
            while (position_ < text_.size() && !AtOneOf(kDelimiters) && !AtOneOf(" \t\n\r"))
                position_ += Width();
        return std::string(text_.substr(start, position_ - start));
    }
    void SkipPast(std::string_view stop) {
        while (position_ < text_.size() && !At(stop))
            position_ += Width();
        if (position_ < text_.size()) position_ += stop.size();
    }

    bool Scan(bool copy) {
        for (std::string token = Next(); !token.empty(); token = Next()) {
            if (token[0] == '#') return true;
            if (copy) out_ += token + " ";
        }
        return false;
    }
    void Directive(bool active) {
        const std::string keyword = Next();
        if (keyword == "define") {
            const std::string name = Next();
            const std::string value = Next();
            if (active)
                defined_[name] = (value[0] >= '0' && value[0] <= '9')
                                     ? std::to_string(atol(value.c_str()))
                                     : value;
        } else if (keyword == "undef") {
            Next();  // from a category where this model has nothing
        } else if (keyword == "ifdef") {
            Conditional(defined_.count(Next()) != 0 && active);
        } else if (keyword == "ifndef") {
            Conditional(defined_.count(Next()) == 0 && active);
        } else if (keyword == "error" || keyword == "message") {
            if (Next() == "\"") SkipPast("\"");
        } else if (keyword == "#") {
            if (active) out_ += "## ";
        } else if (keyword == "/*") {
            SkipPast("*/");
        } else if (keyword == "//") {
            SkipPast("\n");
        }
    }
    void Conditional(bool active) {
        Scan(active);
        std::size_t saved = position_;
        for (std::string keyword = Next(); !keyword.empty(); keyword = Next()) {
            if (keyword == "endif") return;
            if (keyword == "else") return Conditional(!active);
            position_ = saved;
            Directive(active);
            Scan(active);
            saved = position_;
        }
    }

    static constexpr std::string_view kDelimiters = "#+=-/*\\\"";
    std::string_view text_;
    bool doubleByte_;
    std::size_t position_ = 0;
    std::string out_;
    std::map<std::string, std::string> defined_;
};

TEST(Preprocessor, AgreesWithTheModel) {
    const std::string_view pieces[] = {"#",
                                       "#",
                                       "#",
                                       "#define ",
                                       "#ifdef ",
                                       "#ifndef ",
                                       "#else ",
                                       "#endif ",
                                       "#undef ",
                                       "error",
                                       "message",
                                       "A",
                                       "B",
                                       "12",
                                       "7x",
                                       "\"",
                                       "/*",
                                       "*/",
                                       "//",
                                       "\n",
                                       " ",
                                       " ",
                                       "\\",
                                       "+",
                                       "\xE9",
                                       "\x83",
                                       "\x83#",
                                       "\x81\x41",
                                       std::string_view("\0", 1),
                                       "\xFF",
                                       "define",
                                       "endif"};
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        for (unsigned seed = 1; seed <= 4000; ++seed) {
            std::mt19937 random(seed);
            std::string input;
            for (unsigned i = random() % 60; i > 0; --i) {
                input += pieces[random() % std::size(pieces)];
                if (random() % 2) input += ' ';
            }
            SCOPED_TRACE("page " + std::to_string(number) + " seed " + std::to_string(seed) + ": " +
                         testing::PrintToString(input));
            Model model(input, number == 932);
            SSymbolTable symbols;
            ASSERT_EQ(Preprocess(input, &symbols), model.Run());
            ASSERT_EQ(symbols.GetCount(-1), static_cast<int>(model.Defined().size()));
            for (const auto& [name, value] : model.Defined()) {
                const SSTItem* const item =
                    symbols.RetrieveSymbol(SString(std::string_view(name)), -1);
                ASSERT_TRUE(item && item->value.View() == value) << name;
            }
        }
    }
}

}  // namespace
