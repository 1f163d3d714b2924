# Bash completion of docproducts: commands, options and their values. Needs no other package.

_docproducts_reply() {
    mapfile -t COMPREPLY < <(compgen "$@" -- "$word")
}

_docproducts() {
    local options='--help --install-root --support-package-root --doc-root --doc-data-root --catalogue --log --color'
    local word command='' option=''  # the option is the one whose value comes next
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $option,$word in
            ,--) return ;;
            ,--log | ,--color | ,--catalogue | ,--*-root) option=$word ;;
            ,--ignore | ,--error | ,--max | ,--format | ,--explain) option=$word ;;
            ,roots | ,list | ,find | ,check) command=${command:-$word} ;;
            --*,=) ;;  # "--log=note" is three words
            *) option='' ;;
        esac
    done
    word=${COMP_WORDS[COMP_CWORD]#=}
    case $option,$command,$word in
        --log,*) _docproducts_reply -W 'off error note detail trace' ;;
        --color,*) _docproducts_reply -W 'auto always never' ;;
        --format,*) _docproducts_reply -W 'text json sarif' ;;
        --ignore,* | --error,* | --max,* | --explain,*) ;;
        --catalogue,*) compopt -o filenames && _docproducts_reply -f ;;
        --*) compopt -o filenames && _docproducts_reply -d ;;
        ,,-*) _docproducts_reply -W "$options --version" ;;
        ,list,-*) _docproducts_reply -W "$options --all" ;;
        ,check,-*)
            _docproducts_reply -W "$options --strict --no-files --ignore --error --max --format --explain"
            ;;
        ,check,*) compopt -o filenames && _docproducts_reply -f ;;
        ,*,-*) _docproducts_reply -W "$options" ;;
        ,,*) _docproducts_reply -W 'roots list find check' ;;
    esac
}

complete -F _docproducts docproducts
