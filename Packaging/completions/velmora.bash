# SPDX-License-Identifier: MIT
# bash completion for velmora

_velmora() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} options=
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "lookup segment pinyin align probe recognize doctor \
settings onboarding toggle diagnostics quit autostart --help --version" -- "$current")
        return
    fi
    case $previous in
        --dictionary | --annotate)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --record)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --offset | --reference | --at) return ;;
    esac
    case $command in
        lookup) options="--offset --json --json-lines --dictionary" ;;
        segment) options="--json --dictionary" ;;
        pinyin | doctor) options="--json" ;;
        align) options="--json --reference" ;;
        probe) options="--at --json --explain --record --dictionary" ;;
        recognize) options="--at --json --explain --annotate --dictionary" ;;
        diagnostics) options="--copy" ;;
        autostart) options="on off status" ;;
    esac
    if [[ $current == -* || $command == autostart ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options --help" -- "$current")
    elif [[ $command == recognize ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _velmora velmora
