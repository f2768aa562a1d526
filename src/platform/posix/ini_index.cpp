#include <sys/random.h>

#include <cstring>
#include <utility>

#include "platform/posix/ini_text.h"
#include "strings/mbs.h"

namespace brcore8 {
namespace {

constexpr std::size_t kFirstSlots = 64;

// Of this process alone, so that nobody can write names that all collide.
std::uint64_t Seed() noexcept {
    static const std::uint64_t seed = [] {
        std::uint64_t random = 0;
        if (getrandom(&random, sizeof random, GRND_NONBLOCK) != sizeof random)
            random = reinterpret_cast<std::uintptr_t>(&random);
        return random;
    }();
    return seed;
}

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) noexcept {
    const std::uint64_t product = (hash ^ word ^ 0x9E3779B97F4A7C15) * 0xD6E8FEB86659FD93;
    return product ^ product >> 32;
}

// Never 0.
std::uint32_t TagOf(std::uint32_t section, std::string_view name) noexcept {
    const CodePage& page = CodePage::Ansi();
    std::uint64_t hash = Mix(Seed(), section);
    const char* const end = name.data() + name.size();
    for (const char* p = name.data(); p != end; p += mbs::CharBytes(page, p, end))
        hash = Mix(hash, page.ToLower(mbs::UnsignedCodeAt(page, p, end)));
    return static_cast<std::uint32_t>(hash >> 32) | 1u << 31;
}

}  // namespace

IniIndex::IniIndex(std::string_view text) : IniIndex() {
    Grow();
    Fill(text);
}

IniIndex& IniIndex::operator=(IniIndex&& other) noexcept {
    std::swap(slots_, other.slots_);
    std::swap(mask_, other.mask_);
    std::swap(used_, other.used_);
    return *this;
}

void IniIndex::Fill(std::string_view text) {
    std::uint32_t section = Unnamed;
    bool counts = true;  // not so the keys of a section that was there before
    IniLines lines(text);
    for (IniLine line; lines.Next(line);) {
        if (line.kind == IniLine::Header) {
            counts = Add(text, IsHeader, line);
            section = static_cast<std::uint32_t>(line.begin);
        } else if (line.kind == IniLine::Key && counts) {
            Add(text, section, line);
        }
    }
}

// False when the name is empty or taken.
bool IniIndex::Add(std::string_view text, std::uint32_t section, const IniLine& line) {
    if (line.name.empty()) return false;
    const std::uint32_t tag = TagOf(section, line.name);
    if (SlotOf(text, section, line.name, tag).tag != 0) return false;
    if (used_ * 4 >= mask_ * 3) Grow();
    SlotOf(text, section, line.name, tag) = {tag, section, static_cast<std::uint32_t>(line.begin)};
    ++used_;
    return true;
}

// The name's slot, or the free one where it belongs.
IniIndex::Slot& IniIndex::SlotOf(std::string_view text, std::uint32_t section,
                                 std::string_view name, std::uint32_t tag) const noexcept {
    std::size_t at = tag & mask_;
    while (slots_[at].tag != 0 && (slots_[at].tag != tag || slots_[at].section != section ||
                                   !SameIniName(IniLineAt(text, slots_[at].line).name, name))) {
        at = (at + 1) & mask_;
    }
    return slots_[at];
}

void IniIndex::Grow() {
    const std::size_t count = slots_ == nullptr ? kFirstSlots : (mask_ + 1) * 2;
    auto* const slots = static_cast<Slot*>(Allocate(count * sizeof(Slot)));
    std::memset(slots, 0, count * sizeof(Slot));
    for (std::size_t i = 0; slots_ != nullptr && i <= mask_; ++i) {
        if (slots_[i].tag == 0) continue;
        std::size_t at = slots_[i].tag & (count - 1);
        while (slots[at].tag != 0)
            at = (at + 1) & (count - 1);
        slots[at] = slots_[i];
    }
    Release(std::exchange(slots_, slots));
    mask_ = count - 1;
}

std::optional<std::string_view> IniIndex::Find(std::string_view text, std::string_view section,
                                               std::string_view key) const noexcept {
    if (slots_ == nullptr) return std::nullopt;
    section = TrimIniBlanks(section);
    key = TrimIniBlanks(key);
    std::uint32_t where = Unnamed;
    if (!section.empty()) {
        const Slot& header = SlotOf(text, IsHeader, section, TagOf(IsHeader, section));
        if (header.tag == 0) return std::nullopt;
        where = header.line;
    }
    const Slot& slot = SlotOf(text, where, key, TagOf(where, key));
    if (slot.tag == 0) return std::nullopt;
    return UnquoteIni(IniLineAt(text, slot.line).value);
}

}  // namespace brcore8
