# Short lines for people, full logs for those who look closer. To be sourced from the project's root.
mkdir -p build/logs
say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit "${FAILED_WITH:-1}"; }
# step "What is being done" LOGNAME command…: quiet unless it fails, then the end of its log and out.
step() {
    local what=$1 log=build/logs/$2.log start=$SECONDS
    shift 2
    printf '%s … ' "$what"
    if "$@" >"$log" 2>&1; then
        printf 'done (%d s)\n' $((SECONDS - start))
    else
        local code=$?
        printf 'failed\n'
        tail -n 25 "$log" >&2
        fail "$what failed (exit code $code); the whole log is in $log"
    fi
}
