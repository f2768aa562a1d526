#include <brcore8/archive/crc32.h>

#include <zlib.h>

void SCRC32::Update(const void* data, unsigned long length) noexcept {
    if (data == nullptr) return;
    value_ = static_cast<std::uint32_t>(crc32_z(value_, static_cast<const Bytef*>(data), length));
}
