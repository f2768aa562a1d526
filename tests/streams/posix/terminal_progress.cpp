// The bar on a terminal, which is made for the test and takes the place of standard error.
#include <brcore8/streams/progress.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

namespace {

class Terminal {
public:
    explicit Terminal(unsigned short columns) : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) return;
        slave_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
        Resize(columns);
        std::fflush(stderr);
        saved_ = dup(2);
        dup2(slave_, 2);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        std::fflush(stderr);
        if (saved_ >= 0) dup2(saved_, 2);
        for (const int descriptor : {saved_, slave_, master_})
            if (descriptor >= 0) close(descriptor);
    }
    bool IsOpen() const { return saved_ >= 0; }
    void Resize(unsigned short columns) {
        winsize size{};
        size.ws_col = columns;
        size.ws_row = 24;
        ioctl(slave_, TIOCSWINSZ, &size);
    }
    // What was shown since.
    std::string Shown() {
        std::fflush(stderr);
        std::string shown;
        char block[256];
        pollfd ready{master_, POLLIN, 0};
        while (poll(&ready, 1, 100) > 0) {
            const ssize_t got = read(master_, block, sizeof block);
            if (got <= 0) break;
            shown.append(block, static_cast<std::size_t>(got));
        }
        return shown;
    }

private:
    int master_;
    int slave_ = -1;
    int saved_ = -1;
};

TEST(TerminalProgressPosix, DrawsOneLineAndTakesItAway) {
    Terminal terminal(40);
    ASSERT_TRUE(terminal.IsOpen());
    {
        STerminalProgress progress("reading");
        progress.SetRange(100, 300);
        progress.SetPosition(150);
        EXPECT_EQ(terminal.Shown(), "") << "nothing in the first half second";
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        progress.SetPosition(200);
        EXPECT_EQ(terminal.Shown(), "\r" + STerminalProgress::Line("reading", 1, 2, 39));
        progress.SetPosition(201);
        EXPECT_EQ(terminal.Shown(), "") << "no other percentage";
        terminal.Resize(20);
        progress.SetPosition(300);
        EXPECT_EQ(terminal.Shown(), "\r" + STerminalProgress::Line("reading", 1, 1, 19));
        progress.SetPosition(50);
        EXPECT_EQ(terminal.Shown(), "\r" + STerminalProgress::Line("reading", 0, 1, 19));
    }
    EXPECT_EQ(terminal.Shown(), "\r" + std::string(19, ' ') + "\r");
    { const STerminalProgress silent("never drawn"); }
    EXPECT_EQ(terminal.Shown(), "");
}

}  // namespace
