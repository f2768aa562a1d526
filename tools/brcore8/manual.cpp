// manual: the manual page, from the one table of commands.

#include "command.h"
#include "parsers.h"

#include <brcore8/core/version.h>

namespace tool {
namespace {

constexpr char Beginning[] = R"(.SH NAME
brcore8 \- work on text files, documents and archives
.SH SYNOPSIS
.B brcore8
.RI [ OPTIONS ]
.I COMMAND
.RI [ ARGUMENTS ]
.br
.B brcore8 help
.RI [ COMMAND ]
.br
.B brcore8 \-\-version
.SH DESCRIPTION
The units of the BRCORE8 class library at work on files.
Results go to standard output, everything else to standard error.
INPUT is a file;
.B \-
or a missing INPUT is standard input.
.PP
A text input may begin with a mark: EF BB BF for UTF-8, FF FE for UTF-16 with its low byte first,
FE FF for UTF-16 with its high byte first.
Without a mark it is in the ANSI code page.
Lines end with LF, CR LF, LF CR, or a run of CR with one LF or none after it; in Unicode text also
with U+2028.
.PP
Characters that a code page cannot hold become their best fit or its default character.
Standard error then says how many did not survive, and the byte offset of the first in the input.
.PP
OUTPUT is written only when its content differs; standard error says
.B written
or
.BR unchanged .
Of an option that stands several times the last counts, except where dots follow it here.
Work that takes over half a second shows a bar on standard error when that is a terminal.
.PP
In rows of fields a tab, CR, LF or backslash inside a field is written \et, \er, \en, \e\e.
.SH OPTIONS
These stand before or after the command.
)";

constexpr char End[] = R"(.SH EXIT STATUS
.TP
.B 0
Done.
.TP
.B 1
The work failed, and standard error says
.IR "brcore8: WHAT: WHY" ;
or
.B match
found nothing.
.TP
.B 2
The command line is wrong.
.TP
.B 130
Ctrl-C. An old OUTPUT is whole and a new one is not there; once OUTPUT is being put in place the
work goes on to its end, and the status is 0.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When set and not empty, no colours with
.BR "\-\-color auto" .
.TP
.B BRCORE8_SETTINGS
A store file for the settings of the user, in the place of brcore8/settings.db in the folder
.B XDG_CONFIG_HOME
names, or in ~/.config. Not on Windows.
.SH EXAMPLES
.nf
brcore8 preprocess \-D DEBUG=1 \-o out.txt in.txt
brcore8 convert \-\-from oem \-\-oem\-code\-page 850 \-\-to utf8 old.txt
brcore8 rtf merge letter.rtf annex.rtf \-o both.rtf
brcore8 map parse \-u \(aqname=Tower;height=12\(aq
brcore8 settings set \(aqControls\(aq \(aqUI Font Name\(aq \(aqTahoma\(aq
brcore8 profile set editor.ini Window Width 640
printf \(aqpage10\enpage9\en\(aq | brcore8 sort \-n
.fi
)";

// Plain text, for a line of its own.
std::string Roff(std::string_view text) {
    std::string roff;
    for (const char byte : text) {
        switch (byte) {
            case '\\':
                roff += "\\e";
                break;
            case '-':
                roff += "\\-";
                break;
            case '\'':
                roff += "\\(aq";
                break;
            case '^':
                roff += "\\(ha";
                break;
            case '~':
                roff += "\\(ti";
                break;
            case '.':
                roff += "\\&.";
                break;  // at the start of a line it would be a request
            default:
                roff += byte;
        }
    }
    return roff;
}

std::string Bold(std::string_view text) {
    return "\\fB" + Roff(text) + "\\fR";
}
std::string Italic(std::string_view text) {
    return "\\fI" + Roff(text) + "\\fR";
}

// A sentence of what the help says in passing.
std::string Sentence(const std::string& text) {
    return text.empty() || text.back() == '.' ? Roff(text) + "\n" : Roff(text + ".") + "\n";
}

// "[-o OUTPUT]", "FILE", "[NAME]..."
std::string Usage(const CLI::Option& option) {
    std::string usage;
    if (option.get_positional()) {
        usage = Italic(ValueName(option));
    } else {
        usage = Bold(NamesOf(option).front());
        if (TakesValue(option)) usage += " " + Italic(ValueName(option));
    }
    if (!option.get_required()) usage = "[" + usage + "]";
    return " " + usage + (MayRepeat(option) ? "..." : "");
}

// What an option does, under its names.
std::string Explained(const CLI::Option& option) {
    std::string names;
    for (const std::string& name : NamesOf(option))
        names += (names.empty() ? "" : ", ") + Bold(name);
    if (option.get_positional())
        names = Italic(ValueName(option));
    else if (TakesValue(option))
        names += " " + Italic(ValueName(option));
    std::string text = option.get_description();
    const std::string choices = CLI::detail::join(ChoicesOf(option), ", ");
    if (!choices.empty()) text += ": " + choices;
    return ".TP\n" + names + "\n" + Sentence(text);
}

std::string Explained(const CLI::App& parser, const std::string& path) {
    std::string text = ".TP\n" + Bold(path);
    for (const Kind kind : {Kind::Option, Kind::Positional}) {
        for (const CLI::Option* option : OptionsOf(parser, kind))
            text += Usage(*option);
    }
    text += "\n" + Sentence(parser.get_description());
    if (!parser.get_footer().empty()) text += Sentence(parser.get_footer());
    std::string explained;
    for (const Kind kind : {Kind::Positional, Kind::Option}) {
        for (const CLI::Option* option : OptionsOf(parser, kind))
            explained += Explained(*option);
    }
    if (!explained.empty()) text += ".RS\n" + explained + ".RE\n";
    for (const CLI::App* part : PartsOf(parser))
        text += Explained(*part, path + " " + part->get_name());
    return text;
}

}  // namespace

Action PrepareManual(CLI::App& parser, const Settings&) {
    return [&parser] {
        const CLI::App& program = *parser.get_parent();
        const std::string version = SLibraryVersion();
        std::string page =
            ".TH BRCORE8 1 \"\" \"brcore8 " + version + "\" \"BRCORE8\"\n" + Beginning;
        for (const CLI::Option* option : OptionsOf(program, Kind::Option))
            page += Explained(*option);
        page += Explained(*program.get_help_ptr()) + ".SH COMMANDS\n";
        for (const CLI::App* command : PartsOf(program))
            page += Explained(*command, command->get_name());
        return Print(page + End);
    };
}

}  // namespace tool
