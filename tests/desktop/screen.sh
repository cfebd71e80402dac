# What the suites with a screen have in common beside desktop.sh; to be sourced. A suite waits for what is to be seen, never
# for a time, and clicks where a control is.
. "$(dirname "${BASH_SOURCE[0]}")/desktop.sh"
main=TalvixWorkbench # the class of the main window
boxes='Talvix Workbench' # the title of its message boxes
patience=15
# await QUESTION WORD…: until it holds; the seconds are its own. Once something did not come the rest is not waited for long.
await() {
    probe "$@" "$patience" && return
    echo "(did not come: $*)"
    patience=1
    return 1
}
begin() { "$root/tools/in-wine" "$bin/TalvixWorkbench.exe" "$@" 2>/dev/null & program=$!; }
# Without a window manager Wine sometimes gives the keys to nobody after a box has gone: a user clicks the window again.
keep_in_front() {
    probe front '#32769' 0 >/dev/null || return 0
    echo "(nobody had the keys)"
    click middle $main msctls_statusbar32 && probe front $main 2
}
key() { keep_in_front; xdotool key "$@"; }
write() { keep_in_front; xdotool type --delay 4 "$1"; }
# click middle NAME CONTROL, click tab NAME TABS INDEX
click() {
    local place
    place=$(probe "$@") && xdotool mousemove $place click 1 && return
    echo "(not found: $*)"
    return 1
}
# open_page NUMBER: by the mouse; until a control of the page is seen.
first_controls=('' 250 361 301 321)
open_page() { click tab $main 180 $(($1 - 1)) && await text $main "${first_controls[$1]}" ''; }
# write_into NAME CONTROL TEXT: into the field that has the focus or gets it now.
write_into() { await focus "$1" "$2" && write "$3" && await text "$1" "$2" "$3"; }
# menu KEY…: the first opens a menu, the others choose in it.
menu() { key "$1" && await shown '#32768' && key "${@:2}"; }
has_documents() { await part $main msctls_statusbar32 0 "$1"; }
# The program ends by itself; false when it had to be ended.
ends() {
    wait_for $patience has_ended $program || { kill -9 $program; return 1; }
    wait $program
}
