// SPDX-License-Identifier: GPL-3.0-or-later
// Makes an image of a picture file's bytes, which come from anywhere: a lying size or a packed bomb
// costs neither the program's time nor its memory.
#pragma once

#include <QImage>
#include <QSize>
#include <string_view>

namespace tunemeadow {

/// The JPEG, PNG, GIF or BMP picture in `bytes`, told by its signature, upright, and scaled down to
/// fit into `room` (pixels) where it is larger. A null image for any other format, for bytes that
/// cannot be decoded and for a picture that would take more than a second or so: beyond 50
/// million pixels for a JPEG (fewer with many scans), 40 for a PNG, 16 for the others.
[[nodiscard]] QImage DecodePicture(std::string_view bytes, const QSize& room);

/// Width and height in pixels of the picture in `bytes`, upright, told by its head alone. Empty for
/// what is none of these four formats.
[[nodiscard]] QSize PictureSize(std::string_view bytes);

}  // namespace tunemeadow
