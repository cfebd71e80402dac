# Short lines for people, full logs for those who look closer. To be sourced from the project's root.
mkdir -p build/logs build/results 2>/dev/null || { echo "Nothing can be written to $PWD/build" >&2; exit 1; }
say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit "${FAILED_WITH:-1}"; }
# claim WHO: this folder's builds and Wines belong to one command at a time; whoever comes second ends. What the command starts
# is started without the claim (9>&-), so that it ends with the command itself.
claim() {
    local other
    exec 9>>build/claimed
    if ! flock -n 9; then
        other=$(tail -n 1 build/claimed)
        fail "$other is at work in this folder; wait for its end"
    fi
    : >build/claimed
    echo "$1 (process $$)" >&9
}
# need_space GIGABYTES
need_space() {
    local free
    free=$(df --output=avail -BM build | tail -n 1 | tr -dc 0-9)
    [ "$free" -ge $(($1 * 1024)) ] || fail "The disk is full: $free MB are free below $PWD/build, $(($1 * 1024)) MB are needed"
}
# explain LOG CODE "what": why something failed, in one line.
explain() {
    tail -n 25 "$1" >&2
    ! grep -aqi 'no space left on device' "$1" || fail "$3 failed: the disk is full; see $1"
    fail "$3 failed (exit code $2); the whole log is in $1"
}
# step "What is being done" LOGNAME command…: quiet unless it fails, then the end of its log and out.
step() {
    local what=$1 log=build/logs/$2.log start=$SECONDS
    shift 2
    printf '%s … ' "$what"
    if "$@" >"$log" 2>&1 9>&-; then
        printf 'done (%d s)\n' $((SECONDS - start))
    else
        local code=$?
        printf 'failed\n'
        explain "$log" $code "$what"
    fi
}
# beside LOGNAME command…: starts something that goes on beside the next steps; await "what" LOGNAME waits for its end.
declare -A beside=() started=()
beside() {
    local name=$1
    shift
    started[$name]=$SECONDS
    "$@" >"build/logs/$name.log" 2>&1 9>&- &
    beside[$name]=$!
}
await() {
    printf '%s … ' "$1"
    wait "${beside[$2]}"
    local code=$?
    unset "beside[$2]"
    [ $code = 0 ] || { printf 'failed\n'; explain "build/logs/$2.log" $code "$1"; }
    printf 'done (%d s, beside the others)\n' $((SECONDS - started[$2]))
}
# processes_of PROCESS: it and all that it has started.
processes_of() {
    local child
    echo "$1"
    for child in $(pgrep -P "$1"); do processes_of "$child"; done
}
# end_beside: nothing that was started is left running.
end_beside() {
    local each all=()
    for each in "${beside[@]}"; do mapfile -t -O "${#all[@]}" all < <(processes_of "$each"); done
    [ ${#all[@]} = 0 ] || kill "${all[@]}" 2>/dev/null # from above, so that nothing more is started
    for _ in $(seq 100); do
        for each in "${all[@]}"; do [ ! -d "/proc/$each" ] || { sleep 0.1; continue 2; }; done
        break
    done
    for each in build/wine/prefix-*; do
        [ ! -d "$each" ] || TALVIX_PREFIX=$PWD/$each tools/in-wine wineserver -k >/dev/null 2>&1 9>&-
    done
    wait 2>/dev/null
}
