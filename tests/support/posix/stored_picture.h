// What windows show, compared with pictures that someone looked at:
//
//     EXPECT_TRUE(LooksAsStored(window, "message_box"));
//
// takes the window's picture and compares it with message_box.png in BRCORE8_PICTURES. Where they
// differ the picture stays in the current folder and the failure names it. With
// BRCORE8_RENEW_PICTURES set, what windows show is stored instead: look at each before it is kept.
//
// The rule: a pixel is the same when none of its three colours is off by more than 64 of 255, which
// leaves the edges of letters to the font library's version. In no square of 16 pixels a side, at
// steps of 8, may more than 6 pixels be others: a missing tick is found, however large the picture.
#ifndef BRCORE8_TESTS_SUPPORT_STORED_PICTURE_H
#define BRCORE8_TESTS_SUPPORT_STORED_PICTURE_H

#include <brcore8/platform/desktop_picture.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace stored {

// Before anything is drawn: one font, whatever the machine has.
inline const bool isFontPinned = setenv("FONTCONFIG_FILE", BRCORE8_FONTS, 1) == 0;

struct Picture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<unsigned char> bytes;  // red, green, blue
};

inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::size_t NumberAt(const std::string& bytes, std::size_t at) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return number;
}

// Each row begins with how it differs from the one above and the pixel before.
inline void Unfilter(std::vector<unsigned char>& rows, Picture& out) {
    const std::size_t stride = out.width * 3;
    for (std::size_t y = 0; y < out.height; ++y) {
        const unsigned char* const row = rows.data() + y * (stride + 1);
        for (std::size_t x = 0; x < stride; ++x) {
            const std::size_t at = y * stride + x;
            const int left = x >= 3 ? out.bytes[at - 3] : 0;
            const int up = y > 0 ? out.bytes[at - stride] : 0;
            const int corner = x >= 3 && y > 0 ? out.bytes[at - stride - 3] : 0;
            const int guess = left + up - corner;
            const int dl = std::abs(guess - left), du = std::abs(guess - up);
            const int dc = std::abs(guess - corner);
            const int nearest = dl <= du && dl <= dc ? left : du <= dc ? up : corner;
            const int by[] = {0, left, up, (left + up) / 2, nearest};
            if (row[0] > 4) throw std::runtime_error("an unknown filter");
            out.bytes[at] = static_cast<unsigned char>(row[x + 1] + by[row[0]]);
        }
    }
}

// Of 8 bits a colour and no transparency, as the desktop writes them.
inline Picture ReadPng(const std::string& path) {
    const std::string png = BytesOf(path);
    if (png.substr(0, 8) != "\x89PNG\r\n\x1A\n") throw std::runtime_error("no picture: " + path);
    Picture picture;
    std::string packed;
    for (std::size_t at = 8; at + 12 <= png.size(); at += 12 + NumberAt(png, at)) {
        const std::string kind = png.substr(at + 4, 4);
        if (kind == "IHDR") {
            picture.width = NumberAt(png, at + 8);
            picture.height = NumberAt(png, at + 12);
            if (png.substr(at + 16, 5) != std::string("\x08\x02\0\0\0", 5))
                throw std::runtime_error("another kind of PNG: " + path);
        }
        if (kind == "IDAT") packed += png.substr(at + 8, NumberAt(png, at));
    }
    std::vector<unsigned char> rows(picture.height * (picture.width * 3 + 1));
    uLongf size = rows.size();
    if (uncompress(rows.data(), &size, reinterpret_cast<const Bytef*>(packed.data()),
                   packed.size()) != Z_OK ||
        size != rows.size())
        throw std::runtime_error("a damaged picture: " + path);
    picture.bytes.resize(picture.width * picture.height * 3);
    Unfilter(rows, picture);
    return picture;
}

inline bool Differs(const Picture& a, const Picture& b, std::size_t x, std::size_t y) {
    constexpr int kMost = 64;
    const std::size_t at = (y * a.width + x) * 3;
    for (std::size_t i = at; i < at + 3; ++i)
        if (std::abs(a.bytes[i] - b.bytes[i]) > kMost) return true;
    return false;
}

// Where they differ, or nothing.
inline std::string Difference(const Picture& a, const Picture& b) {
    constexpr std::size_t kSquare = 16, kStep = 8;
    constexpr int kMostPixels = 6;
    if (a.width != b.width || a.height != b.height)
        return "it is " + std::to_string(a.width) + " x " + std::to_string(a.height) +
               " pixels, not " + std::to_string(b.width) + " x " + std::to_string(b.height);
    for (std::size_t top = 0; top < a.height; top += kStep)
        for (std::size_t left = 0; left < a.width; left += kStep) {
            int others = 0;
            for (std::size_t y = top; y < std::min(top + kSquare, a.height); ++y)
                for (std::size_t x = left; x < std::min(left + kSquare, a.width); ++x)
                    others += Differs(a, b, x, y);
            if (others > kMostPixels)
                return std::to_string(others) + " pixels differ at " + std::to_string(left) + ", " +
                       std::to_string(top);
        }
    return "";
}

}  // namespace stored

inline testing::AssertionResult LooksAsStored(HWND window, const std::string& name) {
    const std::string kept = std::string(BRCORE8_PICTURES) + "/" + name + ".png";
    const std::string taken = "now_" + name + ".png";
    if (!SWriteWindowPicture(window, taken.c_str()))
        return testing::AssertionFailure() << "no picture of the window";
    if (std::getenv("BRCORE8_RENEW_PICTURES") != nullptr) {
        std::filesystem::copy_file(taken, kept, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::remove(taken);
        return testing::AssertionSuccess();
    }
    std::string difference;
    try {
        difference = stored::Difference(stored::ReadPng(taken), stored::ReadPng(kept));
    } catch (const std::exception& fault) {
        difference = fault.what();
    }
    if (!difference.empty())
        return testing::AssertionFailure() << difference << ": compare "
                                           << std::filesystem::absolute(taken) << " with " << kept;
    std::filesystem::remove(taken);
    return testing::AssertionSuccess();
}

#endif
