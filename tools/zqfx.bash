# shellcheck shell=bash
# Completion of zqfx for bash: source it, or put it into
# /usr/share/bash-completion/completions/zqfx.

# The words for the value of parameter $3 of effect $2; empty unless there are a few.
_zqfx_values() {
    "$1" run "$2" --help 2>/dev/null | sed -n "s/^  $3=\([a-z|-]*\)$/\1/p" | tr '|' ' '
}

_zqfx() {
    local zqfx=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} line=${COMP_LINE:0:COMP_POINT}
    local -a words
    # Split by blanks alone: bash cuts at = as well.
    read -ra words <<<"$line"
    [[ $line == *[[:blank:]] ]] && words+=("")
    local count=${#words[@]} current=${words[${#words[@]} - 1]}
    COMPREPLY=()

    if ((count == 2)); then
        mapfile -t COMPREPLY < <(compgen -W "list run --help --version" -- "$current")
        return
    fi
    [[ ${words[1]} == run ]] || return

    case ${words[count - 2]} in
        --mask | --mask-out)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            compopt -o filenames
            return
            ;;
        --record) return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--record --mask --mask-out --help" -- "$current")
        return
    fi
    if ((count == 3)); then
        mapfile -t COMPREPLY < <(compgen -W "$("$zqfx" list 2>/dev/null | awk '{ print $2 }')" -- "$current")
        return
    fi
    if ((count <= 5)); then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        compopt -o filenames
        return
    fi
    if [[ $current != *=* ]]; then
        local names
        names=$("$zqfx" run "${words[2]}" --help 2>/dev/null | sed -n 's/^  \([A-Za-z]*=\).*/\1/p')
        mapfile -t COMPREPLY < <(compgen -W "$names" -- "$current")
        compopt -o nospace
        return
    fi
    local name=${current%%=*} value=${current#*=} values
    values=$(_zqfx_values "$zqfx" "${words[2]}" "$name")
    if [[ -n $values ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$value")
    elif [[ $name == curve || $name == table || $name == filter ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$value")
        compopt -o filenames
    fi
    # Where = is no break between words, bash replaces the name as well.
    if [[ $word == "$current" ]]; then
        COMPREPLY=("${COMPREPLY[@]/#/$name=}")
    fi
}

complete -F _zqfx zqfx
