// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/lyrics3_writer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "audio/lyrics3_block.h"
#include "files/journaled_file.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kID3v1Bytes = 128;
constexpr std::int64_t kSizeAndEndMark = 15;
constexpr std::size_t kLongestID3v1Text = 30;
constexpr std::string_view kUnreadableFileEnd = "The file cannot be read.";

/// The end of a file, as far as the block and the ID3v1 record go.
struct FileEnd {
  std::string record;                 ///< the last 128 bytes, if they are an ID3v1 record
  std::optional<Lyrics3Block> block;  ///< the one found
};

/// nullopt if the file cannot be read.
std::optional<FileEnd> ReadFileEnd(const JournaledFile& file) {
  const auto tail_bytes = std::min(file.Length(), static_cast<std::int64_t>(kLyrics3TailBytes));
  const std::optional<std::string> tail =
      file.Read(file.Length() - tail_bytes, static_cast<std::size_t>(tail_bytes));
  if (!tail) return std::nullopt;
  FileEnd end;
  if (tail_bytes >= kID3v1Bytes) {
    end.record = tail->substr(static_cast<std::size_t>(tail_bytes - kID3v1Bytes));
  }
  if (!end.record.starts_with("TAG")) end.record.clear();
  end.block = Lyrics3BlockOfTail(*tail, file.Length());
  if (end.block && file.Read(end.block->start, kLyrics3Begin.size()) != kLyrics3Begin) {
    end.block.reset();
  }
  return end;
}

/// Bytes from the block's "LYRICSBEGIN" to its size digits.
std::int64_t SizeOf(const Lyrics3Block& block) noexcept { return block.limit - block.start; }

bool NeedsBlock(const Lyrics3Texts& texts, const Lyrics3& block) noexcept {
  return texts.title.size() > kLongestID3v1Text || texts.artist.size() > kLongestID3v1Text ||
         texts.album.size() > kLongestID3v1Text || !block.Lyrics3Aut.empty() ||
         !block.Lyrics3Img.empty() || !block.Lyrics3Inf.empty() || !block.Lyrics3Lyr.empty() ||
         !block.Lyrics3Moo.empty() || !block.Lyrics3Qua.empty() || !block.Lyrics3Sit.empty();
}

/// Puts `bytes` at `start` and the file's end after them. Empty text, or what failed.
std::string EndFileWith(JournaledFile& file, std::int64_t start, std::string_view bytes) {
  if (start < 0) return "The file is too short for a LYRICS3 block.";
  const FilePiece piece = {.offset = start, .bytes = bytes};
  return file.Rewrite({&piece, bytes.empty() ? 0U : 1U},
                      start + static_cast<std::int64_t>(bytes.size()));
}

std::string WriteBlock(TagWriting& writing, const std::string& path, Lyrics3& block) {
  std::optional<std::string> bytes = BuildLyrics3Block(block);
  if (!bytes) return "A text is too long for a LYRICS3 block.";
  JournaledFile file(writing.journal);
  if (std::string fault = file.Open(path); !fault.empty()) return fault;
  const std::optional<FileEnd> end = ReadFileEnd(file);
  if (!end) return std::string(kUnreadableFileEnd);
  // As before an ID3v1 record, also if there is none.
  std::int64_t start = file.Length() - kID3v1Bytes;
  if (end->block) {
    start -= kSizeAndEndMark + SizeOf(*end->block);
    block.Lyrics3SizeText = end->block->size_text;
  }
  std::string fault = EndFileWith(file, start, *bytes + end->record);
  if (fault.empty() && end->record.empty()) ++writing.losses.sounds;
  return fault;
}

}  // namespace

void WriteTag(TagWriting& writing, const std::string& path, const Lyrics3Texts& texts,
              Lyrics3& block, bool& ok) {
  const auto write = [&]() -> std::string {
    block.Lyrics3Lyr = texts.lyrics;
    block.Lyrics3Moo = texts.mood;
    block.Lyrics3Sit = texts.situation;
    return NeedsBlock(texts, block) ? WriteBlock(writing, path, block) : "";
  };
  ok = RunWriter(writing, write).empty();
}

std::string KillLyrics3Tag(TagWriting& writing, const std::string& path) {
  std::string result = "OK";
  const auto remove = [&]() -> std::string {
    JournaledFile file(writing.journal);
    if (std::string fault = file.Open(path); !fault.empty()) {
      FileBytes unwritable;
      if (!unwritable.Open(path) || FindLyrics3Block(unwritable)) return fault;
      result = kNoLyrics3Tag;
      return {};
    }
    const std::optional<FileEnd> end = ReadFileEnd(file);
    if (!end) return std::string(kUnreadableFileEnd);
    if (!end->block) {
      result = kNoLyrics3Tag;
      return {};
    }
    const auto record_bytes = static_cast<std::int64_t>(end->record.size());
    const std::int64_t start = file.Length() - record_bytes - kSizeAndEndMark - SizeOf(*end->block);
    return EndFileWith(file, start, end->record);
  };
  return RunWriter(writing, remove).empty() ? result : "LYRICS3 Tag can't be removeed!";
}

}  // namespace tunemeadow
