#include <brcore8/text/rtf_document.h>

SRtfDocument::~SRtfDocument() {
    DeleteEditCtrl();
}

void SRtfDocument::DeleteEditCtrl() {
    control_ = nullptr;
}
