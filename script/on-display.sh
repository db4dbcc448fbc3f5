# What the scripts share that use the real program on a display of its own, logged in to its demo BBS. Sourced after
# lib.sh, not run. A script sets
#   display_packages   the Debian packages that it needs besides those of this file
#   pictures           the folder that its pictures go to
#   session            a command that runs the rest in a session of its own, or nothing
# defines try_everything, and ends with: on_display "$@"
# Nothing is read of, or written to, what the user has set. QUILLET=PROGRAM tries that program instead of building one.

display_packages=""
session=()

# ---- Programs on the display, ended in reverse order

started=()
start() {
  "$@" >> "$home/$(basename "$1").log" 2>&1 &
  started+=($!)
}
stop_all() {
  local i
  for ((i = ${#started[@]} - 1; i >= 0; --i)); do
    kill "${started[i]}" 2> /dev/null || true
    wait "${started[i]}" 2> /dev/null || true
  done
}

# until_true SECONDS COMMAND...
until_true() {
  local tries=$(($1 * 5))
  shift
  until "$@" > /dev/null 2>&1; do
    ((tries-- > 0)) || return 1
    sleep 0.2
  done
}

# ---- Hands and eyes

take() { import -silent -window root "$pictures/$1.png"; }
fail() {
  take failed
  die "$* (see $pictures/failed.png)"
}
keys() { xdotool key --delay 80 "$@"; }
letters() { xdotool type --delay 60 "$1"; }
clipboard() { timeout 5 xclip -o -selection "${1:-clipboard}" | tr -d '\r'; }

# Without a selection the program copies what is in sight.
screen() {
  xdotool key --clearmodifiers ctrl+shift+c
  sleep 0.2
  clipboard
}
screen_shows() { screen | grep -qF -- "$1"; }
expect() { until_true 15 screen_shows "$1" || fail "Not on the screen: $1"; }

# ---- The program

# A home with nothing in it, and a copy of the program, because what the user sets lies beside it.
set_up_home() {
  home=$(mktemp -d)
  export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache XDG_RUNTIME_DIR=$home/run
  mkdir "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR" "$home/program"
  chmod 700 "$XDG_RUNTIME_DIR"
  # The window fills the display: nothing is below its bottom row.
  printf '%s\n' '<openbox_config><applications><application class="*" type="normal"><maximized>yes</maximized>' \
    '<decor>no</decor></application></applications></openbox_config>' > "$home/openbox.xml"
  cp -R "$quillet" "$(dirname "$quillet")/Data" "$(dirname "$quillet")/demo" "$home/program/"
  quillet=$home/program/$(basename "$quillet")
}

# At the demo's first question. Ends on the main menu.
log_in_by_keys() {
  expect 請輸入代號
  letters reader && keys Return
  expect 請輸入您的密碼
  letters quillet && keys Return
  expect 請按任意鍵繼續
  keys Return
  expect 【主功能表】
}

# log_in [OPTION...]: of the program. Ends on the main menu.
log_in() {
  export QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 NO_AT_BRIDGE=1
  if ! xdotool get_desktop > /dev/null 2>&1; then
    start openbox --config-file "$home/openbox.xml"
    until_true 15 xdotool get_desktop || die "The window manager does not start."
  fi
  start "$quillet" --demo "$@"
  until_true 30 xdotool search --onlyvisible --name Quillet ||
    fail "The window does not open: $(cat "$home/$(basename "$quillet").log")"
  log_in_by_keys
}

# ---- Around it

# The script runs itself once more, on the display.
on_display() {
  if [ "${1:-}" = --on-display ]; then
    quillet=$2
    trap 'stop_all; rm -rf "$home"' EXIT
    set_up_home
    try_everything
    exit
  fi
  [ $# -eq 0 ] || die "$(basename "$0") takes no arguments."
  # shellcheck disable=SC2086
  need $run_packages xvfb openbox xdotool xclip imagemagick $display_packages
  local quillet=${QUILLET:-}
  if [ -z "$quillet" ]; then
    # shellcheck disable=SC2086
    need $build_packages
    build release quillet quillet_data
    quillet=$PWD/build/release/bin/quillet
  fi
  rm -rf "$pictures"
  mkdir -p "$pictures"
  say "On a display of its own; the pictures go to ${pictures#"$PWD/"}"
  display_file=$(mktemp)
  trap 'kill "$display_server" 2> /dev/null; wait "$display_server" 2> /dev/null; rm -f "$display_file"' EXIT
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3> "$display_file" > /dev/null 2>&1 &
  display_server=$!
  until_true 15 test -s "$display_file" || die "Xvfb does not start."
  DISPLAY=:$(cat "$display_file") "${session[@]}" "$PWD/script/$(basename "$0")" --on-display "$quillet"
}
