# bash completion for brcore8
_brcore8() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='preprocess convert sort match classes version help'
    local pages='437 850 852 866 932 936 949 950 1250 1251 1252 1253 1254 1255 1256 1257 1258'
    local shared='--code-page --oem-code-page --strict --color --help'
    COMPREPLY=()
    case $previous in
        --from | --to) COMPREPLY=($(compgen -W 'ansi oem utf16 utf8' -- "$current")); return ;;
        --code-page | --oem-code-page) COMPREPLY=($(compgen -W "$pages" -- "$current")); return ;;
        --color) COMPREPLY=($(compgen -W 'auto always never' -- "$current")); return ;;
        -c | --char | -D | --define) return ;;
        -o | --output) COMPREPLY=($(compgen -f -- "$current")); return ;;
    esac

    local word command= index
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ " $commands " == *" $word "* ]]; then
            command=$word
            break
        fi
    done

    local options=$shared
    case $command in
        '') options="$shared --version" ;;
        preprocess) options="$shared --char --define --output" ;;
        convert) options="$shared --from --to --output" ;;
        sort) options="$shared --numbered --ignore-case --reverse" ;;
        match) options="$shared --ignore-case" ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ -z $command || $command == help ]]; then
        COMPREPLY=($(compgen -W "$commands" -- "$current"))
    else
        COMPREPLY=($(compgen -f -- "$current"))
    fi
}
complete -o filenames -F _brcore8 brcore8
