// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/tag_writing.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string_view>

#include "audio/id3v2_text.h"
#include "audio/lyrics3.h"
#include "audio/mdl_ID3.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kLongestTagRange = std::int64_t{1} << 20;

/// A loss and the words for one and for many of its kind, in the order in which they are told.
struct LossClause {
  int TagLosses::*count;
  std::string_view one, many;
};
constexpr std::array<LossClause, 9> kLossClauses = {{
    {&TagLosses::frames, " frame that has no place in the new tag was dropped",
     " frames that have no place in the new tag were dropped"},
    {&TagLosses::texts, " text of the old tag could not be kept",
     " texts of the old tag could not be kept"},
    {&TagLosses::values, " further value of a text was dropped",
     " further values of texts were dropped"},
    {&TagLosses::pictures, " picture could not be kept whole", " pictures could not be kept whole"},
    {&TagLosses::characters, " text holds characters outside Windows-1252",
     " texts hold characters outside Windows-1252"},
    {&TagLosses::long_texts, " long text may be misread by other programs",
     " long texts may be misread by other programs"},
    {&TagLosses::blocks, " LYRICS3 block could be read and kept only in part",
     " LYRICS3 blocks could be read and kept only in part"},
    {&TagLosses::sounds, " LYRICS3 block was written over 128 bytes of sound",
     " LYRICS3 blocks were written over 128 bytes of sound each"},
    {&TagLosses::cut_texts, " text was cut to 255 characters", " texts were cut to 255 characters"},
}};
static_assert(sizeof(TagLosses) == kLossClauses.size() * sizeof(int));

/// Adds "1 what one does" or "n what many do" to the clauses of a sentence.
void AddClause(int count, std::string_view one, std::string_view many, std::string& sentence) {
  if (count <= 0) return;
  if (!sentence.empty()) sentence += ", ";
  sentence += std::to_string(count);
  sentence += count == 1 ? one : many;
}

}  // namespace

TagLosses& TagLosses::operator+=(const TagLosses& more) noexcept {
  for (const LossClause& clause : kLossClauses) this->*clause.count += more.*clause.count;
  return *this;
}

std::string LossSentence(const TagLosses& losses) {
  std::string sentence;
  for (const LossClause& clause : kLossClauses) {
    AddClause(losses.*clause.count, clause.one, clause.many, sentence);
  }
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
