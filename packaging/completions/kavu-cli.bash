# Completion of kavu-cli for bash.

_kavu_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command="" word
    local common="--json --settings --answer --answer-all --keep-comments --overwrite --now --progress --quiet --version --help"
    local index
    COMPREPLY=()

    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        case $word in
            --settings | --answer | --answer-all | --now | --progress) ((index++)) ;;
            -*) ;;
            check | save | store | tree | recover | stream | rewrite | word-frame | \
                bus | message | packet | conversions | evaluate | fit | vocabulary | get | set | report | \
                calibration | plots | workbook | xml-import)
                command=$word
                break
                ;;
            source | link | mdb | dbase | xml | layout | sdk)
                command=$word
                ((index++))
                word=${COMP_WORDS[index]}
                ((index < COMP_CWORD)) && command+=" $word"
                break
                ;;
        esac
    done

    case $previous in
        --progress) COMPREPLY=($(compgen -W "auto always never" -- "$current")); return ;;
        --answer-all) COMPREPLY=($(compgen -W "yes no cancel" -- "$current")); return ;;
        --edition)
            COMPREPLY=($(compgen -W "1996 1999 2000 2001 2004 2005 2007 2009 2011" -- "$current"))
            return
            ;;
        --order | --max-order)
            COMPREPLY=($(compgen -W "1 2 3 4 5 6 7 8 9 10" -- "$current"))
            return
            ;;
        --answer | --now | --precision | --bits | --prefix | --suffix) return ;;
        --into)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --database-version) COMPREPLY=($(compgen -W "0 1 2" -- "$current")); return ;;
        --to)
            word="0 1 2"
            [[ $command == report ]] && word="text csv workbook xlsx pdf html"
            COMPREPLY=($(compgen -W "$word" -- "$current"))
            return
            ;;
        --kind)
            word="dbase delimited fixed"
            [[ $command == report ]] && word="format frame measurements"
            COMPREPLY=($(compgen -W "$word" -- "$current"))
            return
            ;;
        --field | --fields | --page-width | --page-lines | --start-page | --link) return ;;
        --settings | --svg | --edit | --database | --layout | -o | --output)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
    esac

    if [[ $current == -* ]]; then
        case $command in
            check) common+=" --deep" ;;
            save) common+=" --output --edition" ;;
            vocabulary) common+=" --edition" ;;
            rewrite | word-frame | set) common+=" --output" ;;
            bus | message | packet) common+=" --edit --output" ;;
            fit) common+=" --order --best --max-order --precision --bits --svg" ;;
            "source copy") common+=" --prefix --suffix --output" ;;
            "source import")
                common+=" --recorder --conversions --prefix --suffix --output"
                ;;
            "source rename" | "link rename") common+=" --all-references --output" ;;
            "source delete") common+=" --output" ;;
            "mdb validate") common+=" --database --database-version --edition" ;;
            "mdb list") common+=" --database --database-version --records" ;;
            "mdb add" | "mdb put") common+=" --database --database-version --field" ;;
            "mdb remove") common+=" --database --database-version --all" ;;
            "mdb convert") common+=" --database --database-version --to --append --output" ;;
            "mdb update-stream")
                common+=" --database --database-version --fields --add-root --add-children --output"
                ;;
            "mdb add-bus") common+=" --database --database-version --output" ;;
            "mdb eu-apply") common+=" --output" ;;
            "mdb import") common+=" --database --database-version --map --kind --delimiter --header --profile --save-profile" ;;
            "mdb profiles") common+=" --delete" ;;
            "dbase set") common+=" --row" ;;
            "dbase find") common+=" --case --whole" ;;
            "dbase purge") common+=" --yes" ;;
            xml-export) common+=" --schema --stream --output" ;;
            "xml "*) common+=" --root" ;;
            "layout set") common+=" --output" ;;
            report) common+=" --kind --to --layout --page-width --page-lines --start-page --output" ;;
            calibration) common+=" --link --layout --page-width --start-page --output" ;;
            plots) common+=" --output" ;;
            workbook) common+=" --delimited --output" ;;
            xml-import) common+=" --schema --output" ;;
            "mdb "*) common+=" --database --database-version" ;;
            store) common+=" --into" ;;
            recover) common+=" --output --partial --list" ;;
        esac
        COMPREPLY=($(compgen -W "$common" -- "$current"))
    elif [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "check save store tree recover stream rewrite word-frame bus message packet conversions evaluate fit vocabulary get set source link mdb dbase xml xml-export sdk layout report calibration plots workbook xml-import" -- "$current"))
    elif [[ $command == source ]]; then
        COMPREPLY=($(compgen -W "list copy rename delete import" -- "$current"))
    elif [[ $command == dbase ]]; then
        COMPREPLY=($(compgen -W "info rows set find purge" -- "$current"))
    elif [[ $command == xml ]]; then
        COMPREPLY=($(compgen -W "select set set-attribute remove" -- "$current"))
    elif [[ $command == sdk ]]; then
        COMPREPLY=($(compgen -W "streams measurements measurement eu" -- "$current"))
    elif [[ $command == layout ]]; then
        COMPREPLY=($(compgen -W "new show check set" -- "$current"))
    elif [[ $command == mdb ]]; then
        COMPREPLY=($(compgen -W "info validate list get add put remove convert update-stream save-stream add-bus eu-data eu-apply import profiles" -- "$current"))
    elif [[ $command == link ]]; then
        COMPREPLY=($(compgen -W "rename" -- "$current"))
    else
        compopt -o filenames 2>/dev/null
        if [[ $command == recover ]]; then
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
        elif [[ $command == vocabulary ]]; then
            compopt +o filenames 2>/dev/null
            COMPREPLY=($(compgen -W "G T R M P D B S A C" -- "$current"))
        elif [[ $command == fit || $command == workbook || $command == xml-import || $command == layout* ]]; then
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
        else
            while IFS= read -r word; do
                case ${word,,} in
                    *.tma | *.tmt) COMPREPLY+=("$word") ;;
                    *) [[ -d $word ]] && COMPREPLY+=("$word") ;;
                esac
            done < <(compgen -f -- "$current")
        fi
    fi
}

complete -F _kavu_cli kavu-cli
