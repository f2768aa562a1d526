// The rest of a desktop, as far as one program meets it: a window manager that frames windows, a
// user, and another program with a clipboard. It has a connection and a thread of its own.
#ifndef BRCORE8_TESTS_SCREEN_MANAGER_H
#define BRCORE8_TESTS_SCREEN_MANAGER_H

#include <xcb/xcb.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class Manager {
public:
    static constexpr int kCaption = 20;  // of its frames, above the client

    // Takes the screen, and says how many pixels an inch it has.
    explicit Manager(const char* dpi);
    ~Manager();
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;
    bool IsGood() const { return connection_ != nullptr && isManager_; }

    // The client that was shown last, once one is that this did not answer before; 0 after five
    // seconds without.
    xcb_window_t Client();
    void Close(xcb_window_t client);
    // The frame's place; the client is below the caption, of that size.
    void Place(xcb_window_t client, int x, int y, int width, int height);
    std::string TitleOf(xcb_window_t client);
    // How often a client asked to be an icon; it is one from then on.
    int IconRequests();
    // The user brings it back.
    void Restore(xcb_window_t client);
    bool CanGrabPointer();

    // --- The user
    void Move(int x, int y);
    void Button(int button, bool isDown);
    // The key with that symbol; false when the keyboard has none.
    bool Key(xcb_keysym_t symbol, bool isDown);
    // Gives the key of one symbol another.
    bool Remap(xcb_keysym_t from, xcb_keysym_t to);

    // --- Another program
    // Owns the clipboard from now on; in pieces when `piece` is not 0, never when it is -1.
    void Offer(std::string text, int piece);
    // What the owner gives; how many pieces it came in.
    std::string Ask(int* pieces);

private:
    struct Framed {
        xcb_window_t client;
        xcb_window_t frame;
    };

    xcb_atom_t Atom(const char* name);
    xcb_keycode_t CodeOf(xcb_keysym_t symbol);
    void Run();
    void Take(const xcb_generic_event_t& event);
    void Frame(xcb_window_t client);
    void Configure(const xcb_configure_request_event_t& event);
    void TellPlace(xcb_window_t client);
    void SetState(xcb_window_t client, std::uint32_t state);
    void Serve(const xcb_selection_request_event_t& event);
    void ServePiece();
    void Receive(bool isFirst);
    xcb_window_t FrameOf(xcb_window_t client);

    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    bool isManager_ = false;
    std::thread thread_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<Framed> framed_;
    xcb_window_t answered_ = 0;
    int iconRequests_ = 0;
    xcb_window_t own_ = 0;
    xcb_atom_t utf8_ = 0, clipboard_ = 0, incr_ = 0, pasted_ = 0, stop_ = 0;
    xcb_atom_t state_ = 0, changeState_ = 0;

    std::string offered_;
    int piece_ = 0;
    xcb_window_t requestor_ = 0;
    xcb_atom_t property_ = 0;
    std::size_t sent_ = 0;

    bool isAsking_ = false;
    bool isComing_ = false;
    int pieces_ = 0;
    std::string answer_;
};

#endif
