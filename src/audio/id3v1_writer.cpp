// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/id3v1_writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "audio/genres.h"
#include "core/numbers.h"
#include "core/paths.h"
#include "files/file_facts.h"
#include "files/journaled_file.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kRecordBytes = sizeof(ID3v1Tag);
constexpr std::string_view kUnreadableEnd = "The file cannot be read.";

template <std::size_t kSize>
void FillField(std::string_view text, std::array<char, kSize>& field) {
  field.fill(' ');
  std::copy_n(text.begin(), std::min(text.size(), kSize), field.begin());
}

/// Whether the file's last bytes are a record; nullopt if they cannot be read.
std::optional<bool> EndsWithRecord(const JournaledFile& file) {
  if (file.Length() < kRecordBytes) return false;
  const std::optional<std::string> record = file.Read(file.Length() - kRecordBytes, kRecordBytes);
  if (!record) return std::nullopt;
  return record->starts_with("TAG");
}

}  // namespace

ID3v1Tag FillID3v1Tag(const ID3v1Texts& texts) {
  ID3v1Tag tag;
  FillField("TAG", tag.Tag);
  FillField(texts.title, tag.Title);
  FillField(texts.artist, tag.Artist);
  FillField(texts.album, tag.Album);
  FillField(texts.year, tag.Year);
  FillField(texts.comment, tag.Comment);
  if (!texts.genre.empty()) tag.Genre = static_cast<std::uint8_t>(GenreNumberFromName(texts.genre));
  if (!texts.track.empty()) {
    const double number = std::clamp(LeadingNumber(texts.track), 0.0, 255.0);
    tag.Comment[28] = '\0';
    tag.Comment[29] = static_cast<char>(RoundHalfEven(number));
  }
  return tag;
}

bool WriteID3v1Tag(TagWriting& writing, const std::string& path, ID3v1Tag tag, bool blank) {
  const auto write = [&]() -> std::string {
    JournaledFile file(writing.journal);
    if (std::string fault = file.Open(path); !fault.empty()) return fault;
    const std::optional<bool> over_old = EndsWithRecord(file);
    if (!over_old) return std::string(kUnreadableEnd);
    FillField(blank ? "" : "TAG", tag.Tag);
    std::array<char, kRecordBytes> record;
    std::memcpy(record.data(), &tag, sizeof tag);
    const std::int64_t offset = file.Length() - (*over_old ? kRecordBytes : 0);
    const FilePiece piece = {.offset = offset, .bytes = {record.data(), record.size()}};
    return file.Rewrite({&piece, 1}, offset + kRecordBytes);
  };
  return RunWriter(writing, write).empty();
}

std::string RemoveID3v1Tag(TagWriting& writing, const std::string& path) {
  std::string result = "OK";
  const auto remove = [&]() -> std::string {
    JournaledFile file(writing.journal);
    std::string fault = file.Open(path);
    if (!fault.empty()) {
      FileBytes unwritable;
      ID3v1Tag record;
      if (!unwritable.Open(path) || ReadID3v1Tag(unwritable, record)) return fault;
      result = kNoID3v1Tag;
      return {};
    }
    const std::optional<bool> has_record = EndsWithRecord(file);
    if (!has_record) return std::string(kUnreadableEnd);
    if (*has_record) return file.Rewrite({}, file.Length() - kRecordBytes);
    result = kNoID3v1Tag;
    return {};
  };
  const bool exists = MyFileExists(path);
  if (RunWriter(writing, remove).empty()) return result;
  return exists ? "error opening file for writing" : "";
}

}  // namespace tunemeadow
