// The platform's message texts from a recorded table.
#ifndef BRCORE8_PLATFORM_POSIX_MESSAGES_H
#define BRCORE8_PLATFORM_POSIX_MESSAGES_H

constexpr unsigned FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;

// Writes the message for an error number or a result code, ended by CR LF, and returns its bytes
// without the terminator. 0, and the buffer untouched, when the code has no message or the buffer
// is too small for it. Result codes that carry an error number (0x8007xxxx) have its message. The
// texts are English whatever the language; only system messages exist. Any thread.
unsigned FormatMessageA(unsigned flags, const void* source, unsigned code, unsigned language,
                        char* buffer, unsigned size, void* arguments);

#endif
