# What the scripts share that use what script/package-windows has made, under Wine on a display of its own. Sourced after
# on-display.sh, not run. QUILLET=SETUP.EXE takes that installer, and the archive beside it.

display_packages="wine wine64 fonts-noto-cjk unzip"
QUILLET=${QUILLET:-$(echo "$PWD"/out/windows/quillet-*-setup.exe)}
[ -f "$QUILLET" ] || die "script/windows --package makes it first."

# A home with nothing in it but a Windows. Its own faces have no Chinese, which an input line would show as nothing.
set_up_home() {
  home=$(mktemp -d)
  export HOME=$home WINEPREFIX=$home/wine WINEDEBUG=-all
  local_data="$home/wine/drive_c/users/$(id -un)/AppData/Local"
  installed=$local_data/Programs/Quillet
  say "A new Windows"
  wineboot -i > "$home/wineboot.log" 2>&1 || die "$(cat "$home/wineboot.log")"
  local face
  for face in 'MS Shell Dlg' 'MS Shell Dlg 2' 'Segoe UI' 'Tahoma'; do
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' /v "$face" /t REG_SZ /d 'Noto Sans CJK TC' /f > /dev/null 2>&1
  done
  printf '%s\n' '<openbox_config><applications><application class="*" type="normal"><maximized>yes</maximized>' \
    '<decor>no</decor></application></applications></openbox_config>' > "$home/openbox.xml"
  start openbox --config-file "$home/openbox.xml"
  until_true 15 xdotool get_desktop || die "The window manager does not start."
}

window_is_open() { xdotool search --onlyvisible --name "$1"; }
has_value() { wine reg query "$1" 2> /dev/null | tr -d '\r' | grep -qF -- "$2"; }

# start_program FILE OPTION...
start_program() {
  start wine "$@"
  until_true 60 window_is_open Quillet || fail "The window does not open"
}
# open_program FILE: ends on the demo's main menu.
open_program() {
  start_program "$1" --demo
  log_in_by_keys
}
close_program() {
  keys alt+F4
  sleep 1
  # What it asks before: log out.
  keys Return
  until_true 20 bash -c '! xdotool search --onlyvisible --name Quillet' || fail "The window does not close"
  until_true 20 bash -c '! pgrep -f "[q]uillet[.]exe" > /dev/null' || fail "The program does not end"
}

# The archive, unpacked into a folder; prints the program's file.
unpack_into() {
  mkdir -p "$1"
  unzip -q "${quillet%-setup.exe}.zip" -d "$1"
  echo "$1"/*/quillet.exe
}
# At which scale windows come up from now on, in percent.
set_scale() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * $1 / 100)) /f > /dev/null 2>&1
  wineserver -k || true
}

# Keys that are made up for letters that no keyboard has do not get through Wine.
paste() {
  printf %s "$1" | xclip -selection clipboard
  keys ctrl+v
  sleep 1
}

