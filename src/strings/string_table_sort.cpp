// The four sorts of a string table: byte by byte where that is the order, by merging elsewhere.
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

// ---- Where numbers count, or characters of two bytes ------------------------------------------

// What an order compares, and how much of it a key can tell.
struct Order {
    int (*compare)(const char* left, const char* right);
    bool numbered;
    bool fold;
};

// A string to be sorted. Most comparisons end at the key, without a look at the text: `begin` holds
// the text's first bytes, up to the first digit, in an order that shows the greater text as the
// greater number, and `number` is the number there; 0 when that needs the full comparison.
struct Sortable {
    std::uint64_t begin;
    std::uint32_t number;
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
    Sortable item{0, 0, &string};
    if (page.IsDoubleByte()) return item;  // characters do not compare as their bytes do
    bool open = true;
    const char* p = string;
    for (std::size_t i = 0; i < sizeof item.begin; ++i, ++p) {
        unsigned byte = 0;
        if (open) {
            byte = order.fold ? page.LowerBytes()[mbs::Byte(p)] : mbs::Byte(p);
            open = *p != 0;
            if (IsDigit(*p)) {
                // Any digit stands for all: beside another character they all compare alike.
                byte = '0';
                open = false;
                item.number = PlainNumber(p);
            }
        }
        // Characters beside numbers compare as signed ones, so their sign bit is turned over.
        item.begin = item.begin << 8 | (byte ^ 0x80);
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
        const bool sameBegin = left.begin == right.begin;
        const bool sameNumber = left.number == right.number;
        if (sameBegin & (sameNumber | (left.number == 0) | (right.number == 0))) {
            const int result = order_.compare(*left.string, *right.string);
            return ascending_ ? result < 0 : result > 0;
        }
        // Without a branch, which nobody could foretell.
        const bool less = (left.begin < right.begin) | (sameBegin & (left.number < right.number));
        return less == ascending_;
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
        while (left < middle && right < end) {
            const bool takeRight = Before(*right, *left);
            *out++ = *(takeRight ? right : left);
            right += takeRight;
            left += !takeRight;
        }
        std::copy(right, end, std::copy(left, middle, out));
    }

    Order order_;
    bool ascending_;
};

// ---- Where bytes compare as they are ------------------------------------------------------------

// Sorts by eight bytes of the texts at a time, as one number, and again by the next eight where
// those are equal, so that no byte is looked at twice. Stable.
class ByteSort {
public:
    // Bytes compare by their fold, if any; equal texts then by the bytes.
    ByteSort(STable<SString*>& strings, const unsigned char* fold, bool ascending)
        : strings_(strings), fold_(fold), flip_(ascending ? 0 : ~std::uint64_t{0}) {
        const int count = strings.GetCount();
        items_.GrowTo(count);
        scratch_.GrowTo(count);
        for (SString* const string : strings) {
            items_.Add({0, string});
            scratch_.Add({});
        }
        ties_.Add({0, count, 0, fold != nullptr});
    }

    void Run() {
        while (!ties_.IsEmpty()) {
            for (const Tie& tie : std::exchange(ties_, {}))
                Sort(tie);
        }
        for (int i = 0; i < items_.GetCount(); ++i)
            strings_[i] = items_[i].string;
    }

private:
    struct Item {
        std::uint64_t key;
        SString* string;
    };
    // Items from `begin` to `end` whose first `depth` bytes are equal.
    struct Tie {
        int begin;
        int end;
        std::int32_t depth;
        bool folded;
    };

    std::uint64_t KeyAt(const char* p, bool folded) const {
        std::uint64_t key = 0;
        bool open = true;
        for (std::size_t i = 0; i < sizeof key; ++i) {
            open = open && *p != 0;
            const unsigned byte = !open ? 0 : folded ? fold_[mbs::Byte(p)] : mbs::Byte(p);
            key = key << 8 | byte;
            p += open;
        }
        return key ^ flip_;
    }
    bool IsEnd(std::uint64_t key) const { return ((key ^ flip_) & 0xFF) == 0; }

    void Sort(const Tie& tie) {
        Item* const items = items_.GetArray() + tie.begin;
        const int count = tie.end - tie.begin;
        for (int i = 0; i < count; ++i) {
            const char* const text = *items[i].string;
            items[i].key = KeyAt(text + tie.depth, tie.folded);
        }
        constexpr int kFew = 48;
        if (count < kFew)
            SortFew(items, count);
        else
            SortMany(items, scratch_.GetArray(), count);
        for (int i = 0, end = 0; i < count; i = end) {
            for (end = i + 1; end < count && items[end].key == items[i].key;)
                ++end;
            const bool whole = IsEnd(items[i].key);
            if (end - i < 2 || (whole && !tie.folded)) continue;
            const auto depth = static_cast<std::int32_t>(tie.depth + sizeof(std::uint64_t));
            ties_.Add({tie.begin + i, tie.begin + end, whole ? 0 : depth, tie.folded && !whole});
        }
    }

    static void SortFew(Item* items, int count) {
        for (int i = 1; i < count; ++i) {
            const Item item = items[i];
            int hole = i;
            for (; hole > 0 && item.key < items[hole - 1].key; --hole)
                items[hole] = items[hole - 1];
            items[hole] = item;
        }
    }

    // Byte by byte, from the last one on; bytes that are the same in all are left out.
    static void SortMany(Item* items, Item* scratch, int count) {
        constexpr int kBytes = sizeof(std::uint64_t);
        int starts[kBytes][256] = {};
        for (int i = 0; i < count; ++i)
            for (int byte = 0; byte < kBytes; ++byte)
                ++starts[byte][items[i].key >> 8 * byte & 0xFF];
        Item* from = items;
        for (int byte = 0; byte < kBytes; ++byte) {
            int* const start = starts[byte];
            if (start[items->key >> 8 * byte & 0xFF] == count) continue;
            for (int value = 0, next = 0; value < 256; ++value)
                next += std::exchange(start[value], next);
            for (int i = 0; i < count; ++i)
                scratch[start[from[i].key >> 8 * byte & 0xFF]++] = from[i];
            std::swap(from, scratch);
        }
        if (from != items) std::copy(from, from + count, items);
    }

    STable<SString*>& strings_;
    const unsigned char* fold_;
    std::uint64_t flip_;
    STable<Item> items_;
    STable<Item> scratch_;
    STable<Tie> ties_;
};

// ---- Both ---------------------------------------------------------------------------------------

// The strings of the table in their order; empty when there is nothing to sort.
STable<SString*> InOrder(SStringTable& table, const Order& order, int ascending) {
    const int count = table.GetCount();
    STable<SString*> sorted;
    if (count < 2) return sorted;
    sorted.GrowTo(count);
    const CodePage& page = CodePage::Ansi();
    if (!order.numbered && !page.IsDoubleByte()) {
        for (SString& text : table)
            sorted.Add(&text);
        ByteSort(sorted, order.fold ? page.LowerBytes() : nullptr, ascending != 0).Run();
        return sorted;
    }
    STable<Sortable> items;
    STable<Sortable> scratch;
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
