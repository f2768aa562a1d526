#include "routing/row_cache.h"

namespace brcore8 {

constinit RowCache<256> g_messageRows;
constinit RowCache<4096> g_commandRows;

namespace {

const SMsgEntry* FindRegistered(const SMsgEntry* rows, UINT message) noexcept {
    for (; rows->signature.kind != 0; ++rows)
        if (rows->message == kRegisteredMessage && rows->code == 0 && rows->firstId == 0 &&
            *rows->signature.registered == message)
            return rows;
    return nullptr;
}

}  // namespace

const SMsgEntry* WalkForMessage(const SMsgMap* map, UINT message) {
    const SMsgEntry* row = nullptr;
    for (const SMsgMap* at = map; at != nullptr && row == nullptr; at = at->base())
        row = message < kRegisteredMessage ? SFindMessageEntry(at->entries, message, 0, 0)
                                           : FindRegistered(at->entries, message);
    g_messageRows.Keep(MessagePlace(map, message), map, message, row);
    return row;
}

const SMsgEntry* WalkForCommand(const SMsgMap* map, UINT message, UINT code, UINT id) {
    const SMsgEntry* row = nullptr;
    for (const SMsgMap* at = map; at != nullptr && row == nullptr; at = at->base())
        row = SFindMessageEntry(at->entries, message, code, id);
    const std::uint64_t asked = CommandAsked(message, code, id);
    g_commandRows.Keep(CommandPlace(map, asked), map, asked, row);
    return row;
}

}  // namespace brcore8

void SFlushMessageCache() noexcept {
    brcore8::g_messageRows.Flush();
    brcore8::g_commandRows.Flush();
}
