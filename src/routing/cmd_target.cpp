#include <brcore8/routing/cmd_target.h>
#include <brcore8/routing/cmd_ui.h>

#include "routing/routing.h"
#include "routing/row_cache.h"

#include <atomic>

SIMPLEMENT_CREATABLE(SCmdTarget, SObject, 2);

namespace {

constinit const SMsgEntry kNoRows[] = {SMsgEntry{}};
constinit std::atomic<SEscapeObserver> g_observer{nullptr};

int CallUpdateHandler(const SMsgEntry& row, SCmdTarget* target, UINT id, SCmdUI* ui) {
    if (row.signature.kind == 47)
        row.handler.update(target, ui);
    else
        row.handler.updateRange(target, ui, id);
    return !ui->TakeContinueRouting();
}

}  // namespace

constinit const SMsgMap SCmdTarget::msgMap = {&SCmdTarget::_GetBaseMessageMap, kNoRows};

const SMsgMap* SCmdTarget::_GetBaseMessageMap() {
    return nullptr;
}

const SMsgMap* SCmdTarget::GetMessageMap() const {
    return &msgMap;
}

int SCmdTarget::OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    UINT message = packed == kUpdateRequest ? 0 : HIWORD(static_cast<UINT>(packed));
    const UINT code = packed == kUpdateRequest ? kUpdateCode : LOWORD(static_cast<UINT>(packed));
    if (message == 0) message = WM_COMMAND;
    try {
        const SMsgEntry* const row = brcore8::FindCommandRow(GetMessageMap(), message, code, id);
        if (row == nullptr) return 0;
        if (info != nullptr) {
            *info = {this, row->handler};
            return 1;
        }
        // What most rows are.
        if (row->signature.kind == 15) return row->handler.none(this), 1;
        return CallCommandHandler(*row, id, extra);
    } catch (...) {
        brcore8::TellOfEscape(message, id);
        return 1;
    }
}

int SCmdTarget::CallCommandHandler(const SMsgEntry& row, UINT id, void* extra) {
    const SMsgHandler& call = row.handler;
    const auto* const note = static_cast<const S_NOTIFICATION*>(extra);
    const bool needsExtra = row.signature.kind >= 41 && row.signature.kind <= 48;
    if (needsExtra && extra == nullptr) return 0;
    // clang-format off
    switch (row.signature.kind) {
        case 2: return static_cast<int>(call.word(this, id));
        case 16: return call.word(this, id), 1;
        case 38: return static_cast<int>(call.none(this));
        case 41: return call.notify(this, note->header, note->result), 1;
        case 42: return static_cast<int>(call.notify(this, note->header, note->result));
        case 43: return call.notifyRange(this, id, note->header, note->result), 1;
        case 44: return static_cast<int>(call.notifyRange(this, id, note->header, note->result));
        case 47:
        case 48: return CallUpdateHandler(row, this, id, static_cast<SCmdUI*>(extra));
        case 49: return call.extra(this, extra), 1;
        case 50: return static_cast<int>(call.extra(this, extra));
        default: return 0;
    }
    // clang-format on
}

S_CMDHANDLERINFO SFindCommandHandler(SCmdTarget& from, UINT id, int packed) {
    S_CMDHANDLERINFO info{};
    if (!from.OnCmdMsg(id, packed, nullptr, &info)) return {};
    return info;
}

void SCmdTarget::BeginWaitCursor() {
    brcore8::ChangeWaitCursor(1);
}

void SCmdTarget::EndWaitCursor() {
    brcore8::ChangeWaitCursor(-1);
}

void SCmdTarget::RestoreWaitCursor() {
    brcore8::ChangeWaitCursor(0);
}

void brcore8::TellOfEscape(UINT message, UINT id) noexcept {
    if (const SEscapeObserver observer = g_observer.load()) observer(message, id);
}

SEscapeObserver SSetEscapeObserver(SEscapeObserver observer) noexcept {
    return g_observer.exchange(observer);
}
