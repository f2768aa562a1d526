// SStringTokenizer: cuts a text into tokens.
//
// Three things cut a text: separators, which stand between tokens and are never delivered;
// delimiters, single characters that may be delivered as tokens of their own; and registered
// tokens of several characters. Whatever stands between them is a token too, as long as it can
// be. The tokenizer shares the text's buffer and keeps it until Done or the next Init.
// Zero bytes are text like any other byte. Under a double-byte page characters are compared
// whole: a trail byte that equals a delimiter is none. The page counts that was chosen when the
// delimiters were last set.
// Threads: one tokenizer serves one thread at a time. Errors: SEOutOfMemory.
//
//     SStringTokenizer tokens;
//     tokens.Init("width = 12", "=", 1, 1);
//     while (tokens.HasMoreTokens()) Use(tokens.NextToken());       // "width", "=", "12"
#ifndef BRCORE8_STRINGS_TOKENIZER_H
#define BRCORE8_STRINGS_TOKENIZER_H

#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>

#include <string_view>

// A registered token. A simple token has only its start, which is its whole text, and no end.
struct SDelimitedToken {
    SString name;
    SString start;
    SString end;
    int keepDelimiters;  // whether it is delivered with its start and end
    long id;             // what NextTokenParam returns for it
};

class BRCORE8_API SStringTokenizer {
public:
    // What NextTokenParam returns for every token that is not registered.
    enum : long { NoId = -1 };

    // ---- Text and sets ------------------------------------------------------------------------

    // No text, no separators, no delimiters, no registered tokens.
    SStringTokenizer() = default;

    // Starts on a text: separators are blank, tab, LF and CR; delimiters are those of before.
    // Delimiters come back as tokens when the flag is not 0, else they only cut.
    void Init(const SString& text, int returnDelimiters);
    // The same, then SetDelimiters.
    void Init(const SString& text, const SString& delimiters, int returnDelimiters,
              int addToSeparators);
    // Replaces the delimiters. They join the separators when the second flag is not 0; else they
    // take the place of all separators, unless there are none of them.
    void SetDelimiters(const SString& delimiters, int returnDelimiters, int addToSeparators);
    // Forgets the text and both sets. Registered tokens stay.
    void Done();

    // ---- Register tokens ----------------------------------------------------------------------
    // A registered token is recognised wherever its start stands outside another registered
    // token, also amid other text, and goes before separators and delimiters. Where several start,
    // the one with the longest start is taken. Registering a start again replaces the first; an
    // empty start registers nothing. Descriptions move when another token is registered.

    void AddSimpleToken(const SString& text, long id);
    // A token from `start` to the next `end`, or to the end of the text when none follows. It is
    // delivered without both, or with them when `keepDelimiters` is not 0. With an empty end it is
    // a simple token of that name.
    void AddDelimitedToken(const SString& name, const SString& start, const SString& end,
                           int keepDelimiters, long id);

    // ---- Read tokens --------------------------------------------------------------------------

    // Whether any text is left. Skips separators first, but not when delimiters come back as
    // tokens: the text left may then be separators only, and the next token is empty.
    int HasMoreTokens() noexcept {
        if (!rules_.returned) SkipSeparators(rules_);
        return position_ < text_.View().size();
    }
    // Skips blanks, tabs, LFs and CRs.
    void SkipSpaces() noexcept;

    // Takes the next token and returns its id when it is a registered one, else NoId. At the end
    // the token is empty, with NoId. `matched` (may be null) gets the description of a registered
    // token, else null. `token` may be null.
    long NextTokenParam(SString* token, const SDelimitedToken** matched = nullptr);
    // The same with other delimiters and another flag for this one call; separators are then
    // blank, tab, LF, CR and these delimiters.
    long NextTokenParam(SString* token, const SDelimitedToken** matched, const SString& delimiters,
                        int returnDelimiters);
    // The same as a view of the text: valid until Done, the next Init or destruction.
    long NextTokenView(std::string_view* token, const SDelimitedToken** matched = nullptr) noexcept;
    // The next token; empty at the end.
    SString NextToken();

    // Takes the raw text up to the next `stop` into `out` (may be null), goes on behind the stop
    // and returns 1. When there is none, takes all the text left and returns 0. An empty stop is
    // found at once.
    int RetrieveUntil(const SString& stop, SString* out);
    int RetrieveUntilView(std::string_view stop, std::string_view* out = nullptr) noexcept;

    // The position as a byte offset, and back, limited to the text.
    unsigned int SaveState() const noexcept { return static_cast<unsigned int>(position_); }
    void RestoreState(unsigned int position) noexcept;

private:
    // What each byte, and each double-byte character of the sets, is.
    struct Rules {
        enum : unsigned char { Separator = 1, Delimiter = 2, Lead = 4, Starts = 8 };
        struct Pair {
            unsigned int code;
            unsigned char is;
        };
        void TakePage();
        void Add(std::string_view set, unsigned char as);
        void Remove(unsigned char as) noexcept;
        void SetDelimiters(std::string_view set, int returnDelimiters, int addToSeparators);
        unsigned char IsPair(unsigned int code) const noexcept;
        bool Skips(unsigned char is) const noexcept;

        unsigned char bytes[256] = {};
        STable<Pair> pairs;  // ascending by code
        bool returned = false;
    };

    std::size_t CharacterAt(const Rules& rules, unsigned char& is) const noexcept;
    const SDelimitedToken* RegisteredHere() const noexcept;
    const SDelimitedToken* SkipSeparators(const Rules& rules) noexcept;
    std::string_view TakeRegistered(const SDelimitedToken& token) noexcept;
    std::string_view TakeText(const Rules& rules) noexcept;
    long Take(const Rules& rules, std::string_view* token,
              const SDelimitedToken** matched) noexcept;
    long TakeCopy(const Rules& rules, SString* token, const SDelimitedToken** matched);
    void Start(const SString& text, Rules&& rules);
    void Register(const SDelimitedToken& token);

    SString text_;
    std::size_t position_ = 0;
    Rules rules_;
    STable<SDelimitedToken> registered_;  // longer starts first
};

#endif
