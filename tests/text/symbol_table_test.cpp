#include <brcore8/text/symbol_table.h>

#include <brcore8/core/exception.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

std::string Keys(const SKeywordTable& table) {
    std::string keys;
    for (SKeywordTable::const_iterator it(table); it; ++it)
        keys += std::string(it.GetKey().View()) + "=" + std::to_string((*it).id) + " ";
    return keys;
}

TEST(KeywordTable, FindsKeywordsAsTheyWereGiven) {
    SKeywordTable table;
    table.AddKeyword("while", 2);
    table.AddKeyword("If", 1);
    table.AddKeyword("while", 3);
    EXPECT_EQ(table.GetCount(), 2);
    EXPECT_EQ(table.RetrieveKeyword("while")->id, 3);
    EXPECT_EQ(table.RetrieveKeyword("if"), nullptr);
    EXPECT_TRUE(table.IsKeywordDefined("If"));
    EXPECT_EQ(Keys(table), "If=1 while=3 ");
    table.RemoveKeyword("If");
    table.RemoveKeyword("absent");
    EXPECT_EQ(Keys(table), "while=3 ");
}

TEST(KeywordTable, CopiesAreIndependentAndIteratorsReset) {
    SKeywordTable table;
    table.AddKeyword("a", 1);
    table.AddKeyword("b", 2);
    SKeywordTable copy;
    copy.Init(table);
    copy.RemoveKeyword("a");
    EXPECT_EQ(Keys(table), "a=1 b=2 ");
    SKeywordTable::const_iterator it(table);
    EXPECT_TRUE(it == SKeywordTable::const_iterator(table));
    EXPECT_FALSE(it == SKeywordTable::const_iterator(copy));
    EXPECT_FALSE(++it == SKeywordTable::const_iterator(table));
    EXPECT_FALSE(++it);
    it.reset();
    EXPECT_EQ(it.GetKey(), "a");
    table.Done();
    EXPECT_EQ(Keys(table), "");
}

TEST(KeywordTable, OrdersByCharacterAndSeesZeroBytes) {
    const PageScope page(932);
    SKeywordTable table;
    table.AddKeyword("\x81\x41", 1);  // a double-byte character comes after every single one
    table.AddKeyword("\xB1", 2);
    table.AddKeyword(SString(std::string_view("a\0c", 3)), 3);
    table.AddKeyword(SString(std::string_view("a\0b", 3)), 4);
    table.AddKeyword("a", 5);
    std::string order;
    for (const auto& [key, item] : table)
        order += std::to_string(item.id);
    EXPECT_EQ(order, "54321");
    EXPECT_EQ(table.RetrieveKeyword(SString(std::string_view("a\0d", 3))), nullptr);
}

TEST(SymbolTable, KeepsKindAndValue) {
    SSymbolTable table;
    table.AddSymbol("text", "value", 3);
    table.AddSymbol("number", -12, 3);
    const SSTItem* const text = table.RetrieveSymbol("text", 3);
    EXPECT_EQ(text->numeric, 0);
    EXPECT_EQ(text->name, "text");
    EXPECT_EQ(text->value, "value");
    const SSTItem* const number = table.RetrieveSymbol("number", 3);
    EXPECT_EQ(number->numeric, 1);
    EXPECT_EQ(number->value, "-12");
    EXPECT_EQ(number->category, 3);
    table.AddSymbol("text", 5, 3);
    EXPECT_EQ(table.RetrieveSymbol("text", 3)->value, "5");
    EXPECT_EQ(table.GetCount(3), 2);
    EXPECT_EQ(table.RetrieveSymbol("TEXT", 3), nullptr);
}

TEST(SymbolTable, HigherCategoriesShadowLowerOnes) {
    SSymbolTable table;
    table.AddSymbol("a", "low", 0);
    table.AddSymbol("a", "high", 5);
    table.AddSymbol("b", "lowest", -7);
    EXPECT_EQ(table.RetrieveSymbol("a", SSymbolTable::AllCategories)->value, "high");
    EXPECT_EQ(table.RetrieveSymbol("b", SSymbolTable::AllCategories)->value, "lowest");
    EXPECT_EQ(table.RetrieveSymbol("c", SSymbolTable::AllCategories), nullptr);
    EXPECT_FALSE(table.IsSymbolDefined("a", SSymbolTable::AllCategories));
    table.AddSymbol("a", "real", SSymbolTable::AllCategories);
    EXPECT_TRUE(table.IsSymbolDefined("a", SSymbolTable::AllCategories));
    EXPECT_EQ(table.RetrieveSymbol("a", 5)->SetCategory(9), 5);
    EXPECT_EQ(table.RetrieveSymbol("a", 5)->category, 9);
    EXPECT_EQ(table.RetrieveSymbol("a", 9), nullptr);
}

TEST(SymbolTable, RemovesFromOneEveryAndWholeCategories) {
    SSymbolTable table;
    for (const long category : {0L, 1L, 2L}) {
        table.AddSymbol("a", "x", category);
        table.AddSymbol("b", "x", category);
    }
    SSymbolTable copy(table);
    table.RemoveSymbol("a", 1);
    EXPECT_EQ(table.GetCount(1), 1);
    table.RemoveSymbol(table.RetrieveSymbol("a", 0)->name, SSymbolTable::AllCategories);
    EXPECT_EQ(table.GetCount(0), 1);
    EXPECT_EQ(table.GetCount(2), 1);
    table.RemoveSymbol(2);
    EXPECT_EQ(table.GetCount(2), 0);
    table.RemoveSymbol("a", 77);
    EXPECT_EQ(table.GetCount(77), 0);
    EXPECT_EQ(copy.GetCount(1), 2);
    table.Init(copy);
    EXPECT_TRUE(table.IsSymbolDefined("a", 2));
    table.Init();
    EXPECT_EQ(table.GetCount(0), 0);
}

struct NameRow {
    const char* given;
    const char* name;
    const char* capitalised;
    int page = 1252;
};

const NameRow kNames[] = {
    {"_m_Table", "Table", "Table"},
    {"__table", "_table", "_table"},
    {"m_m_table", "m_table", "M_table"},
    {"m__table", "_table", "_table"},
    {"_", "", ""},
    {"m_", "", ""},
    {"table", "table", "Table"},
    {"\xE9tat", "\xE9tat", "\xC9tat"},
    {"\x82\x81x", "\x82\x81x", "\x82\x60x", 932},  // a wide letter
};

TEST(SymbolTable, DerivesNameAndCodeSymbols) {
    for (const NameRow& row : kNames) {
        SCOPED_TRACE(row.given);
        const PageScope page(row.page);
        SSymbolTable table;
        table.AddNameCodeSymbols(row.given, "_m_code", 4);
        EXPECT_EQ(table.RetrieveSymbol("name", 4)->value, row.name);
        EXPECT_EQ(table.RetrieveSymbol("Name", 4)->value, row.capitalised);
        EXPECT_EQ(table.RetrieveSymbol("code", 4)->value, "code");
        EXPECT_EQ(table.RetrieveSymbol("Code", 4)->value, "Code");
        EXPECT_EQ(table.GetCount(4), 4);
    }
}

TEST(SymbolTable, StaysWholeWithoutMemory) {
    for (int nth = 1; nth < 100; ++nth) {
        SSymbolTable table;
        table.AddSymbol("a", "old", 0);
        FailNthAllocation fail(nth);
        try {
            table.AddSymbol("a", "new", 0);
            table.AddSymbol("b", 1, 1);
            if (!fail.Triggered()) break;
        } catch (const SEOutOfMemory&) {
            EXPECT_TRUE(table.AssertValid());
            EXPECT_EQ(table.GetCount(1), 0);
            EXPECT_EQ(table.GetCount(0), 1);
        }
    }
}

}  // namespace
