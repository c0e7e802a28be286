// SPDX-License-Identifier: GPL-3.0-or-later
// The picture file that a person has chosen for a tag.
#pragma once

#include <optional>
#include <string>

#include "audio/tag_writing.h"
#include "run/interaction.h"

namespace tunemeadow {

/// The box that says why the file cannot go into a tag as the JPEG image that a tag's picture is
/// written as: it cannot be read, is empty, or its first bytes are those of something else,
/// whatever its name says. nullopt for a JPEG image.
[[nodiscard]] std::optional<MessageBox> ObjectionToPicture(const std::string& path);

/// Sets the picture that TagPort::WritePicture puts into the tags.
void SetPicture(TagWriting& writing, const std::string& path);

}  // namespace tunemeadow
