// SPDX-License-Identifier: GPL-3.0-or-later
// The ID3v2 writer and removers on old tags of any kind: the audio after the tag stays, the new
// header tells where it begins, the reader finds what was written, a second save changes no length,
// and the file is what was planned.
#include "audio/id3v2_plan.h"
#include "audio/id3v2_reader.h"
#include "audio/id3v2_writer.h"
#include "fuzz/written_file.h"

namespace tunemeadow::fuzz {
namespace {

std::string HeadOf(std::string_view file) {
  std::string head(file.substr(0, 64));
  if (head.size() < kID3v2HeaderBytes) head.resize(kID3v2HeaderBytes, '\0');
  const std::size_t wanted = ID3v2HeadBytes(head, static_cast<std::int64_t>(file.size()));
  if (wanted > head.size()) head = file.substr(0, wanted);
  head.resize(wanted, '\0');
  return head;
}

ID3v2Plan PlanRemoval(ID3v2Plan (*plan)(std::string_view, std::int64_t), std::string_view file) {
  return plan(HeadOf(file), static_cast<std::int64_t>(file.size()));
}

std::string Applied(const ID3v2Plan& plan, std::string_view old) {
  return plan.tag + std::string(old.substr(static_cast<std::size_t>(plan.audio)));
}

/// Without capitals, so that no frame name stands in it, and without byte order marks.
std::string Harmless(std::string_view text) {
  std::string harmless(text);
  for (char& letter : harmless) letter = static_cast<char>((letter & 0x1F) | 0x60);
  return harmless;
}

/// Eleven short values that must be read back, and three of any bytes.
Mp3Info TakeInfo(std::string_view& input) {
  Mp3Info info;
  for (TagText Mp3Info::*field :
       {&Mp3Info::Artist, &Mp3Info::Title, &Mp3Info::Album, &Mp3Info::Url, &Mp3Info::Year,
        &Mp3Info::Track, &Mp3Info::Bpm, &Mp3Info::Original, &Mp3Info::Composer, &Mp3Info::EncodedBy,
        &Mp3Info::Copyright}) {
    info.*field = Harmless(TakeInput(input, TakeNumber(input) % 126));
  }
  for (TagText Mp3Info::*field : {&Mp3Info::Comment, &Mp3Info::Mood, &Mp3Info::Lyrics}) {
    info.*field = TakeInput(input, TakeNumber(input));
  }
  return info;
}

void CheckReadBack(const std::string& file, const Mp3Info& written) {
  Mp3Info read;
  // A name in a copied picture, with a size that is none, ends the reading.
  if (ParseID3v2Tag(file, ID3v2Versions::kAny, read) != "OK") return;
  Require(read.Artist == written.Artist && read.Title == written.Title &&
              read.Album == written.Album && read.TrackV2 == written.Track &&
              read.Bpm == written.Bpm && read.Composer == written.Composer &&
              read.Year == written.Year && read.Original == written.Original &&
              read.EncodedBy == written.EncodedBy && read.Copyright == written.Copyright &&
              read.Url == '\0' + written.Url,
          "the values are read back");
}

void CheckRemovals(const std::string& file, std::string_view audio) {
  const ID3v2Plan without_tag = PlanRemoval(PlanWithoutTag, file);
  Require(without_tag.error.empty(), "a written tag can be removed");
  Require(Applied(without_tag, file) == audio, "the audio is what is left");
  const ID3v2Plan without = PlanRemoval(PlanWithoutPictures, file);
  const UnnamedFile real(file);
  const std::string result = RemoveID3v2Picture(Writing(), real.Path());
  Require(result == (without.error.empty() ? "OK" : without.error), "the planned result");
  if (!without.error.empty()) {
    Require(BytesOf(real.Path()) == file, "without a picture the file stays");
    return;
  }
  const std::string stripped = BytesOf(real.Path());
  Require(stripped == Applied(without, file), "pictures are removed as planned");
  Require(stripped.size() <= file.size() - 10, "a tag without pictures is smaller");
  Require(Applied(PlanRemoval(PlanWithoutTag, stripped), stripped) == audio,
          "the audio behind pictures stays");
}

void Save(const std::string& old, const Mp3Info& info, std::string_view picture) {
  std::optional<ID3v2NewPicture> new_picture;
  if (!picture.empty()) new_picture = {picture, "jpg"};
  Mp3Info filled = info;
  const auto length = static_cast<std::int64_t>(old.size());
  const ID3v2Plan plan = PlanNewTag(HeadOf(old), length, new_picture, filled);
  if (!plan.error.empty()) return;
  const std::string file = Applied(plan, old);
  const std::optional<ID3v2Header> header = ParseID3v2Header(file);
  Require(header && header->version == 3, "a header of version 2.3");
  Require(header->size + 10 == static_cast<std::int64_t>(plan.tag.size()), "the size of the tag");
  const std::optional<ID3v2Header> old_header = ParseID3v2Header(old);
  Require(plan.audio == (old_header ? old_header->size + 10 : 0), "where the audio begins");
  CheckReadBack(file, info);
  CheckRemovals(file, std::string_view(old).substr(static_cast<std::size_t>(plan.audio)));
  if (picture.empty() && !old.empty()) {
    const UnnamedFile real(old);
    filled = info;
    Require(WriteID3v2Tag(Writing(), real.Path(), false, filled) == "OK", "it can be written");
    Require(BytesOf(real.Path()) == file, "what is written is what was planned");
  }
  if (old.find("APIC") == std::string::npos && info.Comment.find('A') == std::string::npos &&
      info.Mood.find('A') == std::string::npos && info.Lyrics.find('A') == std::string::npos &&
      picture.find('A') == std::string_view::npos) {
    filled = info;
    const auto new_length = static_cast<std::int64_t>(file.size());
    const ID3v2Plan second = PlanNewTag(HeadOf(file), new_length, std::nullopt, filled);
    Require(second.error.empty() && second.StaysInPlace(), "a second save changes no length");
  }
}

void Run(std::string_view input) {
  const std::size_t kind = TakeNumber(input);
  const Mp3Info info = TakeInfo(input);
  const std::string picture(TakeInput(input, kind & 1 ? TakeNumber(input) * 3 : 0));
  std::string old(input);
  if (kind & 2) {  // a good header, so that only the frames need to be guessed
    const std::size_t padding = kind >> 3 << 6;
    const std::size_t size = input.size() / 2 + padding;
    old = "ID3" + std::string(1, static_cast<char>(kind & 4 ? 4 : 3)) + std::string(4, '\0');
    old += {static_cast<char>(size >> 7 & 127), static_cast<char>(size & 127)};
    old += input.substr(0, input.size() / 2);
    old += std::string(padding, '\0');
    old += input.substr(input.size() / 2);
  }
  Save(old, info, picture);
  const ID3v2Plan removal = PlanRemoval(PlanWithoutTag, old);
  const UnnamedFile real(old);
  const bool removed = RemoveID3v2Tag(Writing(), real.Path()) == "OK";
  Require(removed == removal.error.empty(), "a tag is removed as planned");
  Require(BytesOf(real.Path()) == (removed ? Applied(removal, old) : old), "only the tag goes");
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
