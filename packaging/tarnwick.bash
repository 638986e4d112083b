# Completion for tarnwick in bash.

_tarnwick() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='status do script defaults palette record snapshot'
    local command='' word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ " $commands " == *" $word "* ]] && { command=$word; break; }
    done

    case $previous in
        --source) mapfile -t COMPREPLY < <(compgen -W 'auto mpris demo' -- "$current"); return ;;
        --player)
            mapfile -t COMPREPLY < <(compgen -W "$(playerctl --list-all 2>/dev/null)" -- "$current")
            return ;;
        --view)
            mapfile -t COMPREPLY < <(compgen -W 'display bar picker preferences splash assets' -- "$current")
            return ;;
        --scene)
            mapfile -t COMPREPLY < <(compgen -W 'playing paused stopped two-discs cassette no-cover
                long-texts no-playlists many-playlists' -- "$current")
            return ;;
        --limit | --size | --after | --set) return ;;
    esac

    local words='--source --player --help --version'
    case $command in
        '') words+=" $commands --fullscreen --show" ;;
        do) words+=' play-pause play pause stop next previous seek shuffle volume title playlist playlists --json' ;;
        script) words+=' --json --limit' ;;
        status) words+=' --json --follow' ;;
        palette) words+=' --json' ;;
        defaults)
            words+=" --json $(tarnwick defaults 2>/dev/null | cut -d: -f1)" ;;
        snapshot) words+=' --view --scene --size --fullscreen --set --flipped --dark --after' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    case $command in
        script | palette | record | snapshot)
            compopt -o filenames 2>/dev/null
            mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current") ;;
    esac
}
complete -F _tarnwick tarnwick
