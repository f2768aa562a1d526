// The recorded data in a unit of its own: the recorder links the decoder without it.
#include "platform/posix/code_page_data.inc"
