// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_plan.h"

#include <vector>

#include "audio/id3v2_frames.h"
#include "audio/id3v2_losses.h"
#include "audio/id3v2_text.h"
#include "audio/id3v2_writer.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kBesideOldTag = 101;
constexpr std::string_view kNewHeaderStart{"ID3\3\0\0", 6};
constexpr std::size_t kLargestNewTag = (std::size_t{1} << 28) - 1;  // four bytes of seven bits

constexpr std::string_view kOldTagTooLong = "The old ID3v2 tag tells more bytes than the file has.";
constexpr std::string_view kPictureRunsOut = "A picture of the old ID3v2 tag runs past its end.";
constexpr std::string_view kNewTagTooLong = "The ID3v2 tag would have more than 256 MB.";

ID3v2Plan Refused(std::string_view error) { return {.error = std::string(error)}; }

bool RunsPastFile(const ID3v2Header& tag, std::int64_t length) noexcept {
  return tag.size + static_cast<std::int64_t>(kID3v2HeaderBytes) > length;
}

/// Where the old file goes on after its tag.
std::int64_t BehindTag(const ID3v2Header& tag) noexcept {
  return tag.size + static_cast<std::int64_t>(kID3v2HeaderBytes);
}

std::size_t TagBytes(const ID3v2Header& tag) noexcept {
  return static_cast<std::size_t>(BehindTag(tag));
}

void PutSizeBytes(std::size_t size, std::string& tag) {
  tag.replace(6, 4, SyncSafeBytes(size).data(), 4);
}

ID3v2Frames BuildFrames(std::string_view head, const std::vector<ID3v2PictureRange>& old_pictures,
                        const std::optional<ID3v2NewPicture>& picture, const Mp3Info& info) {
  ID3v2Frames frames(head.size() + kID3v2Reserve + (picture ? picture->bytes.size() : 0));
  frames.AddTexts(info);
  for (const ID3v2PictureRange& range : old_pictures) {
    const std::string_view frame = head.substr(range.begin, range.end - range.begin);
    range.seven_bits ? frames.AddWithPlainSize(frame) : frames.AddRaw(frame);
  }
  if (picture) frames.AddPicture(picture->bytes, picture->extension);
  frames.AddGenreAndLyrics(info);
  return frames;
}

}  // namespace

std::size_t ID3v2HeadBytes(std::string_view start, std::int64_t length) noexcept {
  const std::optional<ID3v2Header> tag = ParseID3v2Header(start);
  if (!tag || RunsPastFile(*tag, length)) return start.size();
  return static_cast<std::size_t>(tag->size) + kBesideOldTag;
}

ID3v2Plan PlanNewTag(std::string_view head, std::int64_t length,
                     const std::optional<ID3v2NewPicture>& picture, Mp3Info& info) {
  const std::optional<ID3v2Header> old = ParseID3v2Header(head);
  std::vector<ID3v2PictureRange> old_pictures;
  if (old) {
    if (RunsPastFile(*old, length)) return Refused(kOldTagTooLong);
    std::optional<std::vector<ID3v2PictureRange>> found =
        FindPictureFrames(head, 0, TagBytes(*old));
    if (!found) return Refused(kPictureRunsOut);
    old_pictures = std::move(*found);
  }
  ID3v2Plan plan;
  if (old) {
    plan.audio = BehindTag(*old);
    plan.losses = CountID3v2Losses(head.substr(0, TagBytes(*old)), info, old_pictures);
  }
  info.Lyrics.insert(0, 4, '\0');  // empty language and description
  ID3v2Frames frames = BuildFrames(head, old_pictures, picture, info);
  plan.losses.long_texts = frames.LongTexts();
  const bool fits = old && frames.Size() <= static_cast<std::size_t>(old->size);
  const std::size_t size =
      fits ? static_cast<std::size_t>(old->size) : frames.Size() + kID3v2Reserve;
  if (!fits && size > kLargestNewTag) return Refused(kNewTagTooLong);
  plan.tag = std::move(frames).Take(size);
  plan.tag.replace(0, kNewHeaderStart.size(), kNewHeaderStart);
  if (fits) {
    plan.tag.replace(6, 4, head.substr(6, 4));  // as they are: they may tell more than seven bits
  } else {
    PutSizeBytes(size, plan.tag);
  }
  return plan;
}

ID3v2Plan PlanWithoutPictures(std::string_view head, std::int64_t length) {
  const std::optional<ID3v2Header> old = ParseID3v2Header(head);
  if (!old) return Refused(kNoID3v2Picture);
  if (RunsPastFile(*old, length)) return Refused(kOldTagTooLong);
  const std::string_view tag = head.substr(0, TagBytes(*old));
  const std::optional<std::vector<ID3v2PictureRange>> pictures =
      FindPictureFrames(tag, kID3v2HeaderBytes, tag.size());
  if (pictures && pictures->empty()) return Refused(kNoID3v2Picture);
  if (!pictures || pictures->back().end > tag.size()) return Refused(kPictureRunsOut);
  ID3v2Plan plan;
  plan.audio = BehindTag(*old);
  plan.tag.reserve(tag.size());
  std::size_t kept_to = 0;
  for (const ID3v2PictureRange& picture : *pictures) {
    if (picture.begin > kept_to) plan.tag += tag.substr(kept_to, picture.begin - kept_to);
    kept_to = picture.end;
  }
  plan.tag += tag.substr(kept_to);
  const std::size_t size = plan.tag.size() - kID3v2HeaderBytes;
  if (size > kLargestNewTag) return Refused(kNewTagTooLong);
  PutSizeBytes(size, plan.tag);
  return plan;
}

ID3v2Plan PlanWithoutTag(std::string_view head, std::int64_t length) {
  const std::optional<ID3v2Header> old = ParseID3v2Header(head);
  if (!old) return Refused(kNoID3v2Tag);
  if (RunsPastFile(*old, length)) return Refused(kOldTagTooLong);
  ID3v2Plan plan;
  plan.audio = BehindTag(*old);
  return plan;
}

}  // namespace tunemeadow
