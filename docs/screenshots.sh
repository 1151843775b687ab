#!/bin/bash
# Takes the pictures of docs/images: drives the program on a virtual screen and grabs its window.
#
#   docs/screenshots.sh BIN_FOLDER POINT_CLOUD.las [OUTPUT_FOLDER]
#
# Needs Xvfb (xvfb-run), xdotool and ImageMagick. The program's settings stay untouched.
set -euo pipefail

bin=$(realpath "$1")
cloud=$(realpath "$2")
output=$(realpath "${3:-$(dirname "$0")/images}")

if [ -z "${QRB_ON_VIRTUAL_SCREEN:-}" ]; then
    exec env QRB_ON_VIRTUAL_SCREEN=1 xvfb-run -a -s "-screen 0 1280x900x24" "$0" "$bin" "$cloud" "$output"
fi

# A folder with a name for the pictures to show; the programs are copied there for the same reason.
work=/tmp/qrbadmin
mkdir "$work"
program=
trap '[ -z "$program" ] || kill "$program"; rm -rf "$work"' EXIT
mkdir -p "$output" "$work/config" "$work/run" "$work/bin"
cp "$bin"/qrbadmin "$bin"/qrbtool "$bin"/qrblib.so "$work/bin"
bin=$work/bin
chmod 700 "$work/run"
export XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/run LC_ALL=C.UTF-8

database=$work/autzen.qrbx
"$bin/qrbtool" import "$cloud" "$database"
"$bin/qrbtool" update "$database" --set tarvo.class=9 --filter 'tarvo.class == 2 && tarvo.xyz[2] < 408'
"$bin/qrbtool" metadata "$database" set tarvo.geo_tag \
    '{"crs": {"epsg": 2992, "name": "Oregon Lambert"}, "pose": [[1, 0, 0, 0]]}'
"$bin/qrbtool" metadata "$database" sign tarvo.geo_tag --key '0f 5a 77'
"$bin/qrbtool" lod "$database" set --mode thinout --size 20
"$bin/qrbtool" changelog "$database" append 'Ground was checked by hand.'
"$bin/qrbadmin" --window=0,0,1000,640 "$database" &
program=$!
window=$(xdotool search --sync --onlyvisible --name '^autzen.*qrbadmin$' | head -1)
xdotool windowfocus "$window"
sleep 1

grab() {
    sleep 1
    import -window "$window" -strip "$output/$1.png"
}

# next_tabs COUNT: goes COUNT tabs to the right.
next_tabs() {
    for _ in $(seq "$1"); do
        xdotool key --window "$window" ctrl+Tab
    done
    sleep 0.5
}

grab database
for tab in transactions changelog metadata point-attributes point-index; do
    next_tabs 1
    grab "$tab"
done
next_tabs 1
xdotool mousemove --window "$window" 300 143 click 1
xdotool type --delay 5 'tarvo.class == 2 && tarvo.xyz[2] > 420'
xdotool key Return
grab point-data
next_tabs 1
xdotool mousemove --window "$window" 210 111 click 1
sleep 0.5
xdotool key Down Down Return
xdotool mousemove --window "$window" 20 110 click 1
sleep 1
xdotool mousemove --window "$window" 400 500 click --repeat 7 --delay 50 5
grab inspection

# dialog TITLE: waits for the dialog and puts it where the pictures expect it.
dialog() {
    shown=$(xdotool search --sync --onlyvisible --name "$1" | head -1)
    xdotool windowfocus "$shown"
    sleep 0.5
}

# grab_dialog NAME WIDTH HEIGHT
grab_dialog() {
    xdotool windowsize "$shown" "$2" "$3"
    sleep 1
    import -window "$shown" -strip "$output/$1.png"
}

# click X Y [TIMES]
click() {
    xdotool mousemove --window "$window" "$1" "$2" click --repeat "${3:-1}" --delay 50 1
    sleep 0.5
}

click 137 73
click 30 107
dialog 'Transaction'
xdotool key Return
sleep 0.5
click 318 73
click 80 229 2
dialog 'Meta Data Item'
grab_dialog edit-metadata 900 560
xdotool key Escape
sleep 0.5
click 421 73
click 30 107
dialog 'Add Point Attribute'
xdotool type --delay 20 'reflectance'
xdotool key Down Return
sleep 0.5
grab_dialog edit-attribute 1100 480
xdotool key Escape
sleep 0.5
click 925 626
dialog 'Confirmation'
xdotool key alt+y
sleep 0.5
xdotool windowfocus "$window" key ctrl+n
dialog 'Database Creation Settings'
xdotool type --delay 5 "$work/scan.sdcx"
grab_dialog create 620 640
xdotool key Escape
sleep 0.5
# Under a name for the picture to show.
cp "$cloud" "$work/flight.las"
xdotool windowfocus "$window" key ctrl+i
dialog 'Import Points'
xdotool type --delay 5 "$work/flight.las"
xdotool key Return
sleep 3
dialog 'Import Points'
grab_dialog import-points 900 640
xdotool key Escape
