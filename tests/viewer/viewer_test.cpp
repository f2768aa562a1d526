// The viewer, driven by messages and looked at: what it shows of files of each kind, what its
// commands do, and what it keeps.

#include <brcore8/app/win_app.h>
#include <brcore8/platform/desktop_picture.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "support/settings_home.h"
#include "viewer_frame.h"

namespace {

using viewer::Document;

class Viewer : public SettingsTest {
protected:
    Viewer() {
        Forget();
        Make();
    }
    ~Viewer() override {
        frame.reset();
        Drain();
        Forget();
    }
    void Make() {
        frame = std::make_unique<viewer::SViewerFrame>();
        ASSERT_EQ(frame->Make(), 1);
        app.SetMainWnd(frame.get());
        frame->ShowWindow(SW_SHOWNORMAL);
        Drain();
    }
    static void Forget() {
        const SRegistry settings(SRegistry::CurrentUser(), SRegistry::ApplicationRoot(), 1);
        settings.DeleteTree("Viewer");
    }
    static void Drain() {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            if (message.message != WM_QUIT) ::DispatchMessageA(&message);
    }
    SString File(const char* name, std::string_view bytes) {
        const std::filesystem::path path = Folder() / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return SString(path.string());
    }
    // An archive of small stored entries.
    SString Archive(int entries) {
        std::string bytes, directory;
        const auto put = [](std::string& to, std::uint32_t number, int size) {
            for (; size > 0; --size, number >>= 8)
                to += static_cast<char>(number & 0xFF);
        };
        for (int i = 0; i < entries; ++i) {
            const std::string name = "part" + std::to_string(i) + ".txt";
            const std::string content = "This is part " + std::to_string(i) + ".\n";
            const auto offset = static_cast<std::uint32_t>(bytes.size());
            std::string facts;
            put(facts, 20, 2), put(facts, 0, 4), put(facts, 0, 2), put(facts, 0x2A21, 2);
            put(facts, Crc(content), 4);
            put(facts, static_cast<std::uint32_t>(content.size()), 4);
            put(facts, static_cast<std::uint32_t>(content.size()), 4);
            put(facts, static_cast<std::uint32_t>(name.size()), 2), put(facts, 0, 2);
            bytes += "PK\3\4" + facts + name + content;
            directory += std::string("PK\1\2\24\0", 6) + facts + std::string(2, '\0');
            put(directory, 0, 2), put(directory, 0, 2), put(directory, 0, 4);
            put(directory, offset, 4);
            directory += name;
        }
        const auto start = static_cast<std::uint32_t>(bytes.size());
        bytes += directory + "PK\5\6";
        put(bytes, 0, 4), put(bytes, static_cast<std::uint32_t>(entries), 2);
        put(bytes, static_cast<std::uint32_t>(entries), 2);
        put(bytes, static_cast<std::uint32_t>(directory.size()), 4);
        put(bytes, start, 4), put(bytes, 0, 2);
        return File("parts.zip", bytes);
    }
    static std::uint32_t Crc(std::string_view bytes) {
        std::uint32_t crc = ~0u;
        for (const char byte : bytes) {
            crc ^= static_cast<unsigned char>(byte);
            for (int bit = 0; bit < 8; ++bit)
                crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0);
        }
        return ~crc;
    }

    std::string Text() { return std::string(frame->GetText().GetWindowText().View()); }
    std::string Pane(int index) {
        char text[256] = {};
        frame->GetStatusBar().SendMessage(SB_GETTEXTA, static_cast<WPARAM>(index),
                                          reinterpret_cast<LPARAM>(text));
        return text;
    }
    void Choose(viewer::Command command) { frame->SendMessage(WM_COMMAND, command); }
    // As the menu would show the command.
    UINT State(viewer::Command command) {
        const HMENU bar = ::GetMenu(frame->GetHandle());
        for (int i = 0; i < ::GetMenuItemCount(bar); ++i)
            frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(::GetSubMenu(bar, i)), i);
        return ::GetMenuState(bar, command, MF_BYCOMMAND);
    }
    bool IsEnabled(viewer::Command command) {
        return (State(command) & (MF_GRAYED | MF_DISABLED)) == 0;
    }
    void Idle() { app.OnIdle(0); }

    SWinApp app{"Viewer"};
    std::unique_ptr<viewer::SViewerFrame> frame;
};

TEST_F(Viewer, ShowsTextOfEveryFormat) {
    struct Row {
        const char* name;
        std::string_view bytes;
        const char* format;
        const char* shown;
    };
    using namespace std::string_view_literals;
    const Row rows[] = {
        {"plain.txt", "one\ntwo\r\nthree"sv, "UTF-8", "one\r\ntwo\r\nthree"},
        {"marked.txt", "\xEF\xBB\xBFone"sv, "UTF-8", "one"},
        {"wide.txt", "\xFF\xFEo\0n\0e\0"sv, "UTF-16", "one"},
        {"old.txt", "caf\xE9"sv, "8-bit", "caf\xE9"},
        {"letter.rtf", "{\\rtf1\\ansi {\\b Dear} all,\\par bye}"sv, "RTF", "Dear all,\r\nbye"},
        {"empty.txt", ""sv, "UTF-8", ""},
    };
    for (const Row& row : rows) {
        ASSERT_EQ(frame->OpenFile(File(row.name, row.bytes)), 1) << row.name;
        EXPECT_EQ(Text().substr(0, std::strlen(row.shown)), row.shown) << row.name;
        EXPECT_STREQ(frame->GetDocument().format, row.format) << row.name;
        EXPECT_EQ(frame->GetWindowText(), SString(row.name) + " - Viewer");
    }
}

TEST_F(Viewer, WalksThroughAnArchive) {
    EXPECT_FALSE(IsEnabled(viewer::kClose));
    ASSERT_EQ(frame->OpenFile(Archive(3)), 1);
    EXPECT_EQ(frame->GetDocument().entries, 3);
    EXPECT_NE(Text().find("part2.txt\r\n"), std::string::npos);
    EXPECT_TRUE(IsEnabled(viewer::kShowEntry));
    EXPECT_FALSE(IsEnabled(viewer::kBack));

    const LRESULT second = frame->GetText().SendMessage(EM_LINEINDEX, 1);
    frame->GetText().SendMessage(EM_SETSEL, static_cast<WPARAM>(second), second);
    Choose(viewer::kShowEntry);
    EXPECT_EQ(Text(), "This is part 1.\r\n");
    EXPECT_TRUE(IsEnabled(viewer::kBack));
    EXPECT_FALSE(IsEnabled(viewer::kShowEntry));
    Choose(viewer::kBack);
    EXPECT_NE(Text().find("part2.txt"), std::string::npos);
    Choose(viewer::kClose);
    EXPECT_EQ(Text(), "");
    EXPECT_FALSE(IsEnabled(viewer::kSelectAll));
}

TEST_F(Viewer, SwitchesTheStatusBar) {
    ASSERT_EQ(frame->OpenFile(Archive(2)), 1);
    Idle();
    EXPECT_EQ(frame->GetStatusBar().GetShownCount(), 2);
    EXPECT_EQ(Pane(1), "Line 1");
    Choose(viewer::kDetails);
    EXPECT_NE(State(viewer::kDetails) & MF_CHECKED, 0u);
    Idle();
    EXPECT_EQ(frame->GetStatusBar().GetShownCount(), 5);
    EXPECT_EQ(Pane(2), "ZIP");
    EXPECT_EQ(Pane(3), "32 bytes");
    EXPECT_EQ(Pane(4), "2 entries");
    Choose(viewer::kDetails);
    EXPECT_EQ(frame->GetStatusBar().GetShownCount(), 2);
}

// The box that asks is answered by a timer, which its loop dispatches.
TEST_F(Viewer, StopsReadingWhenTheUserCancels) {
    ASSERT_EQ(frame->OpenFile(File("first.txt", "first")), 1);
    const SString large = Archive(3000);
    frame->SetPatience(std::chrono::milliseconds(0));
    ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR timer, DWORD) {
        const HWND box = ::FindWindowA("#32770", nullptr);
        if (box == nullptr) return;
        ::KillTimer(nullptr, timer);
        ::PostMessageA(box, WM_COMMAND, IDYES, 0);
    });
    ::PostMessageA(frame->GetText().GetHandle(), WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_EQ(frame->OpenFile(large), 0);
    EXPECT_EQ(Text(), "first") << "what was shown stays";
    EXPECT_FALSE(frame->GetStatusBar().InProgress());
    EXPECT_EQ(frame->OpenFile(large), 1) << "and it can be opened after all";
    EXPECT_EQ(frame->GetDocument().entries, 3000);
}

TEST_F(Viewer, TellsWhatItCannotShow) {
    ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR timer, DWORD) {
        const HWND box = ::FindWindowA("#32770", nullptr);
        if (box == nullptr) return;
        ::KillTimer(nullptr, timer);
        ::PostMessageA(box, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(frame->OpenFile(SString((Folder() / "none.txt").string())), 0);
    EXPECT_EQ(frame->GetDocument().kind, Document::Kind::None);
}

TEST_F(Viewer, ComesBackWhereItWas) {
    frame->SetWindowPos(nullptr, 40, 50, 420, 330, SWP_NOZORDER);
    Drain();
    frame->SendMessage(WM_CLOSE);
    EXPECT_EQ(frame->GetHandle(), nullptr);
    Drain();
    Make();
    const RECT place = frame->GetWindowRect();
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 50);
    EXPECT_EQ(place.right - place.left, 420);
    EXPECT_EQ(place.bottom - place.top, 330);
}

// The picture in the documents is this one.
TEST_F(Viewer, LooksLikeAViewer) {
    frame->SetWindowPos(nullptr, 0, 0, 640, 400, SWP_NOZORDER);
    Archive(12);
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(Folder());
    const int isOpen = frame->OpenFile("parts.zip");
    std::filesystem::current_path(here);
    ASSERT_EQ(isOpen, 1);
    Choose(viewer::kDetails);
    Idle();
    Drain();
    const HBITMAP picture = SCaptureWindow(frame->GetHandle());
    ASSERT_NE(picture, nullptr);
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(dc, picture);
    const RECT window = frame->GetWindowRect();
    const auto darkIn = [&](RECT part) {
        int dark = 0;
        ::OffsetRect(&part, -window.left, -window.top);
        for (int y = part.top; y < part.bottom; ++y)
            for (int x = part.left; x < part.right; ++x) {
                const COLORREF pixel = ::GetPixel(dc, x, y);
                dark += GetRValue(pixel) + GetGValue(pixel) + GetBValue(pixel) < 200;
            }
        return dark;
    };
    // Twelve lines of text in the view, and words in the status bar and in the menu.
    EXPECT_GT(darkIn(frame->GetText().GetWindowRect()), 1000);
    EXPECT_GT(darkIn(frame->GetStatusBar().GetWindowRect()), 100);
    POINT client{0, 0};
    frame->ClientToScreen(&client);
    const int menu = ::GetSystemMetrics(SM_CYMENU);
    EXPECT_GT(darkIn({client.x, client.y - menu, client.x + 200, client.y}), 50);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(picture);
    EXPECT_TRUE(SWriteWindowPicture(frame->GetHandle(), "viewer.png"));
}

}  // namespace
