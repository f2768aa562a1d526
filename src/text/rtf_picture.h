// Pictures inside RTF.
#ifndef BRCORE8_SRC_TEXT_RTF_PICTURE_H
#define BRCORE8_SRC_TEXT_RTF_PICTURE_H

namespace brcore8::rtf {

// Whether what follows \pict, up to the brace that closes its group, is a picture of a kind that a
// rich-edit control shows: a metafile, old or enhanced, or a device-independent bitmap. Only its
// beginning is looked at.
bool HoldsPicture(const char* p, const char* end) noexcept;

}  // namespace brcore8::rtf

#endif
