// Random operations against a model of plain vectors, and many threads on one buffer.
#include <brcore8/strings/string.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <thread>
#include <vector>

#include "strings/string_fixture.h"

namespace {

class StringModel : public PagedTest {
protected:
    using Characters = std::vector<std::string>;

    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    // Few different characters, so that searches find something.
    std::string Character() {
        static const char* const kPlain[] = {"a", "b", "A", " ", "\xE4", "\xFA"};
        static const char* const kMixed[] = {"a", "b", "A", " ", "\x93\xFA", "\x83\x41"};
        return (IsDoubleByte() ? kMixed : kPlain)[Below(6)];
    }
    Characters Some(int limit) {
        Characters text(static_cast<std::size_t>(Below(limit + 1)));
        for (std::string& character : text)
            character = Character();
        return text;
    }
    static std::string Bytes(const Characters& text) {
        return std::accumulate(text.begin(), text.end(), std::string());
    }
    static unsigned Code(const std::string& character) {
        unsigned code = 0;
        for (const char byte : character)
            code = code * 256 + static_cast<unsigned char>(byte);
        return code;
    }

    void Step(SString& text, Characters& model);
    void ReplaceAll(SString& text, Characters& model);

    std::mt19937 random_{20240229};
};
BRCORE8_BOTH_PAGES(StringModel);

void StringModel::ReplaceAll(SString& text, Characters& model) {
    Characters from = Some(2);
    const Characters to = Some(3);
    if (from.empty()) from.push_back("a");
    Characters result;
    bool any = false;
    for (auto at = model.begin(); at != model.end();) {
        const auto found = std::search(at, model.end(), from.begin(), from.end());
        result.insert(result.end(), at, found);
        if (found == model.end()) break;
        any = true;
        result.insert(result.end(), to.begin(), to.end());
        at = found + static_cast<std::ptrdiff_t>(from.size());
    }
    EXPECT_EQ(text.ReplaceAll(Bytes(from).c_str(), Bytes(to).c_str()), any);
    model = result;
}

void StringModel::Step(SString& text, Characters& model) {
    const int length = static_cast<int>(model.size());
    const int at = Below(length + 1);
    const int count = Below(length - at + 1);
    const auto begin = model.begin() + at;
    switch (Below(9)) {
        case 0: {
            const Characters more = Some(20);
            text += Bytes(more).c_str();
            model.insert(model.end(), more.begin(), more.end());
            break;
        }
        case 1: {
            const Characters more = Some(8);
            text.Insert(Bytes(more).c_str(), at);
            model.insert(begin, more.begin(), more.end());
            break;
        }
        case 2:
            if (at < length && count > 0) {
                text.Delete(at, count);
                model.erase(begin, begin + count);
            }
            break;
        case 3:
            if (at < length) {
                *begin = Character();
                text.SetAt(at, Code(*begin));
            }
            break;
        case 4:
            ReplaceAll(text, model);
            break;
        case 5:
            text = text.Mid(at, count + 10);
            model = Characters(begin, begin + std::min(count + 10, length - at));
            break;
        case 6: {
            text.TrimRight("a ");
            const auto trimmed = [](const std::string& c) { return c == "a" || c == " "; };
            while (!model.empty() && trimmed(model.back()))
                model.pop_back();
            break;
        }
        case 7:
            text += text;
            model.reserve(2 * model.size());
            std::copy_n(model.begin(), length, std::back_inserter(model));
            break;
        default: {
            const std::string what = Character();
            const auto found = std::find(model.begin(), model.end(), what);
            const char* place = text.Find(Code(what));
            EXPECT_EQ(place != nullptr, found != model.end());
            if (place) {
                EXPECT_EQ(text.GetPointerAt(static_cast<int>(found - model.begin())), place);
            }
        }
    }
}

TEST_P(StringModel, RandomOperations) {
    SString text;
    SString shared;
    Characters model;
    for (int step = 0; step < 20000 && !HasFailure(); ++step) {
        SCOPED_TRACE("seed 20240229, step " + std::to_string(step));
        if (Below(3) == 0) shared = text;
        const std::string before = Bytes(model);
        const bool wasShared = shared.View().data() == text.View().data();
        Step(text, model);
        if (wasShared && shared.LengthByte() > 0) {
            ASSERT_EQ(shared.View(), before);
        }
        ASSERT_EQ(text.View(), Bytes(model));
        ASSERT_EQ(text.Length(), static_cast<int>(model.size()));
        ASSERT_TRUE(text.AssertValid());
        if (model.size() > 3000) {
            text.Done();
            model.clear();
        }
    }
}

TEST(StringThreads, ShareOneBuffer) {
    const SString shared = "one buffer for everybody";
    std::vector<std::thread> threads;
    for (int i = 0; i < 16; ++i) {
        threads.emplace_back([&shared, i] {
            for (int round = 0; round < 2000; ++round) {
                SString copy = shared;
                const SString second = copy;
                copy.SetAt(0, static_cast<unsigned>('A' + i));
                copy += second;
                SString locked = shared;
                locked.LockBuffer();
                const SString apart = locked;
                locked.UnlockBuffer();
                if (copy.GetAt(0) != 'A' + i || second != shared || apart != shared) {
                    ADD_FAILURE();
                }
                if (round % 500 == 0) SString::DeleteEmptyStrings();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(shared.GetData()->references, 1);
    ExpectText(shared, "one buffer for everybody");
}

}  // namespace
