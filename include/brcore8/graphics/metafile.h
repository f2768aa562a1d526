// SMetaFile: a drawing that was recorded and can be drawn again, in any size.
//
//     SMetaFile drawing;
//     if (SDC* const recorder = drawing.StartRecording(&screen)) {
//         recorder->LineTo(100, 100);
//         drawing.EndRecording();
//         drawing.Play(dc, {0, 0, 50, 50});
//     }
//
// Off Windows nothing can be recorded: StartRecording answers null, with
// ERROR_CALL_NOT_IMPLEMENTED.
//
// Threads and ownership: as SGdiObject.
#ifndef BRCORE8_GRAPHICS_METAFILE_H
#define BRCORE8_GRAPHICS_METAFILE_H

#include <brcore8/graphics/dc.h>

class BRCORE8_API SMetaFile : public SGdiObject {
    SDECLARE_CREATABLE(SMetaFile);

    SMetaFile() noexcept = default;
    ~SMetaFile() override;

    // The context that records, this object's, until EndRecording; null when the platform refuses,
    // or a recording runs already. The frame, in hundredths of a millimetre, may be null: it is
    // then what was drawn.
    SDC* StartRecording(const SDC* like, const RECT* frame = nullptr);
    // The recording takes the place of the drawing held: 1, or 0.
    int EndRecording();
    // 0 when nothing is held, or the platform refuses.
    int Play(SDC& to, const RECT& place) const;
    // Deletes the drawing held.
    void Delete() noexcept;

private:
    SDC recorder_;
};

#endif
