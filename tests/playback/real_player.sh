#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# real_player.sh PROGRAM: runs a test program on a display, a session bus and a home folder of its
# own, if there is a player to be tried. Exit code 77: there is none.
[ $# -eq 1 ] || { sed -n '3,4s/^# //p' "$0"; exit 2; }
program=$(realpath "$1")
# shellcheck source-path=SCRIPTDIR source=../../scripts/lib.sh
. "$(dirname "$0")/../../scripts/lib.sh"

for tool in audacious audtool dbus-run-session Xvfb; do
  command -v "$tool" >/dev/null && continue
  say "NOT TRIED with a real player: $tool is missing (./test installs it)"
  exit 77
done
trap end_display EXIT
trap 'exit 130' INT TERM
start_display
mkdir "$display_folder/home"
env HOME="$display_folder/home" XDG_CONFIG_HOME="$display_folder/home/.config" \
  XDG_DATA_HOME="$display_folder/home/.local/share" XDG_CACHE_HOME="$display_folder/home/.cache" \
  dbus-run-session -- "$program"
