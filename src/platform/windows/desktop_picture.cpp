#include <brcore8/platform/desktop_picture.h>

#include <zlib.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

// --- PNG ----------------------------------------------------------------------------------------

void AppendNumber(std::string& out, unsigned long number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out += static_cast<char>(number >> shift & 0xFF);
}

// A length, a name, the data, and the checksum of the latter two.
void AppendChunk(std::string& out, const char* name, const std::string& data) {
    AppendNumber(out, static_cast<unsigned long>(data.size()));
    const std::string body = name + data;
    out += body;
    AppendNumber(
        out, crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size())));
}

struct Pixels {
    int width;
    int height;
    std::vector<DWORD> rows;  // 0x00RRGGBB, from the top down
};

std::string Encode(const Pixels& pixels) {
    std::string rows;
    for (int y = 0; y < pixels.height; ++y) {
        rows += '\0';  // no filter
        for (int x = 0; x < pixels.width; ++x) {
            const DWORD pixel = pixels.rows[static_cast<std::size_t>(y) * pixels.width + x];
            for (const int shift : {16, 8, 0})
                rows += static_cast<char>(pixel >> shift & 0xFF);
        }
    }
    uLongf size = compressBound(static_cast<uLong>(rows.size()));
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(rows.data()), static_cast<uLong>(rows.size()));
    packed.resize(size);

    std::string header;
    AppendNumber(header, static_cast<unsigned long>(pixels.width));
    AppendNumber(header, static_cast<unsigned long>(pixels.height));
    header += std::string("\x08\x02\0\0\0", 5);  // eight bits, true colour
    std::string out = "\x89PNG\r\n\x1A\n";
    AppendChunk(out, "IHDR", header);
    AppendChunk(out, "IDAT", packed);
    AppendChunk(out, "IEND", "");
    return out;
}

bool ReadPixels(HBITMAP bitmap, Pixels& pixels) {
    BITMAP info{};
    if (GetObjectA(bitmap, sizeof info, &info) == 0) return false;
    pixels.width = info.bmWidth;
    pixels.height = info.bmHeight;
    pixels.rows.resize(static_cast<std::size_t>(info.bmWidth) * info.bmHeight);
    BITMAPINFO format{};
    format.bmiHeader = {
        sizeof(BITMAPINFOHEADER), info.bmWidth, -info.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(info.bmHeight),
                               pixels.rows.data(), &format, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return rows == info.bmHeight;
}

bool Write(HBITMAP bitmap, const char* path) {
    if (bitmap == nullptr) return false;
    Pixels pixels;
    const bool isRead = ReadPixels(bitmap, pixels);
    DeleteObject(bitmap);
    if (!isRead) return false;
    const std::string png = Encode(pixels);
    std::FILE* const file = std::fopen(path, "wb");
    if (file == nullptr) return false;
    const bool isWritten = std::fwrite(png.data(), 1, png.size(), file) == png.size();
    return std::fclose(file) == 0 && isWritten;
}

BOOL CALLBACK Paint(HWND window, LPARAM) {
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId())
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return TRUE;
}

}  // namespace

HBITMAP SCaptureWindow(HWND window) {
    if (window == GetDesktopWindow()) window = nullptr;
    RECT place{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (window != nullptr && !GetWindowRect(window, &place)) return nullptr;
    if (window != nullptr)
        Paint(GetAncestor(window, GA_ROOT), 0);
    else
        EnumThreadWindows(GetCurrentThreadId(), &Paint, 0);
    GdiFlush();
    const int width = place.right - place.left, height = place.bottom - place.top;
    const HDC from = window != nullptr ? GetWindowDC(window) : GetDC(nullptr);
    const HDC to = CreateCompatibleDC(from);
    const HBITMAP bitmap = CreateCompatibleBitmap(from, width, height);
    if (bitmap != nullptr) {
        const HGDIOBJ old = SelectObject(to, bitmap);
        BitBlt(to, 0, 0, width, height, from, 0, 0, SRCCOPY);
        SelectObject(to, old);
    }
    DeleteDC(to);
    ReleaseDC(window, from);
    return bitmap;
}

bool SWriteDesktopPicture(const char* path) {
    return Write(SCaptureWindow(nullptr), path);
}

bool SWriteWindowPicture(HWND window, const char* path) {
    return window != nullptr && Write(SCaptureWindow(window), path);
}
