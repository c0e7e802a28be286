// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/chosen_picture.h"

#include <array>
#include <string_view>

#include "audio/file_bytes.h"
#include "core/paths.h"

namespace tunemeadow {
namespace {

using namespace std::string_view_literals;

struct ImageKind {
  std::string_view start;
  std::string_view name;
};

constexpr std::string_view kStartOfJpeg = "\xFF\xD8\xFF"sv;
constexpr std::array kOtherImages = {ImageKind{"\x89PNG"sv, "PNG"}, ImageKind{"GIF8"sv, "GIF"},
                                     ImageKind{"BM"sv, "BMP"},      ImageKind{"RIFF"sv, "WebP"},
                                     ImageKind{"II*\0"sv, "TIFF"},  ImageKind{"MM\0*"sv, "TIFF"}};

constexpr std::size_t kStartBytes = 4;

/// What is wrong with the file, as the end of a sentence that its name begins; empty for nothing.
std::string WhyNoJpeg(const std::string& path) {
  FileBytes file;
  if (!file.Open(path)) return " can't be read!";
  if (file.Length() == 0) return " is empty!";
  const std::string_view start = file.Read(0, kStartBytes);
  if (start.starts_with(kStartOfJpeg)) return {};
  for (const ImageKind& kind : kOtherImages) {
    if (start.starts_with(kind.start)) {
      return " is no JPEG image but a " + std::string(kind.name) + " image!";
    }
  }
  return " is no JPEG image!";
}

}  // namespace

std::optional<MessageBox> ObjectionToPicture(const std::string& path) {
  const std::string why = WhyNoJpeg(path);
  if (why.empty()) return std::nullopt;
  return MessageBox{.text = "\"" + DisplayPath(FileNamePart(path)) + "\"" + why,
                    .title = "Add Image",
                    .icon = Icon::kExclamation};
}

void SetPicture(TagWriting& writing, const std::string& path) {
  writing.PictureFile = path;
  writing.PictureExtension = ExtensionPart(path);
}

}  // namespace tunemeadow
