# SPDX-License-Identifier: MIT
# Completion of zirk's options and their arguments for bash; installed as bash-completion/completions/zirk.

_zirk() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
    COMPREPLY=()
    case $previous in
        -A | -d | -f | -i | -L | -O | -T | -U | -X) words='0 1' ;;
        -D) words='0 1 2 3' ;;
        -g) words='x11 png svg gif fig jpeg pdf' ;;
        # Numbers, names of variables, and the name of files that do not exist yet.
        -3 | -a | -F | -G | -N | -o | -P | -p | -R | -r | -S | -s | -t | -w | -x | -z) return ;;
        *)
            if [[ $current == -* ]]; then
                words='-3 -A -a -D -d -F -f -G -g -h -i -L -N -O -o -P -p -R -r -S -s -T -t -U -v -w -X -x -z'
            else
                local IFS=$'\n'
                compopt -o filenames 2>/dev/null
                # Systems of equations first; where there are none, any file.
                COMPREPLY=($(compgen -f -X '!*.zirk' -- "$current") $(compgen -d -- "$current"))
                ((${#COMPREPLY[@]})) || COMPREPLY=($(compgen -f -- "$current"))
                return
            fi
            ;;
    esac
    COMPREPLY=($(compgen -W "$words" -- "$current"))
}

complete -F _zirk zirk
