// What is built on containers of the standard library says SEOutOfMemory, never anything else, when
// those get no memory.
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/unicode.h>

#include <string>

#include "support/page_scope.h"

#include "failing_new.h"

namespace {

TEST(RefusedNew, StringsAndConversionsThrow) {
    const PageScope page(1252);
    const std::string text(3000, '\xE4');
    const std::u16string wide(3000, u'\u00E4');
    const std::string utf8 = SUtf8FromUtf16(wide);
    SString subject{std::string_view(text)};
    RefuseEachNew(
        "pairs of characters", [&] { subject.Translate("\xE4o", "oa"); },
        [&](bool thrown) { EXPECT_TRUE(!thrown || subject.View() == text); });
    EXPECT_TRUE(subject.View() == std::string(3000, 'a'));

    std::string narrow;
    std::u16string units;
    const auto ignore = [](bool) {};
    RefuseEachNew(
        "from UTF-16", [&] { narrow = STextFromUtf16(wide); }, ignore);
    EXPECT_TRUE(narrow == text);
    RefuseEachNew(
        "to UTF-8", [&] { narrow = SUtf8FromUtf16(wide); }, ignore);
    EXPECT_TRUE(narrow == utf8);
    RefuseEachNew(
        "to UTF-16", [&] { units = SUtf16FromText(text); }, ignore);
    EXPECT_TRUE(units == wide);
    RefuseEachNew(
        "from UTF-8", [&] { units = SUtf16FromUtf8(utf8); }, ignore);
    EXPECT_TRUE(units == wide);
}

// The page stays as it is when there is no memory for another one's tables.
TEST(RefusedNew, APageIsChosenWholeOrNotAtAll) {
    const PageScope page(1252);
    for (int nth = 1;; nth += 1 + nth / 4) {  // a table each lead byte: not every one of them
        ASSERT_LT(nth, 1000);
        bool refused = true;
        int result = 0;
        {
            const FailNthNew fail(nth);
            result = _setmbcp(1361);
            refused = fail.Triggered();
        }
        EXPECT_EQ(result, refused ? -1 : 0) << nth;
        EXPECT_EQ(_getmbcp(), refused ? 1252 : 1361) << nth;
        if (!refused) break;
    }
    EXPECT_EQ(SString("\x88\x61").Length(), 1) << "a character of that page";
}

// Searches go on without their tables, which only save time.
TEST(RefusedNew, SearchesNeedNoMemory) {
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        // Both ends are found everywhere, and the difference only after many steps.
        const std::string what = std::string(100, 'a') + "b" + std::string(100, 'a');
        const std::string upper = std::string(100, 'A') + "B" + std::string(100, 'A');
        const SString text{std::string_view(std::string(100000, 'a') + what)};
        const char* exact = nullptr;
        const char* folded = nullptr;
        int refused = 0;
        for (int search = 0; search < 2; ++search) {
            const FailNthNew fail(1, true);
            if (search == 0)
                exact = text.Find(what.c_str());
            else
                folded = text.FindNoCase(upper.c_str());
            refused += fail.Triggered();
        }
        EXPECT_EQ(refused, 2) << "the usual way asks for memory here";
        EXPECT_TRUE(exact == text.GetPointerAt(100000));
        EXPECT_TRUE(folded == exact);
    }
}

}  // namespace
