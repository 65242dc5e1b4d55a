# Steps that say what they do, how long it took and, when they fail, why. Sourced by run, test and the tools.
#
# A step's own output goes into a log under build/log; a terminal shows its last line while it runs, any other
# output a sign of life every 30 seconds.

fail() {
    echo "${0##*/}: $*" >&2
    exit 1
}

# step TITLE COMMAND...: runs COMMAND quietly. On failure it prints the end of its log and ends the script.
step() {
    try_step "$@" && return
    echo "--- the last lines of $step_log:" >&2
    tail -n 60 "$step_log" >&2
    fail "$1: failed"
}

# try_step TITLE COMMAND...: the same, but leaves a failure to the caller. Sets step_log.
try_step() {
    local title=$1 started=$EPOCHREALTIME id status=0 beats=0 line
    shift
    mkdir -p "$root/build/log"
    step_log=$root/build/log/$(printf '%s' "$title" | tr -c 'A-Za-z0-9\n' '-').log
    [ -t 1 ] || printf '%-52s' "$title"
    # In a group of its own, so that whatever it starts ends with it.
    set -m
    "$@" >"$step_log" 2>&1 </dev/null &
    id=$!
    set +m
    step_id=$id
    while kill -0 "$id" 2>/dev/null; do
        if [ -t 1 ]; then
            line=$(tail -c 400 "$step_log" 2>/dev/null | tr '\r' '\n' | tail -n 1 | tr -cd '[:print:]' | cut -c 1-70)
            printf '\r\033[K%s  %s s  %s' "$title" "$(seconds_since "$started")" "$line"
        elif [ $((++beats % 150)) = 0 ]; then
            printf '\n    still at it, %s s' "$(seconds_since "$started")"
        fi
        sleep 0.2
    done
    wait "$id" || status=$?
    step_id=
    [ -t 1 ] && printf '\r\033[K%-52s' "$title"
    [ "$beats" -ge 150 ] && [ ! -t 1 ] && printf '\n%-52s' ""
    if [ "$status" = 0 ]; then
        printf '%8s s\n' "$(seconds_since "$started")"
    else
        printf '%8s s  FAILED\n' "$(seconds_since "$started")"
    fi
    return "$status"
}

seconds_since() {
    local us=$(((${EPOCHREALTIME/[.,]/} - ${1/[.,]/}) / 1000))
    printf '%d.%d' $((us / 1000)) $((us % 1000 / 100))
}

# A step that is interrupted takes its command along.
stop_step() {
    [ -n "${step_id:-}" ] && kill -- "-$step_id" 2>/dev/null && wait "$step_id" 2>/dev/null
    return 0
}
trap 'stop_step; exit 130' INT
trap 'stop_step; exit 143' TERM HUP
