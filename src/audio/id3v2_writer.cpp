// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v2_writer.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/id3v2_plan.h"
#include "audio/id3v2_text.h"
#include "core/paths.h"
#include "files/durable_file.h"
#include "files/file_facts.h"
#include "files/journaled_file.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kWritten = "OK";
constexpr std::string_view kUnreadable = "The file cannot be read.";

constexpr std::int64_t kFirstTagRead = 4096;  // holds most tags that have no picture
constexpr std::size_t kLargestPicture = std::size_t{1} << 28;

/// What the plans are to be handed; nullopt if the file cannot be read.
std::optional<std::string> ReadHead(const JournaledFile& file) {
  const std::int64_t length = file.Length();
  const auto read = [&](std::size_t count) {
    const auto wanted = static_cast<std::int64_t>(count);
    return file.Read(0, static_cast<std::size_t>(std::min(wanted, length)));
  };
  std::optional<std::string> head = read(kFirstTagRead);
  if (!head) return std::nullopt;
  if (head->size() < kID3v2HeaderBytes) head->resize(kID3v2HeaderBytes, '\0');
  const std::size_t wanted = ID3v2HeadBytes(*head, length);
  if (wanted > head->size() && static_cast<std::int64_t>(head->size()) < length) {
    head = read(wanted);
    if (!head) return std::nullopt;
  }
  head->resize(wanted, '\0');
  return head;
}

/// The picture to be added; nothing if none is wanted or there is no such file. `error` tells
/// why one that is there cannot be taken.
std::optional<std::string> ReadPictureFile(const TagWriting& writing, bool wanted,
                                           std::string& error) {
  if (!wanted || !MyFileExists(writing.PictureFile) || IsDirectory(writing.PictureFile)) {
    return std::nullopt;
  }
  std::optional<std::string> bytes = ReadWholeFile(writing.PictureFile, kLargestPicture);
  if (!bytes) error = "The picture file cannot be read, or has more than 256 MB.";
  return bytes;
}

/// Writes what was planned. `yield`, where there is one, is called before the audio moves. Empty
/// text, or what failed.
std::string CarryOut(const ID3v2Plan& plan, JournaledFile& file,
                     const std::function<void()>& yield) {
  const FilePiece tag = {.offset = 0, .bytes = plan.tag};
  if (plan.StaysInPlace()) return file.Rewrite({&tag, 1}, file.Length());
  if (yield) yield();
  const FileMove audio = {.from = plan.audio,
                          .to = static_cast<std::int64_t>(plan.tag.size()),
                          .length = file.Length() - plan.audio};
  return file.Rewrite({&tag, 1}, audio.to + audio.length, audio);
}

using RemovalPlan = ID3v2Plan (*)(std::string_view head, std::int64_t length);

/// Whether a text says that there was no tag to take away.
bool IsNothingToRemove(std::string_view text) {
  return text == kNoID3v2Tag || text == kNoID3v2Picture;
}

/// The answer for a file that may not be written: one without such a tag is not worth a complaint.
std::string AnswerForUnwritable(const std::string& path, RemovalPlan plan_removal,
                                const std::string& complaint) {
  FileBytes file;
  if (!file.Open(path)) return complaint;
  const std::size_t wanted = ID3v2HeadBytes(file.ReadPadded(0, kID3v2HeaderBytes), file.Length());
  const ID3v2Plan plan = plan_removal(file.ReadPadded(0, wanted), file.Length());
  return plan.error.empty() ? complaint : plan.error;
}

std::string RemoveFromTag(TagWriting& writing, const std::string& path, RemovalPlan plan_removal) {
  const auto remove = [&]() -> std::string {
    JournaledFile file(writing.journal);
    std::string fault = file.Open(path);
    if (!fault.empty()) return AnswerForUnwritable(path, plan_removal, fault);
    const std::optional<std::string> head = ReadHead(file);
    if (!head) return std::string(kUnreadable);
    const ID3v2Plan plan = plan_removal(*head, file.Length());
    return plan.error.empty() ? CarryOut(plan, file, nullptr) : plan.error;
  };
  const std::string fault = RunWriter(writing, remove);
  if (IsNothingToRemove(fault)) writing.fault.clear();
  return fault.empty() ? std::string(kWritten) : fault;
}

/// Empty text, or what failed.
std::string WriteNewTag(TagWriting& writing, const std::string& path, bool withPicture,
                        Mp3Info& info) {
  JournaledFile file(writing.journal);
  std::string error = file.Open(path);
  if (!error.empty() || file.Length() == 0) return error;
  const std::optional<std::string> head = ReadHead(file);
  if (!head) return std::string(kUnreadable);
  const std::optional<std::string> picture_bytes = ReadPictureFile(writing, withPicture, error);
  if (!error.empty()) return error;
  std::optional<ID3v2NewPicture> picture;
  if (picture_bytes) picture = {*picture_bytes, writing.PictureExtension};
  const ID3v2Plan plan = PlanNewTag(*head, file.Length(), picture, info);
  if (!plan.error.empty()) return plan.error;
  error = CarryOut(plan, file, writing.yield);
  if (error.empty()) writing.losses += plan.losses;
  return error;
}

}  // namespace

std::string WriteID3v2Tag(TagWriting& writing, const std::string& path, bool withPicture,
                          Mp3Info& info) {
  const std::string fault =
      RunWriter(writing, [&] { return WriteNewTag(writing, path, withPicture, info); });
  return fault.empty() ? std::string(kWritten) : fault;
}

std::string RemoveID3v2Tag(TagWriting& writing, const std::string& path) {
  return RemoveFromTag(writing, path, PlanWithoutTag);
}

std::string RemoveID3v2Picture(TagWriting& writing, const std::string& path) {
  return RemoveFromTag(writing, path, PlanWithoutPictures);
}

}  // namespace tunemeadow
