#include <brcore8/routing/message_map.h>

const SMsgEntry* SFindMessageEntry(const SMsgEntry* rows, UINT message, UINT code,
                                   UINT id) noexcept {
    for (; rows->signature.kind != 0; ++rows)
        if (rows->message == message && rows->code == code && rows->firstId <= id &&
            id <= rows->lastId)
            return rows;
    return nullptr;
}
