# bash completion for brcore8
_brcore8() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='preprocess convert sort match scan rtf list map binary modules settings profile zip classes version help'
    local pages='437 850 852 866 874 932 936 949 950 1250 1251 1252 1253 1254 1255 1256 1257 1258 1361 10000'
    local shared='--code-page --oem-code-page --strict --color --help'
    COMPREPLY=()
    # "--to=utf8" arrives as three words.
    [[ $current == = ]] && current=
    [[ $option == = ]] && option=${COMP_WORDS[COMP_CWORD - 2]}
    case $option in
        --from | --to) _brcore8_words 'ansi oem utf16 utf8'; return ;;
        --code-page | --oem-code-page) _brcore8_words "$pages"; return ;;
        --color) _brcore8_words 'auto always never'; return ;;
        -c | --char | -D | --define | --delimiters) return ;;
        -a | --assign | -s | --separator | --separators | -e | --escape) return ;;
        --key-format | --first) return ;;
        -o | --output | -k | --keywords | --directory) _brcore8_files; return ;;
    esac

    # The command, and of one that is made of several, which.
    local word command= parts= part= index
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ -z $command && " $commands " == *" $word "* ]]; then
            command=$word
            case $command in
                binary) parts='pack unpack' ;;
                list) parts='parse format' ;;
                map) parts='parse' ;;
                settings) parts='list get set delete' ;;
                rtf) parts='header fonts colors styles merge text from-text' ;;
                profile) parts='get set' ;;
                zip) parts='list cat extract test' ;;
            esac
        elif [[ -z $part && " $parts " == *" $word "* ]]; then
            part=$word
        fi
    done

    local options=$shared
    case $command${part:+ $part} in
        '') options="$shared --version" ;;
        preprocess) options="$shared --char --define --output" ;;
        convert) options="$shared --from --to --output" ;;
        sort) options="$shared --numbered --ignore-case --reverse" ;;
        modules) options="$shared --path --delayed" ;;
        match) options="$shared --ignore-case" ;;
        scan) options="$shared --keywords --delimiters" ;;
        'binary pack') options="$shared --zero --output" ;;
        'binary unpack') options="$shared --zero" ;;
        'list parse') options="$shared --zero --separators --escape" ;;
        'list format') options="$shared --zero --separator --escape" ;;
        'map parse')
            options="$shared --assign --separators --escape --key-format --first"
            options+=' --ignore-case --unsorted'
            ;;
        'settings set') options="$shared --dword" ;;
        'settings delete') options="$shared --recursive" ;;
        'rtf merge' | 'rtf text' | 'rtf from-text') options="$shared --output" ;;
        'zip list') options="$shared --tsv" ;;
        'zip extract') options="$shared --directory" ;;
    esac
    if [[ $current == -* ]]; then
        _brcore8_words "$options"
    elif [[ -z $command || $command == help ]]; then
        _brcore8_words "$commands"
    elif [[ -n $parts && -z $part ]]; then
        _brcore8_words "$parts"
    else
        _brcore8_files
    fi
}
_brcore8_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}
# Names may hold blanks.
_brcore8_files() {
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -o filenames -F _brcore8 brcore8
