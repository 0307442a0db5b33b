# Completion for vantrel and vantrelctl, from what their own help says; files where it says nothing.
_vantrel() {
    local program=$1 current=$2 previous=$3 command='' word words
    COMPREPLY=()
    case $previous in
    --speed) words='9600 19200' ;;
    --for) words='10m 1h 8h' ;;
    --port) words='simulated 1 2 3 4 rfc2217:// socket://' ;;
    --listen) words='rfc2217://127.0.0.1:4001 socket://127.0.0.1:4001' ;;
    --program-folder)
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --trace | --report | --output | --link | --file | --add) return ;;
    esac
    if [[ -n ${words-} ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    if [[ ${program##*/} == vantrelctl ]]; then
        for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
            [[ $word == -* ]] || { command=$word && break; }
        done
        if [[ -z $command && $current != -* ]]; then
            words=$("$program" --help 2>/dev/null | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
            mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
            return
        fi
    fi
    [[ $current == -* ]] || return
    words=$("$program" ${command:+"$command"} --help 2>/dev/null | sed -n 's/^  \(-[-a-z,]*\).*/\1/p' | tr , ' ')
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o bashdefault -o default -F _vantrel vantrel vantrelctl
