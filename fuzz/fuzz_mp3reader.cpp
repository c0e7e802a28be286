// SPDX-License-Identifier: GPL-3.0-or-later
// Frame header, Xing header and trailer scan: the values stay in their ranges, and a real file
// gives what the same bytes in memory give.
#include "audio/mp3reader.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {
namespace {

std::string Values(const Mp3Info& i) {
  std::string all;
  for (const std::int64_t number :
       {std::int64_t{i.Bitrate}, std::int64_t{i.SampleRate}, std::int64_t{i.Playtime},
        std::int64_t{i.Layer}, std::int64_t{i.Version}, std::int64_t{i.VbrFrames},
        std::int64_t{i.FileLength}, std::int64_t{i.Genre}, std::int64_t{i.IsVbr},
        std::int64_t{i.NoHeader}, std::int64_t{i.HasID3v1}}) {
    all += std::to_string(number) + "|";
  }
  return all + i.ChannelMode + i.Emphasis + i.Crc + i.Padding + i.Private + i.Original +
         i.Copyright + i.Track + "|" + i.Title + "|" + i.Artist + "|" + i.Album + "|" + i.Year +
         "|" + i.Comment;
}

void Run(std::string_view input) {
  const std::string bytes = Stretched(input);
  FileBytes file;
  file.OpenMemory(bytes);
  Mp3Info info;
  ReadMp3Info(file, true, true, info);
  Require(info.Bitrate >= 0 && info.Playtime >= 0 && info.VbrFrames >= 0, "no value is negative");
  Require(info.Layer <= 3 && info.Version <= 2, "layer and version are in range");
  Require(info.Title.size() <= 30 && info.Comment.size() <= 30 && info.Year.size() <= 4,
          "ID3v1 texts fit their fields");
  Require(info.Genre >= 0 && info.Genre <= 255, "the genre is a byte");
  (void)QualityText(info);

  const UnnamedFile real(bytes);
  Mp3Info from_file;
  ReadMp3Info(real.Path(), true, true, from_file);
  Require(Values(info) == Values(from_file), "file and memory agree");
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
