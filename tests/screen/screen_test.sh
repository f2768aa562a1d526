#!/bin/bash
# screen_test.sh HELLO: runs the example with a window on a screen of its own, uses its mouse and
# keyboard as a user would, and expects it to have noticed. 77 where there is no such screen.
command -v xvfb-run >/dev/null && command -v xdotool >/dev/null || exit 77
if [ "$2" != inside ]; then
    exec timeout 60 xvfb-run -a -s "-screen 0 1024x768x24" bash "$0" "$1" inside
fi
fail() { echo "screen_test: $1"; kill "$hello" 2>/dev/null; exit 1; }

out=$(mktemp)
trap 'rm -f "$out"' EXIT
BRCORE8_DISPLAY=x11 "$1" >"$out" &
hello=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Hello$' | head -1)
[ -n "$window" ] || fail "no window with its title"

# Two clicks far apart in time and place, the second where the window is only after it moved.
xdotool mousemove --window "$window" 100 100 click 1
xdotool windowsize --sync "$window" 300 200 windowmove --sync "$window" 650 500
sleep 0.5
xdotool mousemove 900 650 click 1
# Outside of it.
xdotool mousemove 20 20 click 1
sleep 0.3
kill -0 "$hello" || fail "it ended too early"
xdotool key --window 0 alt+F4
for _ in $(seq 50); do kill -0 "$hello" 2>/dev/null || break; sleep 0.1; done
kill -0 "$hello" 2>/dev/null && fail "Alt and F4 did not close it"
grep -qx '2 clicks, then closed' "$out" || fail "it said: $(cat "$out")"
