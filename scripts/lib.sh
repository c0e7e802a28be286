# SPDX-License-Identifier: GPL-3.0-or-later
# What ./run, ./test and .ci/run share: packages, build, virtual display. Sourced, never run.
# shellcheck shell=bash disable=SC2034

set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
export LC_ALL=C.UTF-8 HOME="${HOME:-/tmp}"

say() { printf '%s\n' "$*"; }
fail() { printf '\n%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# What each command needs, by Debian package name.
packages_to_build=(g++ cmake ninja-build pkg-config ccache python3 sqlite3 sox libsox-fmt-mp3 lame
                   qt6-base-dev qt6-svg-dev libsqlite3-dev zlib1g-dev libglib2.0-dev libicu-dev)
packages_to_show=(fonts-noto-core libqt6svg6 qt6-qpa-plugins xdg-utils)
packages_without_display=(xvfb xauth openbox xdotool imagemagick)
packages_to_test=(libgtest-dev libgmock-dev libbenchmark-dev vorbis-tools procps
                  dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi audacious mpv)
packages_to_check=(clang-14 libclang-rt-14-dev clang-format-14 clang-tidy-14 git
                   desktop-file-utils appstream shellcheck)

# missing_packages NAME...: those of the packages that are not installed, one a line.
missing_packages() {
  local installed
  installed=$(dpkg-query -W -f '${db:Status-Abbrev}${Package}\n' "$@" 2>/dev/null | sed -n 's/^ii *//p')
  comm -23 <(printf '%s\n' "$@" | sort -u) <(sort -u <<<"$installed")
}

# install_packages NAME...: installs what is missing and says so; silent when nothing is.
install_packages() {
  [ -z "${TM_NO_INSTALL:-}" ] || return 0
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    fail "this machine has no apt-get. The program builds on Debian 12; elsewhere install what these packages hold by your own means and set TM_NO_INSTALL=1: $*"
  fi
  local missing system
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  system=$(. /etc/os-release 2>/dev/null && printf '%s %s' "${ID:-unknown}" "${VERSION_ID:-}")
  [ "$system" = "debian 12" ] || fail \
    "this is \"$system\", and packages are installed by themselves on Debian 12 only. Missing: ${missing[*]}"

  local root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || fail \
      "packages are missing and there is no sudo. As root, run: apt-get install --no-install-recommends ${missing[*]}"
    if [ ! -t 0 ] && ! sudo -n true 2>/dev/null; then
      fail "packages are missing and sudo asks for a password. Run once: sudo apt-get install --no-install-recommends ${missing[*]}"
    fi
    root=(sudo)
  fi
  mkdir -p build
  local log=build/apt.log
  local apt=("${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -qq -o DPkg::Lock::Timeout=300)
  say "Installing ${#missing[@]} package(s), which can take some minutes: ${missing[*]}"
  if ! { "${apt[@]}" update && "${apt[@]}" install --no-install-recommends "${missing[@]}"; } \
       >"$log" 2>&1 </dev/null; then
    tail -n 15 "$log" >&2
    fail "the packages could not be installed (no network, or no package mirror that knows them?). All that apt-get said stands in $log"
  fi
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -eq 0 ] || fail "still missing after the installation: ${missing[*]} (see $log)"
}

# build_preset PRESET [TARGET...]: configures when needed and builds; silent when nothing changed.
build_preset() {
  local preset=$1 folder=build/$1 log=build/$1-configure.log
  shift
  mkdir -p build
  if [ ! -f "$folder/build.ninja" ] || [ CMakePresets.json -nt "$folder/build.ninja" ]; then
    say "Configuring $folder"
    if ! cmake --preset "$preset" >"$log" 2>&1; then
      rm -f "$folder/build.ninja"
      tail -n 25 "$log" >&2
      fail "configuring failed; the whole log is $log"
    fi
    touch "$folder/build.ninja"
  fi
  local quiet=()
  [ -t 1 ] || quiet=(--quiet)
  # A dry run answers at once whether there is anything to say; what is looked at in each build is not.
  if ninja -C "$folder" -n "$@" 2>/dev/null | grep '^\[' | grep -qv '\] Providing'; then
    say "Building $folder"
  else
    quiet=(--quiet)
  fi
  ninja -C "$folder" "${quiet[@]}" "$@" || fail "the build of $folder failed; the first error stands above"
}

# start_display: a virtual display with a window manager; sets DISPLAY. end_display takes it away.
start_display() {
  display_folder=$(mktemp -d)
  export XDG_RUNTIME_DIR=$display_folder QT_QPA_PLATFORM=xcb
  unset WAYLAND_DISPLAY
  Xvfb -displayfd 3 -screen 0 "${TM_SCREEN:-1280x900x24}" -nolisten tcp \
    3>"$display_folder/number" 2>"$display_folder/log" &
  display_pid=$!
  local tries
  for ((tries = 0; tries < 100; ++tries)); do
    [ -s "$display_folder/number" ] && break
    kill -0 "$display_pid" 2>/dev/null || break
    sleep 0.1
  done
  [ -s "$display_folder/number" ] || fail "Xvfb did not start: $(tail -n 3 "$display_folder/log")"
  DISPLAY=:$(<"$display_folder/number")
  export DISPLAY
  manager_pid=''
  if command -v openbox >/dev/null; then
    openbox >/dev/null 2>&1 &
    manager_pid=$!
  fi
}

end_display() {
  local pid
  for pid in "${manager_pid:-}" "${display_pid:-}"; do
    [ -n "$pid" ] && kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null
  done
  [ -n "${display_folder:-}" ] && rm -rf "$display_folder"
  display_pid='' manager_pid='' display_folder=''
}
