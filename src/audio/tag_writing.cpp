// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/tag_writing.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string_view>

#include "audio/id3v2_text.h"
#include "audio/lyrics3.h"
#include "audio/mdl_ID3.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kLongestTagRange = std::int64_t{1} << 20;

/// Adds "1 what one does" or "n what many do" to the clauses of a sentence.
void AddClause(int count, std::string_view one, std::string_view many, std::string& sentence) {
  if (count <= 0) return;
  if (!sentence.empty()) sentence += ", ";
  sentence += std::to_string(count);
  sentence += count == 1 ? one : many;
}

}  // namespace

std::string LossSentence(const TagLosses& losses) {
  std::string sentence;
  AddClause(losses.frames, " frame that has no place in the new tag was dropped",
            " frames that have no place in the new tag were dropped", sentence);
  AddClause(losses.characters, " text holds characters outside Windows-1252",
            " texts hold characters outside Windows-1252", sentence);
  AddClause(losses.long_texts, " long text may be misread by other programs",
            " long texts may be misread by other programs", sentence);
  AddClause(losses.blocks, " LYRICS3 block that could not be read was replaced",
            " LYRICS3 blocks that could not be read were replaced", sentence);
  AddClause(losses.cut_texts, " text was cut to 255 characters",
            " texts were cut to 255 characters", sentence);
  if (!sentence.empty()) sentence += '.';
  return sentence;
}

std::string RunWriter(TagWriting& writing, const std::function<std::string()>& write) {
  try {
    writing.fault = write();
  } catch (const std::bad_alloc&) {
    writing.fault = "There is not enough memory.";
  }
  return writing.fault;
}

std::vector<ByteRange> TagRanges(FileBytes& file) {
  std::vector<ByteRange> ranges;
  const std::int64_t length = file.Length();
  if (const std::optional<ID3v2Header> tag = ParseID3v2Header(file.Read(0, kID3v2HeaderBytes))) {
    const auto header = static_cast<std::int64_t>(kID3v2HeaderBytes);
    ranges.push_back({0, std::min({tag->size + header, length, kLongestTagRange})});
  }
  ID3v1Tag record;
  std::int64_t end = length;
  if (ReadID3v1Tag(file, record)) end -= static_cast<std::int64_t>(sizeof record);
  if (const std::optional<Lyrics3Block> block = FindLyrics3Block(file)) end = block->start;
  if (end < length) ranges.push_back({end, length - end});
  return ranges;
}

}  // namespace tunemeadow
