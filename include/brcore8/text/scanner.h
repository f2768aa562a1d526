// SScanner: splits a text into keywords and the runs of text between them.
//
// Words are cut as SStringTokenizer cuts them: at blanks, tabs and line ends, which are dropped,
// and at delimiters, which are words of their own. A word that is in the keyword table, in any
// case, is a token with the keyword's id; all words up to the next keyword are joined, nothing
// between them, into one token with id -1. Keywords with capitals in the table are never found.
// Delimiters are trimmed from both ends of every token, and a token of which nothing is left is
// skipped, also when it was a keyword, unless the text ends with it.
// The scanner shares the text's buffer. The table is borrowed and must outlive the scanning; it
// may change between two calls, which the next call notices. That first call costs a pass over the
// table, every other one depends on the text alone. (Keywords of one character added later do not
// cut words before the next Init.)
// Threads: one scanner serves one thread; scanners that only read one table may share it.
// Errors: SEOutOfMemory; the scanner then stands where it stood.
//
//     SKeywordTable keywords;
//     keywords.AddKeyword("and", 1);
//     SScanner scanner("red AND (green)", &keywords);
//     while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty())
//         Use(scanner.tokenID, scanner.token);             // -1 "red", 1 "AND", -1 "green"
#ifndef BRCORE8_TEXT_SCANNER_H
#define BRCORE8_TEXT_SCANNER_H

#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/tokenizer.h>
#include <brcore8/text/symbol_table.h>

#include <cstdint>
#include <string_view>

// The default delimiters.
extern BRCORE8_API const SString gSN_Delimiters;  // ()[]+-*/%^={}"'

class BRCORE8_API SScanner {
public:
    enum : long { NoID = -1 };

    // Of the last NextTokenID: its result, that of the call before, and the text of its token.
    // A token that was skipped counts as a call.
    long tokenID = 0;
    long previousTokenID = 0;
    SString token;

    // ---- Set up -------------------------------------------------------------------------------

    // Nothing to scan, or as Init.
    SScanner();
    SScanner(const SString& text, SKeywordTable* keywords);
    ~SScanner();
    SScanner(const SScanner&) = delete;
    SScanner& operator=(const SScanner&) = delete;

    // Forgets text and table; both ids are 0 and the token is empty. Returns 1, like every Init.
    int Init();
    // Starts on a text with gSN_Delimiters, which come back as words. Keywords of one character
    // cut words too, as delimiters do, but are not trimmed. Without a table there are no keywords.
    int Init(const SString& text, SKeywordTable* keywords);
    // The same with other delimiters and flags (see SStringTokenizer::SetDelimiters).
    int Init(const SString& text, SKeywordTable* keywords, SString& delimiters,
             int returnDelimiters, int addToSeparators);
    // Collects the keywords of one character anew from the table, for the next Init. Returns 1.
    int InitKeywordsDelimiters();
    // Other delimiters for the rest of the text, without the keywords of one character: unless
    // they are among these, they cut no longer, or only separate where the second flag keeps the
    // former delimiters as separators.
    void SetDelimiters(const SString& delimiters, int returnDelimiters, int addToSeparators);
    // As Init, but the previous id stays.
    void Done();

    // ---- Read ---------------------------------------------------------------------------------

    // The id of the next keyword, or NoID for a run of other text; NoID with an empty token at
    // the end.
    long NextTokenID();

private:
    // The keywords of a table by the hash of their spelling, made when a token is first asked for
    // and again when the table has changed. Serves pages of single bytes.
    struct KeywordIndex {
        struct Slot {
            std::uint32_t hash;
            const SKeywordTable::Element* keyword;  // null: free
        };

        bool IsOf(const SKeywordTable& other) const noexcept;
        void Build(const SKeywordTable& other);
        const SKTItem* Find(std::string_view word) const noexcept;
        bool Put(const Slot& slot) noexcept;

        const SKeywordTable* table = nullptr;
        std::uint64_t changes = 0;
        int count = 0;
        const unsigned char* fold = nullptr;  // the lower case of each byte
        STable<Slot> slots;                   // a power of two
        std::uint64_t lengths[256] = {};      // by first byte, a bit a length
        bool crowded = false;                 // some keywords found no slot
    };

    static SString KeywordDelimiters(const SKeywordTable* keywords);
    void Trim(const SString& delimiters);
    long TakeToken(std::string_view& taken);
    const SKTItem* FindKeyword(std::string_view word) const;
    std::string_view Trimmed(std::string_view text) const;

    SKeywordTable* keywords_ = nullptr;
    SStringTokenizer tokenizer_;
    SString delimiters_;
    SString keywordDelimiters_;
    bool trimmed_[256] = {};  // the delimiters of one byte
    SStringBuffer run_{256};  // words that stand apart in the text
    KeywordIndex index_;
};

#endif
