#include <brcore8/graphics/metafile.h>

SIMPLEMENT_CREATABLE(SMetaFile, SGdiObject, 2);

SMetaFile::~SMetaFile() {
    EndRecording();
    Delete();
}

// The platform deletes these by a call of their own.
void SMetaFile::Delete() noexcept {
    if (const HGDIOBJ held = Detach()) ::DeleteEnhMetaFile(static_cast<HENHMETAFILE>(held));
}

SDC* SMetaFile::StartRecording(const SDC* like, const RECT* frame) {
    if (recorder_.GetHandle() != nullptr) return nullptr;
    const HDC made = ::CreateEnhMetaFileA(like != nullptr ? like->GetHandle() : nullptr, nullptr,
                                          frame, nullptr);
    return recorder_.Attach(made) ? &recorder_ : nullptr;
}

int SMetaFile::EndRecording() {
    const HDC dc = recorder_.Detach();
    const HENHMETAFILE made = dc != nullptr ? ::CloseEnhMetaFile(dc) : nullptr;
    if (made == nullptr) return 0;
    Delete();
    return Attach(made);
}

int SMetaFile::Play(SDC& to, const RECT& place) const {
    return !IsNull() &&
           ::PlayEnhMetaFile(to.GetHandle(), static_cast<HENHMETAFILE>(GetHandle()), &place) != 0;
}
