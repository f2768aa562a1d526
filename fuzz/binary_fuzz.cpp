// A byte for the code page, a byte for the kind of value, the stream. What can be read must be
// written, read and written again to the same bytes; what cannot must end in an exception that is
// documented, and leave nothing behind.
#include <brcore8/core/exception.h>
#include <brcore8/graphics/bitmap.h>
#include <brcore8/graphics/icon.h>
#include <brcore8/streams/binary_stream.h>
#include <brcore8/streams/data_stream.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/strings/multibyte.h>

#include <cstdlib>
#include <string>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

template <class Write>
std::string Written(Write write) {
    SOutputGlobal sink;
    write(sink);
    const unsigned long size = sink.UsedSize();
    SHGlobal block(sink.Detach());
    const std::string bytes(static_cast<const char*>(block.Lock()), size);
    block.Unlock();
    return bytes;
}

template <class Value>
std::string Packed(const Value& value) {
    return Written([&](SOutputStream& sink) {
        SOutputBinaryStream out(sink);
        out << value;
    });
}

bool IsLeftEmpty(const SString& text) {
    return text.IsEmpty();
}
bool IsLeftEmpty(const SStringTable& table) {
    return table.IsEmpty();
}
template <class Map>
bool IsLeftEmpty(const __SStringMap<Map>& map) {
    return map.IsEmpty();
}
bool IsLeftEmpty(const SBitmap& bitmap) {
    return bitmap.IsNull();
}

template <class Value>
void CheckBinary(SInputStream& source) {
    Value value;
    SInputBinaryStream in(source);
    try {
        in >> value;
    } catch (const SEIOException&) {
        Require(IsLeftEmpty(value));
        return;
    }
    const std::string bytes = Packed(value);
    SInputBuffer again(bytes.data(), static_cast<int>(bytes.size()));
    SInputBinaryStream second(again);
    second >> value;
    Require(again.Available() == 0 && Packed(value) == bytes);
}

void CheckIcon(SInputStream& source) {
    HICON icon = nullptr;
    SInputBinaryStream in(source);
    try {
        in >> icon;
    } catch (const SEIOException&) {
        Require(icon == nullptr);
        return;
    }
    const std::string bytes = Packed(icon);
    SDestroyIcon(icon);
    SInputBuffer again(bytes.data(), static_cast<int>(bytes.size()));
    SInputBinaryStream second(again);
    second >> icon;
    Require(Packed(icon) == bytes);
    SDestroyIcon(icon);
}

using ReadText = SString (SDataInputStream::*)();
using WriteText = void (SDataOutputStream::*)(const SString&);

void CheckData(SInputStream& source, ReadText read, WriteText write) {
    SDataInputStream in(source);
    SString text;
    try {
        text = (in.*read)();
    } catch (const SEIOException&) {
        return;
    }
    const auto packed = [&] {
        return Written([&](SOutputStream& sink) {
            SDataOutputStream out(sink);
            (out.*write)(text);
        });
    };
    std::string bytes;
    try {
        bytes = packed();
    } catch (const SEIOException&) {  // default characters may be longer than what they stand for
        return;
    }
    SInputBuffer again(bytes.data(), static_cast<int>(bytes.size()));
    SDataInputStream second(again);
    text = (second.*read)();
    Require(packed() == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    SInputBuffer source(data + 2, static_cast<int>(size - 2));
    switch (data[1] % 10) {
        case 0:
            CheckBinary<SString>(source);
            break;
        case 1:
            CheckBinary<SStringTable>(source);
            break;
        case 2:
            CheckBinary<SStringMap>(source);
            break;
        case 3:
            CheckBinary<SStringMapNoCase>(source);
            break;
        case 4:
            CheckBinary<SStringUnsortedMap>(source);
            break;
        case 5:
            CheckBinary<SStringUnsortedMapNoCase>(source);
            break;
        case 6:
            CheckBinary<SBitmap>(source);
            break;
        case 7:
            CheckIcon(source);
            break;
        case 8:
            CheckData(source, &SDataInputStream::ReadUTF, &SDataOutputStream::WriteUTF);
            break;
        case 9:
            CheckData(source, &SDataInputStream::ReadUnicode, &SDataOutputStream::WriteUnicode);
            break;
    }
    return 0;
}
