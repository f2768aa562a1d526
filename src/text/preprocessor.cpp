#include <brcore8/text/preprocessor.h>

#include <brcore8/containers/table.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/text/symbol_table.h>

#include <algorithm>
#include <string_view>

#include "strings/mbs.h"

namespace {

// The vocabulary again, for the directives themselves: these exist before any constructor runs.
constexpr char kDelimiters[] = "#+=-/*\\\"";
constexpr std::string_view kDefine = "define";
constexpr std::string_view kUndef = "undef";
constexpr std::string_view kIfdef = "ifdef";
constexpr std::string_view kIfndef = "ifndef";
constexpr std::string_view kElse = "else";
constexpr std::string_view kEndif = "endif";
constexpr std::string_view kError = "error";
constexpr std::string_view kMessage = "message";
constexpr std::string_view kBeginComment = "/*";
constexpr std::string_view kEndComment = "*/";
constexpr std::string_view kLineComment = "//";
constexpr std::string_view kEOL = "\n";
constexpr std::string_view kQuote = "\"";

// Symbols are defined and tested in the one category, and undefined in the other, where only the
// caller puts any.
constexpr long kDefinitions = -1;
constexpr long kUndefinitions = 0;

enum : long { kBeginCommentId = 1, kLineCommentId = 2 };

// The first buffer for the output: what a small text needs, or a start for a long one.
unsigned int OutputSize(const SString& input) {
    return static_cast<unsigned int>(std::clamp(input.LengthByte(), 64, 0x40000));
}

}  // namespace

const SString gPP_Delimiters = kDelimiters;
const SString gPP_Space = " ";
const SString gPP_define(kDefine);
const SString gPP_undef(kUndef);
const SString gPP_ifdef(kIfdef);
const SString gPP_ifndef(kIfndef);
const SString gPP_else(kElse);
const SString gPP_endif(kEndif);
const SString gPP_error(kError);
const SString gPP_message(kMessage);
const SString gPP_BeginComment(kBeginComment);
const SString gPP_EndComment(kEndComment);
const SString gPP_LineComment(kLineComment);
const SString gPP_EOL(kEOL);
const SString gPP_if = "if";
const SString gPP_elif = "elif";
const SString gPP_defined = "defined";

// One input on its way to its output. Open regions are a stack of flags, so that depth costs heap
// and not stack: a region's flag says whether its text is copied.
struct SPreprocessor::Run {
    Run(char directiveCharacter, SStringTokenizer& tokenizer, SSymbolTable& table,
        const SString& input)
        : directive(directiveCharacter),
          tokens(tokenizer),
          symbols(table),
          out(OutputSize(input)) {}

    std::string_view NextToken() noexcept {
        std::string_view token;
        tokens.NextTokenView(&token);
        return token;
    }

    bool OpensDirective(std::string_view token) const noexcept { return token[0] == directive; }

    void Copy(std::string_view token) {
        out += token;
        out += ' ';
    }

    // Goes on behind the next directive character; false at the end.
    bool ScanToDirective() {
        for (;;) {
            const std::string_view token = NextToken();
            if (token.empty()) return false;
            if (OpensDirective(token)) return true;
            if (active) Copy(token);
        }
    }

    void OpenRegion(bool copies) {
        outer.Add(active);
        active = copies;
    }

    // Whether the keyword closed or toggled a region, which it can only inside one. The part after
    // `else` has the plain opposite of the region's flag, whatever the regions around it say.
    bool ProcessRegionEnd(std::string_view keyword) {
        if (outer.IsEmpty()) return false;
        if (keyword == kElse) {
            active = !active;
        } else if (keyword == kEndif) {
            const int last = outer.GetCount() - 1;
            active = outer[last];
            outer.Remove(last);
        } else {
            return false;
        }
        return true;
    }

    void ProcessDirective(std::string_view keyword) {
        if (keyword.empty()) return;
        if (keyword == kDefine)
            Define();
        else if (keyword == kUndef)
            Undefine();
        else if (keyword == kIfdef)
            OpenRegion(IsNextDefined() && active);
        else if (keyword == kIfndef)
            OpenRegion(!IsNextDefined() && active);
        else if (keyword == kError || keyword == kMessage)
            SkipMessage();
        else if (OpensDirective(keyword))
            CopyDoubled(keyword);
        else if (keyword == kBeginComment)
            tokens.RetrieveUntilView(kEndComment);
        else if (keyword == kLineComment)
            tokens.RetrieveUntilView(kEOL);
    }

    void Define() {
        const SString name(NextToken());
        const SString value(NextToken());
        if (!active) return;
        if (value.IsDigit(0))
            symbols.AddSymbol(name, value.operator long(), kDefinitions);
        else
            symbols.AddSymbol(name, value, kDefinitions);
    }

    void Undefine() {
        const SString name(NextToken());
        if (active) symbols.RemoveSymbol(name, kUndefinitions);
    }

    bool IsNextDefined() { return symbols.IsSymbolDefined(SString(NextToken()), kDefinitions); }

    void SkipMessage() {
        if (NextToken().starts_with(kQuote)) tokens.RetrieveUntilView(kQuote);
    }

    void CopyDoubled(std::string_view keyword) {
        if (!active) return;
        out += keyword;
        Copy(keyword);
    }

    const char directive;
    SStringTokenizer& tokens;
    SSymbolTable& symbols;
    SStringBuffer out;
    STable<bool> outer;  // the flags of the regions around the innermost one
    bool active = true;  // the innermost one's
};

SPreprocessor::SPreprocessor(char directive) {
    // A comment's opener must arrive whole; as delimiters its characters would come one by one.
    tokenizer_.AddSimpleToken(gPP_BeginComment, kBeginCommentId);
    tokenizer_.AddSimpleToken(gPP_LineComment, kLineCommentId);
    Init(directive);
}

SPreprocessor::~SPreprocessor() {
    tokenizer_.Done();
}

void SPreprocessor::Init(char directive) {
    directive_ = directive;
    tokenizer_.Done();
}

SString SPreprocessor::Preprocess(const SString& input, SSymbolTable* symbols) {
    SSymbolTable none;
    tokenizer_.Init(input, gPP_Delimiters, 1, 1);
    Run run(directive_, tokenizer_, symbols ? *symbols : none, input);
    while (run.ScanToDirective()) {
        const std::string_view keyword = run.NextToken();
        if (!run.ProcessRegionEnd(keyword)) run.ProcessDirective(keyword);
    }
    return run.out;
}
