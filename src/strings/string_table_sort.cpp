// The four sorts of a string table.
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string_table.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

int NoCaseThenCode(const char* left, const char* right) {
    const int result = mbs::CompareNoCase(left, right);
    return result != 0 ? result : mbs::Compare(left, right);
}

int NumberedNoCaseThenCase(const char* left, const char* right) {
    const int result = _tcsicmpi(left, right);
    return result != 0 ? result : _tcscmpi(left, right);
}

// What an order compares, and how much of it a key can tell.
struct Order {
    int (*compare)(const char* left, const char* right);
    bool numbered;
    bool fold;
};

// A string to be sorted. Most comparisons end at the key, without a look at the text: `begin` holds
// the text's first bytes, in an order that shows the greater text as the greater number. Where the
// order knows numbers it ends at the first digit, and `number` is the number there; 0 when that
// needs the full comparison.
struct Sortable {
    std::uint64_t begin;
    std::uint32_t number;
    const char* text;
    SString* string;
};

bool IsDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

// A number without leading zeros whose differences do not wrap; 0 for all others.
std::uint32_t PlainNumber(const char* p) {
    constexpr int kDigits = 9;
    if (*p == '0') return 0;
    std::uint32_t number = 0;
    for (int i = 0; IsDigit(*p); ++p) {
        if (++i > kDigits) return 0;
        number = number * 10 + static_cast<std::uint32_t>(*p - '0');
    }
    return number;
}

Sortable SortableOf(const Order& order, SString& string) {
    const CodePage& page = CodePage::Ansi();
    Sortable item{0, 0, string, &string};
    if (page.IsDoubleByte()) return item;  // characters do not compare as their bytes do
    // Characters beside numbers compare as signed ones, so their sign bit is turned over.
    const unsigned flip = order.numbered ? 0x80 : 0;
    bool open = true;
    for (std::size_t i = 0; i < sizeof item.begin; ++i) {
        unsigned byte = 0;
        if (open) {
            const char* const p = item.text + i;
            byte = order.fold ? page.LowerBytes()[mbs::Byte(p)] : mbs::Byte(p);
            open = *p != 0;
            if (order.numbered && IsDigit(*p)) {
                // Any digit stands for all: beside another character they all compare alike.
                byte = '0';
                open = false;
                item.number = PlainNumber(p);
            }
        }
        item.begin = item.begin << 8 | (byte ^ flip);
    }
    return item;
}

// Runs of this length are sorted by insertion before any merging.
constexpr int kRun = 16;

// Stable merging over pointers: it stays in bounds and ends after n log n comparisons whatever the
// order answers, and the numeric-aware one is no strict order ("00x" equals "00", "00" does not
// equal "00x").
class MergeSort {
public:
    MergeSort(const Order& order, bool ascending) : order_(order), ascending_(ascending) {}

    // Sorts the items with as many slots of scratch, and returns the one of both that holds them.
    Sortable* Run(Sortable* items, Sortable* scratch, int count) const {
        for (int start = 0; start < count; start += kRun)
            Insertion(items + start, std::min(kRun, count - start));
        for (std::int64_t width = kRun; width < count; width *= 2) {
            for (std::int64_t start = 0; start < count; start += 2 * width) {
                const std::int64_t middle = std::min<std::int64_t>(start + width, count);
                const std::int64_t end = std::min<std::int64_t>(start + 2 * width, count);
                Merge(items + start, items + middle, items + end, scratch + start);
            }
            std::swap(items, scratch);
        }
        return items;
    }

private:
    bool Before(const Sortable& left, const Sortable& right) const {
        if (left.begin != right.begin) return (left.begin < right.begin) == ascending_;
        if (left.number != right.number && left.number != 0 && right.number != 0)
            return (left.number < right.number) == ascending_;
        const int result = order_.compare(left.text, right.text);
        return ascending_ ? result < 0 : result > 0;
    }

    void Insertion(Sortable* items, int count) const {
        for (int i = 1; i < count; ++i) {
            const Sortable item = items[i];
            int hole = i;
            for (; hole > 0 && Before(item, items[hole - 1]); --hole)
                items[hole] = items[hole - 1];
            items[hole] = item;
        }
    }

    void Merge(Sortable* left, Sortable* middle, Sortable* end, Sortable* out) const {
        Sortable* right = middle;
        // Two runs that are in order already, as in sorted input.
        if (right == end || !Before(*right, right[-1])) {
            std::copy(left, end, out);
            return;
        }
        while (left < middle && right < end)
            *out++ = Before(*right, *left) ? *right++ : *left++;
        std::copy(right, end, std::copy(left, middle, out));
    }

    Order order_;
    bool ascending_;
};

// The strings of the table in their order; empty when there is nothing to sort.
STable<SString*> InOrder(SStringTable& table, const Order& order, int ascending) {
    const int count = table.GetCount();
    STable<SString*> sorted;
    if (count < 2) return sorted;
    STable<Sortable> items;
    STable<Sortable> scratch;
    sorted.GrowTo(count);
    items.GrowTo(count);
    scratch.GrowTo(count);
    for (SString& text : table) {
        items.Add(SortableOf(order, text));
        scratch.Add({});
    }
    const Sortable* const result =
        MergeSort(order, ascending != 0).Run(items.GetArray(), scratch.GetArray(), count);
    for (int i = 0; i < count; ++i)
        sorted.Add(result[i].string);
    return sorted;
}

}  // namespace

void SStringTable::Rearrange(const STable<SString*>& order) {
    SStringTable sorted;
    sorted.GrowTo(order.GetCount());
    for (SString* const string : order)
        ::new (sorted.NewAt(sorted.GetCount())) SString(std::move(*string));
    if (!order.IsEmpty()) SwapBlocks(sorted);
}

void SStringTable::Sort(int ascending) {
    Rearrange(InOrder(*this, {mbs::Compare, false, false}, ascending));
}

void SStringTable::SortNoCase(int ascending) {
    Rearrange(InOrder(*this, {NoCaseThenCode, false, true}, ascending));
}

void SStringTable::SortNumbered(int ascending) {
    Rearrange(InOrder(*this, {_tcscmpi, true, false}, ascending));
}

void SStringTable::SortNumberedNoCase(int ascending) {
    Rearrange(InOrder(*this, {NumberedNoCaseThenCase, true, true}, ascending));
}
