#include "platform/folder_listing.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace brcore8 {

namespace {

char Fold(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

bool FoldedLess(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return Fold(a) < Fold(b); });
}

bool NameLess(std::string_view left, std::string_view right) {
    if (FoldedLess(left, right)) return true;
    return !FoldedLess(right, left) && left < right;
}

}  // namespace

const FolderListings::Listing& FolderListings::Of(const char* folder) {
    for (const Listing& listing : listings_) {
        if (listing.folder == folder) return listing;
    }
    CheckedVector<CheckedText> names = ReadFolder(folder);
    std::sort(names.begin(), names.end(), NameLess);
    listings_.push_back({CheckedText(folder), std::move(names)});
    return listings_.back();
}

std::span<const CheckedText> FolderListings::Find(const char* folder, const char* name) {
    const CheckedVector<CheckedText>& names = Of(folder).names;
    const auto [begin, end] = std::equal_range(names.begin(), names.end(), name, FoldedLess);
    return {begin, end};
}

}  // namespace brcore8
