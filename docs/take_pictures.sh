#!/usr/bin/env bash
# Called by make_pictures.sh on a screen of its own, with WINEPREFIX, DOCS, SCREEN and SUFFIX set.
set -euo pipefail
cd "$WINEPREFIX/drive_c"
[ ! -e "$WINEPREFIX/dosdevices/z:" ]
wine regedit /S 'C:\looks.reg'
# The resolution counts from the next start of Windows on.
wineserver -k || true
wineserver -w
# What the Cookie Manager shows.
wine 'C:\native_driver.exe' cookies news.example mail.example shop.example shop.example/account weather.example \
  video.example tracker.example adverts.example forum.example bank.example
wine explorer "/desktop=pictures,$SCREEN" 'C:\Program Files\Quillbarrow\Quillbarrow.exe' &
sleep 8

# Everything but the bar of the desktop and its colour.
take() {
  sleep 1
  import -window root "$WINEPREFIX/picture.png"
  convert "$WINEPREFIX/picture.png" -gravity south -chop 0x80 -fuzz 1% -trim +repage -depth 8 -define png:compression-level=9 \
    "$DOCS/$1$SUFFIX.png"
}
next_tab() { xdotool key ctrl+Tab; }

for tab in edge-ie firefox chrome safari; do
  take "tab-$tab"
  next_tab
done
# The Windows tab, some of it ticked, and the run of that.
# From the strip the Tab key goes to the boxes.
xdotool key --delay 300 Tab space Tab space Tab Tab Tab space
take tab-windows
xdotool key Return
sleep 12
take tab-log
for tab in edge-ie firefox chrome safari windows; do next_tab; done
next_tab
for tab in aol auto-kill boss-key shredder; do
  take "tab-$tab"
  next_tab
done
xdotool key ctrl+s
sleep 2
take general-setup
xdotool key Escape
sleep 1
# The default button leads from step to step; the close box leaves without a question.
xdotool key ctrl+a
sleep 3
for step in 1 2 3; do
  take "wizard-$step"
  [ "$step" = 3 ] || xdotool key Return
done
xdotool key alt+F4
sleep 1
# The last entry of the last menu.
xdotool key --delay 300 F10 Right Right Down Up Return
sleep 2
take about
xdotool key Escape
sleep 1
next_tab
# By its letter in the menu; then the first cookies of the left list, and the button beside it.
xdotool key --delay 300 alt+m c
sleep 3
xdotool key --delay 300 Home shift+Down shift+Down shift+Down shift+Down Tab space
take cookie-manager
xdotool key Escape
sleep 1
# The menu of the icon, alone on the desktop.
xdotool key ctrl+x
sleep 1
xdotool mousemove 300 300
wine explorer "/desktop=pictures,$SCREEN" 'C:\native_driver.exe' popup
sleep 2
take popup-menu
xdotool key Escape
