# SPDX-License-Identifier: GPL-3.0-or-later
# The fuzz targets and what they link, for CMakeLists.txt and replay.cmake.
set(tm_fuzz_targets fuzz_mp3reader fuzz_id3v1 fuzz_id3v2 fuzz_pictures fuzz_lyrics3 fuzz_ogg
    fuzz_id3v2_writer fuzz_lyrics3_writer)
set(tm_fuzz_libraries tm::audio)
