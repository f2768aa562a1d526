// SPreprocessor: filters a text through directives before a program reads it.
//
// A directive is the directive character followed by a keyword:
//     define NAME VALUE     puts a symbol into category -1: a number when VALUE begins with a digit
//     undef NAME            removes a symbol from category 0, where define puts none
//     ifdef NAME, ifndef NAME, else, endif
//     error "TEXT", message "TEXT"                      swallowed with their text
//     /* ... */ and // ...                               comments
// Anything else after the directive character is dropped, one token of it. Every other token is
// copied, followed by one blank; symbols are tested and never replaced. Tokens are cut at blanks,
// tabs, line ends and at gPP_Delimiters; a `/*` without the directive character is text.
// Nothing is an error: regions, comments and quoted texts that never end reach to the end.
// Threads: one object serves one thread at a time, and so does the symbol table.
//
//     SPreprocessor preprocessor('#');
//     SSymbolTable symbols;
//     SString text = preprocessor.Preprocess("#define A 1 #ifdef A yes #else no #endif", &symbols);
//     // text is "yes "
#ifndef BRCORE8_TEXT_PREPROCESSOR_H
#define BRCORE8_TEXT_PREPROCESSOR_H

#include <brcore8/strings/string.h>
#include <brcore8/strings/tokenizer.h>

class SStringBuffer;
class SSymbolTable;

// The vocabulary, compared byte by byte. The last three belong to it, though nothing asks for them.
extern BRCORE8_API const SString gPP_Delimiters;    // #+=-/*\"
extern BRCORE8_API const SString gPP_Space;         // written after every copied token
extern BRCORE8_API const SString gPP_define;        // define
extern BRCORE8_API const SString gPP_undef;         // undef
extern BRCORE8_API const SString gPP_ifdef;         // ifdef
extern BRCORE8_API const SString gPP_ifndef;        // ifndef
extern BRCORE8_API const SString gPP_else;          // else
extern BRCORE8_API const SString gPP_endif;         // endif
extern BRCORE8_API const SString gPP_error;         // error
extern BRCORE8_API const SString gPP_message;       // message
extern BRCORE8_API const SString gPP_BeginComment;  // /*
extern BRCORE8_API const SString gPP_EndComment;    // */
extern BRCORE8_API const SString gPP_LineComment;   // //
extern BRCORE8_API const SString gPP_EOL;           // line feed
extern BRCORE8_API const SString gPP_if;            // if
extern BRCORE8_API const SString gPP_elif;          // elif
extern BRCORE8_API const SString gPP_defined;       // defined

class BRCORE8_API SPreprocessor {
public:
    explicit SPreprocessor(char directive);
    ~SPreprocessor();
    SPreprocessor(const SPreprocessor&) = delete;
    SPreprocessor& operator=(const SPreprocessor&) = delete;

    // Another directive character; forgets the last input. One that is not in gPP_Delimiters is
    // only recognised as the first character of a token, and the rest of that token is dropped.
    void Init(char directive);

    // Returns what is left of the input. Symbols that are in the table count, and those that
    // directives define stay in it; null stands for an empty table that is dropped at the end.
    // Keeps a share of the input until Init, the next call or destruction. Costs are linear, and
    // regions may be nested as deeply as the input allows.
    // Throws SEOutOfMemory; what was defined until then stays in the table.
    SString Preprocess(const SString& input, SSymbolTable* symbols);

private:
    struct Run;

    char directive_;
    SStringTokenizer tokenizer_;
};

#endif
