# Bash completion of docproducts: commands, options and their values. Needs no other package.

_docproducts_reply() {
    mapfile -t COMPREPLY < <(compgen "$@" -- "$word")
}

# Replies with names in the catalogue that the line chooses, but for those that look like options. Names are foreign, so
# compgen mustn't expand them.
_docproducts_names() {
    local name
    while read -r -d '' name; do
        [[ $name == -* || $name == *[[:cntrl:]]* || $name != "$word"* ]] || COMPREPLY+=("$(printf %q "$name")")
    done < <("${COMP_WORDS[0]}" list --names -0 "${given[@]}" 2>/dev/null)
}

_docproducts() {
    local options='--help --install-root --support-package-root --doc-root --doc-data-root --catalogue --log --color'
    local word command='' option='' given=()  # the option is the one whose value comes next
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $option,$word in
            ,--) return ;;
            ,--log | ,--color | ,--catalogue | ,--*-root) option=$word ;;
            ,--ignore | ,--error | ,--max | ,--format | ,--explain) option=$word ;;
            ,roots | ,list | ,find | ,explain | ,check) command=${command:-$word} ;;
            --*,=) ;;  # "--log=note" is three words
            --*) given+=("$option=$word") option='' ;;
        esac
    done
    word=${COMP_WORDS[COMP_CWORD]#=}
    case $option,$command,$word in
        --log,*) _docproducts_reply -W 'off error note detail trace' ;;
        --color,*) _docproducts_reply -W 'auto always never' ;;
        --format,*) _docproducts_reply -W 'text json sarif' ;;
        --ignore,* | --error,* | --explain,*)
            _docproducts_reply -W "$("${COMP_WORDS[0]}" check --explain 2>/dev/null | cut -d ' ' -f 1)"
            ;;
        --max,*) ;;
        --catalogue,*) compopt -o filenames && _docproducts_reply -f ;;
        --*) compopt -o filenames && _docproducts_reply -d ;;
        ,,-*) _docproducts_reply -W "$options --version" ;;
        ,roots,-*) _docproducts_reply -W "$options --json --path --null" ;;
        ,list,-*) _docproducts_reply -W "$options --json --all --names --null" ;;
        ,find,-*) _docproducts_reply -W "$options --json --path --null" ;;
        ,explain,-*) _docproducts_reply -W "$options --json" ;;
        ,check,-*)
            _docproducts_reply -W "$options --strict --no-files --ignore --error --max --format --json --explain"
            ;;
        ,check,*) compopt -o filenames && _docproducts_reply -f ;;
        ,find,* | ,explain,*) _docproducts_names ;;
        ,,*) _docproducts_reply -W 'roots list find explain check' ;;
    esac
}

complete -F _docproducts docproducts
