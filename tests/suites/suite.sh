# What the suites written as scripts have in common; to be sourced. A suite states each of its cases with result, the figures of
# a proof row with state_row, and ends with finish.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
results=${TALVIX_RESULTS:-$root/build/results/by-hand/$(basename "$0")}
mkdir -p "$results"
: >"$results/cases"
failed=0
wine() { "$root/tools/in-wine" "$@"; }
windows() { printf 'Z:%s' "${1//\//\\}"; }
# result "what holds" CODE: 0 when it did. The screen, where there is one, is kept of what did not.
result() {
    if [ "$2" = 0 ]; then
        printf 'ok\t%s\n' "$1" | tee -a "$results/cases"
        return
    fi
    failed=$((failed + 1))
    printf 'failed\t%s\n' "$1" | tee -a "$results/cases"
    [ -z "${DISPLAY:-}" ] || import -window root "$results/failed-$failed.png" 2>/dev/null
}
skipped() { printf 'skipped\t%s\n' "$1" | tee -a "$results/cases"; }
# state_row ROW COUNT "figures": what was reached of a row of the proof.
state_row() { printf '{"row": "%s", "count": %s, "figures": "%s"}\n' "$1" "$2" "$3" >"$results/$1.row"; }
# wait_for SECONDS COMMAND…: until the command succeeds; fails when it never does.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.05
    done
}
finish() {
    echo end >>"$results/cases"
    exit $((failed > 0))
}
# amount BRIEF SHORT LONG SECONDS: how often a row is tried, as TALVIX_AMOUNT says (see tests/proof/proof.h).
amount() {
    case ${TALVIX_AMOUNT:-} in
    brief) echo "$1" ;;
    short) echo "$2" ;;
    long) echo "$3" ;;
    '') echo "$4" ;;
    *) echo "$TALVIX_AMOUNT" ;;
    esac
}
