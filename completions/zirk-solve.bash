# SPDX-License-Identifier: MIT
# Completion of zirk-solve's options and their arguments for bash; installed as bash-completion/completions/zirk-solve.

_zirk_solve() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words= suffix suffixes=zirk
    # bash takes the sign of equality in --option=value for a word of its own.
    if [[ $current == '=' ]]; then
        current=
    elif [[ $previous == '=' ]] && ((COMP_CWORD > 1)); then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    case $previous in
        -f | --format) words='table csv tsv json' ;;
        -p | --plot) suffixes='svg png pdf' ;;
        # Numbers, and names and expressions of the equations.
        -t | --end | --start | -e | --tolerance | --max-step | -s | --set | -n | --rows | --every | --at | --until | \
            --crossings | -c | --columns | -d | --digits | --plot-x | -j | --threads) return ;;
        *)
            if [[ $current == -* ]]; then
                words='-t --end= --start= -e --tolerance= --max-step= -s --set= -n --rows= --every= --at= --steps --last'
                words+=' --until= --crossings= -c --columns= -f --format= -d --digits= -p --plot= --plot-x= -j --threads='
                words+=' -q --quiet -v --verbose --explain -h --help -V --version'
                COMPREPLY=($(compgen -W "$words" -- "$current"))
                # The value follows the sign of equality.
                if ((${#COMPREPLY[@]} == 1)) && [[ ${COMPREPLY[0]} == *= ]]; then compopt -o nospace 2>/dev/null; fi
                return
            fi
            ;;
    esac
    if [[ $words ]]; then
        COMPREPLY=($(compgen -W "$words" -- "$current"))
        return
    fi
    compopt -o filenames 2>/dev/null
    # Systems of equations, or pictures, first; where there are none, any file.
    suffixes=($suffixes)
    local IFS=$'\n'
    for suffix in "${suffixes[@]}"; do COMPREPLY+=($(compgen -f -X "!*.$suffix" -- "$current")); done
    COMPREPLY+=($(compgen -d -- "$current"))
    ((${#COMPREPLY[@]})) || COMPREPLY=($(compgen -f -- "$current"))
}

complete -F _zirk_solve zirk-solve
