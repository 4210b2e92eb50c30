#!/usr/bin/env bash
# Plays a small application in a window of a display that nobody sees, with a real mouse and real keys, and compares what
# the display shows with what a run without one shows: window_test.sh FOLDER-WITH-PROGRAMS
set -euo pipefail
programs=$(cd "$1" && pwd)
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work=$(mktemp -d)
cleanup() {
    jobs -p | xargs -r kill 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

app=$work/app
mkdir -p "$app/Dane/S"
cat >"$app/Dane/application.def" <<'DEF'
OBJECT=APP
APP:TYPE=APPLICATION
APP:EPISODES=EP
APP:STARTWITH=EP
OBJECT=EP
EP:TYPE=EPISODE
EP:SCENES=S
EP:STARTWITH=S
OBJECT=S
S:TYPE=SCENE
S:PATH=S
DEF
cat >"$app/Dane/S/S.cnv" <<'CNV'
OBJECT=LOG
LOG:TYPE=STRING
LOG:TOINI=TRUE
OBJECT=M
M:TYPE=MOUSE
M:ONCLICK^LEFT={LOG^ADD("left");LOG^ADD(M^GETPOSX());LOG^ADD("_");LOG^ADD(M^GETPOSY());}
M:ONCLICK^RIGHT={LOG^ADD("right");}
OBJECT=K
K:TYPE=KEYBOARD
K:ONCHAR={LOG^ADD(K^GETLATESTKEY());}
K:ONKEYDOWN^LEFT={LOG^ADD("arrow");}
K:ONKEYDOWN^F10={APP^EXIT();}
CNV
"$programs/prosc" img "$top/docs/demo.png" "$app/Dane/S/bkg.img" --bpp 16

fail() {
    echo "window_test: $*" >&2
    exit 1
}

# The whole of a colour display, so that what the window shows is seen and not what it was asked to show.
exec {numbers}<> <(:)
Xvfb -displayfd "$numbers" -screen 0 1024x768x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
display=$!
read -r -t 30 number <&"$numbers" || fail "Xvfb doesn't start: $(cat "$work/xvfb.log")"
export DISPLAY=:$number SDL_VIDEODRIVER=x11

"$programs/proscenium" "$app" -window --scale 1 --frames 6000 >"$work/out" 2>"$work/err" &
player=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name Proscenium | head -n 1) || fail "no window: $(cat "$work/err")"
xdotool mousemove --sync --window "$window" 123 45 click 1 click 3
xdotool key q key Left
# Until all of it has come through; a few seconds at most.
for _ in $(seq 50); do
    if grep -q arrow "$app/application.ini" 2>/dev/null; then break; fi
    sleep 0.1
done
import -window "$window" "$work/window.png"
# Taking the picture took the keys away.
xdotool windowfocus "$window"
sleep 0.2
xdotool key F10
wait "$player" || fail "the host ended with $?: $(cat "$work/err")"

wanted='LOG=left123_45rightqarrow'
grep -qF "$wanted" "$app/application.ini" || fail "wanted $wanted, got $(cat "$app/application.ini")"
"$programs/proscenium" "$app" --headless --frames 3 --shot "last:$work/headless.png" >/dev/null
different=$(compare -metric AE "$work/window.png" "$work/headless.png" null: 2>&1 || true)
[ "$different" = 0 ] || fail "$different pixels of the window differ from those of a run without one"
# The demo's puzzle, which stands still once somebody has clicked: two lamps, and what has become of all five.
demo=$work/demo
cp -R "$programs/demo-tree" "$demo"
sed -i 's/^EVENING:STARTWITH=.*/EVENING:STARTWITH=LAMPS/' "$demo/Dane/application.def"
cp -R "$demo" "$work/unseen"
"$programs/proscenium" "$demo" -window --scale 1 --frames 6000 >"$work/out" 2>"$work/err" &
player=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name Proscenium | head -n 1) || fail "no window: $(cat "$work/err")"
for x in 135 525; do xdotool mousemove --sync --window "$window" $x 370 click 1; done
for _ in $(seq 50); do
    if grep -q SWITCHES=2 "$demo/application.ini" 2>/dev/null; then break; fi
    sleep 0.1
done
sleep 1.5  # until the lamps have brightened up
import -window "$window" "$work/window.png"
kill "$player"
wait "$player" || true
printf '9 move 135 370\n10 ldown 135 370\n19 move 525 370\n20 ldown 525 370\n' >"$work/clicks"
"$programs/proscenium" "$work/unseen" --headless --frames 200 --input "$work/clicks" --shot "last:$work/headless.png" >/dev/null
different=$(compare -metric AE "$work/window.png" "$work/headless.png" null: 2>&1 || true)
[ "$different" = 0 ] || fail "$different pixels of the demo in a window differ from those of a run without one"

# A display that goes away ends the run in order: what the application keeps is written.
rm -f "$app/application.ini"
"$programs/proscenium" "$app" -window --frames 6000 >"$work/out" 2>"$work/err" &
player=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name Proscenium | head -n 1) || fail "no window: $(cat "$work/err")"
xdotool windowsize --sync "$window" 1 1
kill -KILL "$display"
status=0
wait "$player" || status=$?
[ $status -eq 1 ] || fail "without its display the host ended with $status: $(cat "$work/err")"
grep -q LOG "$app/application.ini" || fail "what the application keeps was lost with the display"

echo "window_test: the window shows, hears and ends as it should"
