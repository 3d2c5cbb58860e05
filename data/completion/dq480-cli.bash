# bash completion for dq480-cli: its commands, each command's options, and file names where a
# command takes a file (setting files first, a mount point for --card).

_dq480_cli()
{
    local cur prev words cword
    _init_completion || return

    local commands="new check convert show write-card print drives import info play"
    case $prev in
        --encoding)
            COMPREPLY=($(compgen -W "CP932 Shift_JIS UTF-8 ISO-8859-1 windows-1252" -- "$cur"))
            return
            ;;
        --card)
            _filedir -d
            return
            ;;
        --kind)
            COMPREPLY=($(compgen -W "info all programs program=" -- "$cur"))
            [[ $COMPREPLY == *= ]] && compopt -o nospace
            return
            ;;
        --pdf)
            _filedir pdf
            return
            ;;
        --pages | --name | --loudness | --program | --passes)
            return
            ;;
        --to)
            _filedir -d
            return
            ;;
        --render)
            _filedir '@(wav|WAV)'
            return
            ;;
        --quality)
            COMPREPLY=($(compgen -W "standard high" -- "$cur"))
            return
            ;;
    esac

    # The command is the first word that is neither an option nor an option's value.
    local i command=""
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --encoding | --card | --kind | --pdf | --pages | --to | --name | --quality | --loudness | --program | --passes | --render) ((i++)) ;;
            -*) ;;
            *)
                command=${words[i]}
                break
                ;;
        esac
    done

    local options="--encoding --help --version"
    case $command in
        new) options+=" --force" ;;
        convert) options+=" --card-control" ;;
        show) options+=" --json" ;;
        write-card) options+=" --card --yes --no" ;;
        print) options+=" --kind --pdf --pages" ;;
        drives) options+=" --watch" ;;
        import) options+=" --to --name --quality --loudness --trim --force" ;;
        play) options+=" --program --passes --render" ;;
    esac

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
    elif [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "$commands" -- "$cur"))
    elif [[ $command == import || $command == info ]]; then
        _filedir '@(wav|WAV|aif|aiff|AIF|AIFF|flac|FLAC|ogg|OGG|opus|OPUS|mp3|MP3|mp2|MP2)'
    elif [[ $command != drives ]]; then
        _filedir '@(stf|STF|csv|CSV)'
    fi
} && complete -F _dq480_cli dq480-cli
