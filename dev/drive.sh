#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# dev/drive.sh SCRIPT [ARG...]: runs a Python script that uses dev/drive.py on a virtual display, a
# session bus and a home folder of its own. TM_SCREEN sets the size of the display.
[ $# -gt 0 ] || { sed -n '3,4s/^# //p' "$0"; exit 2; }
script=$(realpath "$1")
shift
# shellcheck source-path=SCRIPTDIR source=../scripts/lib.sh
. "$(dirname "$0")/../scripts/lib.sh"

for tool in Xvfb openbox xdotool import dbus-run-session /usr/libexec/at-spi-bus-launcher; do
  command -v "$tool" >/dev/null || fail "$tool is missing: ./test installs it"
done
trap end_display EXIT
trap 'exit 130' INT TERM
start_display
mkdir "$display_folder/home"
# Debian's python3 is the one that python3-gi belongs to, whatever else stands in PATH.
env HOME="$display_folder/home" XDG_CONFIG_HOME="$display_folder/home/.config" XDG_DATA_HOME="$display_folder/home/.local/share" \
  PYTHONPATH="$PWD/dev" PYTHONDONTWRITEBYTECODE=1 dbus-run-session -- /usr/bin/python3 "$script" "$@"
