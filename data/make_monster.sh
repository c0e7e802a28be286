#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes monster.mp3, the demonstration track, beside this script: eight seconds for a plucked string,
# a bass and a soft chord, in four bars of A minor, F, G and C. Needs sox, lame, ImageMagick and
# python3. The result is kept in the repository; a build needs none of them.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The same noise in the strings and the dither at each run, so that the same track comes out.
sox() { command sox -R "$@"; }

rate=(-r 44100 -c 1 -b 24)

# note FILE SECONDS WAVE SEMITONES VOLUME: one note, counted from the A above middle C; "." is a rest.
note() {
  if [ "$4" = . ]; then
    sox -n "${rate[@]}" "$1" trim 0 "$2"
  else
    sox -n "${rate[@]}" "$1" synth "$2" "$3" "%$4" vol "$5" fade t 0.005 "$2" 0.04
  fi
}

# voice NAME SECONDS WAVE VOLUME SEMITONES...: notes of one length, one behind the other.
voice() {
  local name=$1 seconds=$2 wave=$3 volume=$4 count=0 files=() step
  shift 4
  for step in "$@"; do
    files+=("$work/$name-$count.wav")
    note "${files[-1]}" "$seconds" "$wave" "$step" "$volume"
    count=$((count + 1))
  done
  sox "${files[@]}" "$work/$name.wav"
}

# An eighth is a quarter of a second. The last note of the melody rings through its bar.
voice line 0.25 pluck 0.7   0 . 3 7 . 5 3 .   8 . 7 5 3 . 0 3   5 . 2 5 7 10 9 7   10 7
note "$work/last.wav" 1.5 pluck 15 0.7
sox "$work/line.wav" "$work/last.wav" "$work/melody.wav"
voice bass 0.5 triangle 0.45   -24 -12 -17 -12   -28 -16 -21 -16   -26 -14 -19 -14   -21 -14 -17 -9
for step in "1 -12 -5 -16" "2 -12 -9 -16" "3 -14 -10 -7" "4 -9 -5 -14"; do
  read -r bar low middle high <<<"$step"
  sox -n "${rate[@]}" "$work/chord-$bar.wav" synth 2 sine "%$low" sine "%$middle" sine "%$high" \
    remix - vol 0.3 tremolo 4 25 fade q 0.3 2 0.3
done
sox "$work"/chord-[1-4].wav "$work/chords.wav"

# The bass in the middle, the string a little to the left, the chords to the right.
sox "$work/melody.wav" -c 2 "$work/melody2.wav" remix 1v1 1v0.6 echo 0.8 0.7 250 0.25
sox "$work/bass.wav" -c 2 "$work/bass2.wav" remix 1 1 lowpass 900
sox "$work/chords.wav" -c 2 "$work/chords2.wav" remix 1v0.6 1v1
sox -m "$work/melody2.wav" "$work/bass2.wav" "$work/chords2.wav" -b 16 "$work/monster.wav" \
  trim 0 8 reverb 25 trim 0 8 gain -n -2 fade t 0.02 8 1.6
lame --quiet -b 128 -m j -q 2 -t --noreplaygain "$work/monster.wav" "$work/monster.mp3"

# The cover: a round green fellow with one and a half eyes.
convert -size 300x300 gradient:'#fff3d6-#ffd28a' \
  -fill '#5b8c3e' -draw 'roundrectangle 60,70 240,320 90,90' -draw 'polygon 85,100 70,35 125,80' \
  -draw 'polygon 215,100 230,35 175,80' -fill white -draw 'circle 118,140 118,108' \
  -draw 'circle 188,146 188,124' -fill '#2b2b2b' -draw 'circle 124,142 124,129' \
  -draw 'circle 184,148 184,140' -fill '#2b2b2b' -draw 'roundrectangle 100,200 200,240 20,20' \
  -fill white -draw 'polygon 115,200 129,200 122,216' -draw 'polygon 165,200 179,200 172,216' \
  -sampling-factor 4:2:0 -strip -quality 82 "$work/cover.jpg"

python3 "$here/tag_monster.py" "$work/monster.mp3" "$work/cover.jpg" "$here/monster.mp3"
ls -l "$here/monster.mp3"
