# What the tests on a screen have in common; to be sourced. It makes a private place (home, X server, bus,
# music) that goes with the test, and has the words to say what must be seen in it.
#
# Everything waits for a state and looks for it often; nothing waits for a time.

folder=$(mktemp -d)
failures=0
pids=()

# --- the place ------------------------------------------------------------------------------

cleanup() {
    ((${#pids[@]})) && kill -CONT "${pids[@]}" 2>/dev/null
    ((${#pids[@]})) && kill -KILL "${pids[@]}" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$folder"
}
trap cleanup EXIT

export HOME=$folder/home XDG_RUNTIME_DIR=$folder/run QT_QUICK_BACKEND=software NO_AT_BRIDGE=1
export XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share XDG_CACHE_HOME=$HOME/.cache
unset WAYLAND_DISPLAY QT_QPA_PLATFORM DISPLAY DBUS_SESSION_BUS_ADDRESS
mkdir -p "$HOME/music" "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME/tarnwick" "$XDG_DATA_HOME/applications"
chmod 700 "$XDG_RUNTIME_DIR"

# The launcher's entry, by which a hidden window can be brought back.
launcher=$XDG_DATA_HOME/applications/org.tarnwick.Tarnwick.desktop
make_launcher() {
    printf '[Desktop Entry]\nType=Application\nName=Tarnwick\nExec=%s --show\n' "$program" >"$launcher"
}
make_launcher

# in_background COMMAND…: its process number is left in `started`.
in_background() {
    "$@" >/dev/null 2>&1 &
    started=$!
    pids+=("$started")
}

# An X server of its own with a window manager, as large as $1.
make_screen() {
    mkfifo "$folder/display"
    Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp 3>"$folder/display" >/dev/null 2>&1 &
    pids+=($!)
    DISPLAY=:$(head -n 1 "$folder/display")
    export DISPLAY
    in_background openbox
    manager=$started
    until_true 20 has_manager || fail "the window manager"
}
has_manager() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q window; }

make_bus() {
    in_background dbus-daemon --session --nofork --address="unix:path=$folder/bus"
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$folder/bus
    until_true 20 test -S "$folder/bus" || fail "the bus"
}

# An album of three titles and a player that plays it.
play_music() {
    local number=0 title
    for title in Uno Due Tre; do
        number=$((number + 1))
        ffmpeg -loglevel error -f lavfi -i "sine=frequency=$((200 * number)):duration=300" -q:a 9 \
            -metadata title="$title" -metadata artist=Prova -metadata album=Suoni \
            -metadata track="$number/3" "$HOME/music/$number.mp3" </dev/null
    done
    ffmpeg -loglevel error -f lavfi -i color=c=orange:s=600x600 -frames:v 1 "$HOME/music/cover.jpg" </dev/null
    in_background mpv --no-config --ao=null --no-video --no-terminal \
        --script=/usr/lib/mpv-mpris/mpris.so "$HOME"/music/[123].mp3
    mpv=$started
    until_true 20 title_is Uno || fail "the player"
}

# start ARGUMENT…: the program; its process number is left in `tarnwick`.
start() {
    "$program" "$@" >>"$folder/log" 2>&1 &
    tarnwick=$!
    pids+=("$tarnwick")
}

# --- what is said ---------------------------------------------------------------------------

pass() { echo "ok    $1"; }
fail() {
    echo "FAIL  $1"
    failures=$((failures + 1))
    keep_picture "failed-$failures"
}

# until_true SECONDS COMMAND…: whether the command comes true in time.
until_true() {
    local deadline=$((SECONDS + $1))
    shift
    while ! "$@" >/dev/null 2>&1; do
        ((SECONDS > deadline)) && return 1
        sleep 0.02
    done
}

# expect NAME COMMAND…: the command must come true within twenty seconds.
expect() {
    local name=$1
    shift
    if until_true 20 "$@"; then pass "$name"; else fail "$name"; fi
    [[ -z ${KEEP:-} ]] || keep_picture "${name// /-}"
}

# With KEEP=folder there is a picture of every step to look at.
keep_picture() {
    [[ -n ${KEEP:-} ]] || return 0
    mkdir -p "$KEEP"
    pictures=$((${pictures:-0} + 1))
    import -window root "$(printf '%s/%02d-%s.png' "$KEEP" "$pictures" "$1")" 2>/dev/null
}

# finish: what the program has to complain about, and the end.
finish() {
    if grep -vE '^(Errore|❌|✅)' "$folder/log"; then
        fail "the program complains (above)"
    fi
    echo "$SECONDS seconds"
    ((failures == 0))
    exit
}

# --- what is seen ---------------------------------------------------------------------------

# look [AREA]: a picture of what is to be seen there, for the words below; the whole screen without an area.
look() {
    local seen
    seen=$(mktemp "$folder/look-XXXXXX")
    import -window root ${1:+-crop "$1"} +repage "miff:$seen" 2>/dev/null
    echo "$seen"
}

# same PICTURE [AREA]: the same is to be seen. A part that was painted again may be off by the last bits.
same() {
    local now
    now=$(look "${2:-}")
    (($(compare -metric AE -fuzz 3% "miff:$1" "miff:$now" null: 2>&1) < 10))
}
changed() { ! same "$@"; }

# still [AREA]: nothing moves there, as far as a busy machine lets one see.
still() {
    local before
    before=$(look "${1:-}")
    sleep 0.25
    same "$before" "${1:-}"
}

title_is() { [[ $(playerctl -p mpv metadata title) == "$1" ]]; }
status_is() { [[ $(playerctl -p mpv status) == "$1" ]]; }
ended() { ! kill -0 "$1"; }
# Each copy that runs holds a lock on a byte of one file.
copies() { [[ $(grep -c "OFDLCK.*:$(stat -c %i "$XDG_RUNTIME_DIR/tarnwick/copies") " /proc/locks) == "$1" ]]; }
preferences() { "$program" defaults; }
preferences_differ() { [[ $(preferences) != "$1" ]]; }

# stops NAME SIGNAL: the program ends well, and soon, when it gets that signal. It gives itself a second; a busy
# machine gets another.
stops() {
    local from code took limit=2000 # milliseconds
    from=$(date +%s%N)
    kill "-$2" "$tarnwick"
    wait "$tarnwick"
    code=$?
    took=$((($(date +%s%N) - from) / 1000000))
    if [[ $code == 0 ]]; then pass "$1"; else fail "$1: it ends with $code"; fi
    if ((took < limit)); then pass "soon ($took ms)"; else fail "$1: it took $took ms"; fi
}
