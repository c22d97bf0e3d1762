# A display of its own for programs that run under wine, what can be seen of their windows from
# outside, and a hand at the keys.

begin_display() {
    local i
    Xvfb -displayfd 9 -screen 0 1366x768x24 -nolisten tcp -noreset 9>"$scratch/display" \
        >"$scratch/xvfb" 2>&1 </dev/null 7>&- &
    screen=$!
    for ((i = 0; i < 100; i++)); do
        [ -s "$scratch/display" ] && break
        sleep 0.1
    done
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

end_display() {
    [ -n "${screen:-}" ] || return 0
    kill "$screen" 2>/dev/null
    wait "$screen" 2>/dev/null
    screen=
    unset DISPLAY
}

# Waits till the command "$@" is true, a minute at most.
wait_for() {
    local i
    for ((i = 0; i < 600; i++)); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}

expect() { # WORDS COMMAND...
    local words=$1
    shift
    "$@" && return 0
    echo "not so: $words"
    return 1
}

titles() { xwininfo -root -tree 2>/dev/null | grep -o '"[^"]*"' | sort -u; }
shows_title() { titles | grep -qF "$1"; }
is_over() { ! kill -0 "$1" 2>/dev/null; }

# Presses Enter, as often as a second passes, till the command "$@" is true; a minute and a half at most.
press_enter_till() {
    local i
    for ((i = 0; i < 90; i++)); do
        "$@" && return 0
        xdotool key Return
        sleep 1
    done
    return 1
}
