// On well-formed text the primitives answer as the C run-time's functions of the same purpose.
#include <gtest/gtest.h>
#include <mbstring.h>

#include <cstring>
#include <random>
#include <string>

#include "platform/code_pages.h"
#include "strings/mbs.h"

namespace {

using brcore8::CodePage;
namespace mbs = brcore8::mbs;
using Text = std::basic_string<unsigned char>;

const char* Plain(const Text& text) {
    return reinterpret_cast<const char*>(text.c_str());
}
int Sign(int order) {
    return order < 0 ? -1 : order > 0;
}

std::ptrdiff_t Place(const void* found, const Text& text) {
    return found ? static_cast<const unsigned char*>(found) - text.c_str() : -1;
}

class RuntimeText : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override {
        CodePage::SetAnsi(*CodePage::Find(GetParam()));
        brcore8::SetRuntimeCodePage(GetParam());
    }
    void TearDown() override {
        CodePage::SetAnsi(*CodePage::Find(1252));
        brcore8::SetRuntimeCodePage(1252);
    }
};
INSTANTIATE_TEST_SUITE_P(Pages, RuntimeText, testing::Values(1252u, 932u, 936u, 949u, 950u),
                         testing::PrintToStringParamName());

TEST_P(RuntimeText, IsTreatedAlike) {
    const CodePage& page = CodePage::Ansi();
    const unsigned seed = 7 + GetParam();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto randomText = [&](unsigned most) {
        static const unsigned char bytes[] = "aAbBz\x83\x83\xA4\xB1\xE9";
        Text text;
        for (unsigned length = random() % (most + 1); length > 0; --length) {
            text += bytes[random() % (sizeof bytes - 1)];
            if (page.IsLead(text.back()))
                text += static_cast<unsigned char>("aA\xA4\xB1"[random() % 4]);
        }
        return text;
    };
    for (int round = 0; round < 5000; ++round) {
        const Text left = randomText(10), right = randomText(3);
        SCOPED_TRACE(testing::PrintToString(left) + testing::PrintToString(right));
        ASSERT_EQ(mbs::Compare(Plain(left), Plain(right)),
                  Sign(_mbscmp(left.c_str(), right.c_str())));
        // There are run-times that search double-byte text byte by byte.
        if (!page.IsDoubleByte()) {
            ASSERT_EQ(Place(mbs::FindText(Plain(left), Plain(right)), left),
                      Place(_mbsstr(left.c_str(), right.c_str()), left));
        }
        ASSERT_EQ(mbs::Count(page, Plain(left), left.size()),
                  static_cast<int>(_mbslen(left.c_str())));
        if (left.empty() || right.empty()) continue;
        ASSERT_EQ(Place(mbs::Next(page, Plain(left)), left), Place(_mbsinc(left.c_str()), left));
        const unsigned code = mbs::UnsignedCodeAt(page, Plain(right));
        ASSERT_EQ(code, _mbsnextc(right.c_str()));
        ASSERT_EQ(Place(mbs::Find(Plain(left), code), left),
                  Place(_mbschr(left.c_str(), code), left));
        ASSERT_EQ(Place(mbs::ReverseFind(Plain(left), code), left),
                  Place(_mbsrchr(left.c_str(), code), left));
    }
}

}  // namespace
