#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# real_player.sh PROGRAM: runs a test program on a display, a session bus and a home folder of its
# own, with the players that are installed. Exit code 77: there is none.
[ $# -eq 1 ] || { sed -n '3,4s/^# //p' "$0"; exit 2; }
program=$(realpath "$1")
# shellcheck source-path=SCRIPTDIR source=../../scripts/lib.sh
. "$(dirname "$0")/../../scripts/lib.sh"

for tool in dbus-run-session Xvfb; do
  command -v "$tool" >/dev/null && continue
  say "NOT TRIED with a real player: $tool is missing (./test installs it)"
  exit 77
done
players=()
for player in audacious mpv; do
  if command -v "$player" >/dev/null; then
    players+=("$player")
  else
    say "NOT TRIED with $player: it is not installed (./test installs it)"
  fi
done
[ ${#players[@]} -gt 0 ] || exit 77
trap end_display EXIT
trap 'exit 130' INT TERM
start_display
home=$display_folder/home
mkdir -p "$home/.config/mpv"
# No sound card is needed to keep a list.
echo ao=null >"$home/.config/mpv/mpv.conf"
env HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
  XDG_CACHE_HOME="$home/.cache" dbus-run-session -- "$program"
