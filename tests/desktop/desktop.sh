# What the suites that work with the finished products have in common beside suites/suite.sh; to be sourced with the products'
# folder as the suite's first argument. "folder" is the suite's own place, which stays when something failed.
. "$(dirname "${BASH_SOURCE[0]}")/../suites/suite.sh"
RANDOM=${TALVIX_SEED:-1}
bin=$1
folder=$results/files
rm -rf "$folder" && mkdir "$folder" || exit 1
trap 'exit 143' TERM INT
case $(file -b "$bin/TalvixDMS.dll") in
PE32+*) loader=/usr/lib/wine/wine64 system='C:\windows\system32' ;;
*) loader=wine system='C:\windows\syswow64' ;;
esac
# A program of Windows itself, in the products' bitness.
of_windows() { timeout -k 3 60 "$root/tools/in-wine" "$loader" "$system\\$1" "${@:2}" </dev/null; }
# register [/u] FILE…
register() {
    local way=()
    [ "$1" != /u ] || { way=(/u) && shift; }
    local file good=0
    for file in "$@"; do of_windows regsvr32.exe /s "${way[@]}" "$(windows "$bin/$file")" || good=1; done
    return $good
}
# console WORD…: the workbench on the command line; what it says goes to the files "out" and "err".
console() { timeout -k 3 60 "$root/tools/in-wine" "${program:-$bin}/TalvixWorkbench.com" "$@" >"$folder/out" 2>"$folder/err" </dev/null; }
says() { grep -qaF -- "$1" "$folder/out"; }
# As result, and what was said last goes to the log when it does not hold.
told() {
    [ "$2" = 0 ] || tail -n 12 "$folder"/{out,err}
    result "$1" "$2"
}
has_ended() { ! kill -0 "$1" 2>/dev/null; }
# The program that tells about windows. As long as it runs, Wine runs, too, which makes all starts quicker.
begin_probe() {
    wine wineserver -k # what an earlier suite may have left behind
    mkfifo "$folder/asked" "$folder/answered"
    "$root/tools/in-wine" "$bin/talvix_window_probe.exe" <"$folder/asked" >"$folder/answered" 2>/dev/null &
    prober=$!
    exec {asked}>"$folder/asked" {answered}<"$folder/answered"
    trap end_probe EXIT
}
end_probe() {
    [ -n "${prober:-}" ] || return 0
    has_ended "$prober" || echo quit >&$asked
    exec {asked}>&- {answered}<&-
    wait_for 5 has_ended "$prober"
    prober=
}
# probe QUESTION WORD…: see window_probe.cpp. Exit code 9 when it does not answer.
probe() {
    local IFS=$'\t' line
    printf '%s\n' "$*" >&$asked
    while read -r -t 60 -u $answered line; do
        line=${line%$'\r'}
        case $line in =?) return "${line#=}" ;; esac
        printf '%s\n' "$line"
    done
    return 9
}
all_held() { [ $failed = 0 ]; }
# Instead of suite.sh's finish.
end_suite() {
    ! all_held || rm -rf "$folder"
    finish
}
