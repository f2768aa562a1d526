#include <brcore8/streams/output_stream.h>

SIMPLEMENT_CLASS(SOutputStream, SObject, 0);

SAbstractIO::SOutputOperations::~SOutputOperations() = default;

SOutputStream::~SOutputStream() = default;

unsigned long SOutputStream::Write(const void* data, unsigned long count) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    for (unsigned long i = 0; i < count; ++i)
        Write(int{bytes[i]});
    return count;
}

void SOutputStream::Close() {}

void SOutputStream::Flush() {}
