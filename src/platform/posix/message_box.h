// Message boxes without a user interface.
#ifndef BRCORE8_PLATFORM_POSIX_MESSAGE_BOX_H
#define BRCORE8_PLATFORM_POSIX_MESSAGE_BOX_H

// Writes "caption: text" and a line feed to standard error and returns 1, as if the box's only
// button had been pressed. Owner and style have no meaning here. Never fails. Any thread.
int MessageBoxA(void* owner, const char* text, const char* caption, unsigned style);

#endif
