// SPDX-License-Identifier: GPL-3.0-or-later
#include "audio/mp3reader.h"

#include <array>
#include <cstring>
#include <limits>
#include <optional>

#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kShortestFile = 256;
constexpr std::int64_t kReportEvery = 100000;

// Bytes after the sync byte, the same for every version and channel mode.
constexpr std::size_t kXingMark = 36;
constexpr std::size_t kXingFrames = 44;
constexpr std::size_t kFirstFrameBytes = 48;

constexpr std::array<std::string_view, 4> kChannelModes = {"Stereo", "Joint Stereo", "Dual Channel",
                                                           "Single Channel"};
constexpr std::array<std::string_view, 4> kEmphases = {"None", "50/15", "Reserved", "CCITT J 17"};
constexpr std::array<std::int16_t, 4> kLayers = {0, 3, 2, 1};
constexpr std::array<std::int32_t, 3> kSampleRates1 = {44100, 48000, 32000};
constexpr std::array<std::int32_t, 3> kSampleRates2 = {22050, 24000, 16000};

struct BitrateRow {
  int key;  ///< version and layer as two decimal digits
  std::array<std::int16_t, 15> kbps;
};
constexpr std::array<BitrateRow, 6> kBitrates = {{
    {11, {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448}},
    {12, {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384}},
    {13, {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
    {21, {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256}},
    {22, {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
    {23, {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
}};

/// Place of the first sync pair in `bytes`, or npos. Second bytes F3 to FB count, no more and no
/// less: layer 1 and 2 of version 1 and MPEG 2.5 are skipped, and nothing else is validated.
std::size_t FindSyncPair(std::string_view bytes) noexcept {
  std::size_t at = 0;
  while (at + 1 < bytes.size()) {
    const void* const hit = std::memchr(bytes.data() + at, 0xFF, bytes.size() - 1 - at);
    if (hit == nullptr) break;
    at = static_cast<std::size_t>(static_cast<const char*>(hit) - bytes.data());
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    if (second >= 0xF3 && second <= 0xFB) return at;
    ++at;
  }
  return std::string_view::npos;
}

/// Offset of the first sync byte, searched from the first byte of the file on: a pair inside a tag
/// counts.
std::optional<std::int64_t> FindFrameSync(FileBytes& file, ScanProgress* progress) {
  const std::int64_t length = file.Length();
  std::optional<std::int64_t> found;
  std::int64_t offset = 0;  // position - 1
  std::int64_t report = kReportEvery;
  while (!found && offset < length) {
    if (offset + 1 == report) {
      if (progress != nullptr) progress->OnPosition(report, length);
      report += kReportEvery;
    }
    // One byte more than the positions before the next report, for the second byte of a pair.
    const std::string_view bytes = file.ReadSome(offset, static_cast<std::size_t>(report - offset));
    if (bytes.size() < 2) break;
    const std::size_t at = FindSyncPair(bytes);
    if (at != std::string_view::npos) found = offset + static_cast<std::int64_t>(at);
    offset += static_cast<std::int64_t>(bytes.size()) - 1;
  }
  if (progress != nullptr && report > kReportEvery) progress->OnSearchEnd();
  return found;
}

/// The header at `sync` as digits, with IsVbr and VbrFrames stored; nullopt, before the header
/// bytes are looked at, if the Xing header declares more frames than its field can hold.
std::optional<std::string> ReadFirstFrame(FileBytes& file, std::int64_t sync, Mp3Info& info) {
  const std::string_view frame = file.ReadPadded(sync, kFirstFrameBytes);
  if (frame.size() < kFirstFrameBytes) return std::nullopt;
  info.IsVbr = frame.substr(kXingMark, 4) == "Xing";
  if (info.IsVbr) {
    const std::uint32_t frames = BitTextToNumber(BytesToBitText(frame.substr(kXingFrames, 4)));
    if (frames > std::numeric_limits<std::int16_t>::max()) return std::nullopt;
    info.VbrFrames = static_cast<std::int16_t>(frames);
  }
  return BytesToBitText(frame.substr(0, 4));
}

void ClearTrailerFields(Mp3Info& info) {
  info.HasID3v1 = false;
  info.Title.clear();
  info.Artist.clear();
  info.Album.clear();
  info.Year.clear();
  info.Comment.clear();
  info.Track = "0";
  info.Genre = 255;
}

/// Takes any "tag" among the last 129 bytes for the start of an ID3v1 tag: a word in the audio's
/// trailing data counts and shifts all fields.
void ScanTrailer(FileBytes& file, Mp3Info& info) {
  ClearTrailerFields(info);
  const std::string_view tail = file.ReadPadded(file.Length() - 129, 256);
  const std::size_t tag = FindNoCase(tail, "tag");
  if (tag == std::string_view::npos) return;
  const auto text = [&](std::size_t at, std::size_t count) {
    return TagText(TrimRight(tail.substr(tag + at, count)));
  };
  const auto code = [&](std::size_t at) { return static_cast<unsigned char>(tail[tag + at]); };
  info.HasID3v1 = true;
  info.Title = text(3, 30);
  info.Artist = text(33, 30);
  info.Album = text(63, 30);
  info.Year = text(93, 4);
  info.Comment = text(97, 30);
  if (code(125) == 0 && code(126) > 0) {
    if (code(126) == ' ') return;  // trimmed away, so no code is left: the genre stays at none
    info.Track = std::to_string(code(126));
  }
  info.Genre = code(127) == ' ' ? std::int16_t{0} : std::int16_t{code(127)};
}

/// Bit rate in kbit/s by the table of version and layer; nullopt if it has no entry.
std::optional<double> TableBitrate(int version, int layer, std::uint32_t index) {
  for (const BitrateRow& row : kBitrates) {
    if (row.key == version * 10 + layer && index < row.kbps.size()) return row.kbps[index];
  }
  return std::nullopt;
}

/// Bit rate in kbit/s of a variable bit rate, estimated from the length of the whole file; nullopt
/// where the Xing header or the layer leaves nothing to divide by.
std::optional<double> EstimatedBitrate(const Mp3Info& info, std::int32_t sample_rate, int layer) {
  if (layer == 0 || info.VbrFrames == 0) return std::nullopt;
  const double divisor = layer == 1 ? 12.0 : 144.0;
  return static_cast<double>(sample_rate) * info.FileLength / info.VbrFrames / 1000.0 / divisor;
}

/// Whole seconds that the whole file lasts; nullopt if its bits don't fit into 32 bits.
std::optional<std::int32_t> PlaytimeOf(std::int32_t file_length, double bitrate) {
  if (bitrate <= 0) return 0;
  if (file_length > std::numeric_limits<std::int32_t>::max() / 8) return std::nullopt;
  return static_cast<std::int32_t>(file_length * 8 / bitrate / 1000.0);
}

TagText YesNo(bool yes) { return yes ? "Yes" : "No"; }

/// Decodes the header digits and stores all header fields, or none. No digits stand for version 2,
/// the reserved layer, and so for nothing to store.
void DecodeHeader(std::string_view digits, Mp3Info& info) {
  const auto number = [digits](std::size_t from, std::size_t to) {
    return digits.empty() ? 0U : BitTextToNumber(digits.substr(from - 1, to - from + 1));
  };
  const std::int16_t version = number(13, 13) == 1 ? 1 : 2;  // MPEG 2.5 reads as 2
  const std::int16_t layer = kLayers[number(14, 15)];
  const auto& rates = version == 1 ? kSampleRates1 : kSampleRates2;
  const std::uint32_t rate_index = number(21, 22);
  if (rate_index >= rates.size()) return;
  const std::int32_t sample_rate = rates[rate_index];
  const std::optional<double> bitrate = info.IsVbr ? EstimatedBitrate(info, sample_rate, layer)
                                                   : TableBitrate(version, layer, number(17, 20));
  if (!bitrate) return;
  const std::optional<std::int32_t> playtime = PlaytimeOf(info.FileLength, *bitrate);
  const std::int64_t rounded = RoundHalfEven(*bitrate);
  if (!playtime || rounded > std::numeric_limits<std::int16_t>::max()) return;
  info.Bitrate = static_cast<std::int16_t>(rounded);
  info.Crc = YesNo(number(16, 16) == 0);
  info.Playtime = *playtime;
  info.Emphasis = kEmphases[number(31, 32)];
  info.SampleRate = sample_rate;
  info.ChannelMode = kChannelModes[number(25, 26)];
  info.Layer = layer;
  info.Version = version;
  info.Padding = YesNo(number(23, 23) == 1);
  info.Original = YesNo(number(30, 30) == 1);
  info.Copyright = YesNo(number(29, 29) == 1);
  info.Private = YesNo(number(24, 24) == 1);
}

}  // namespace

std::string SearchPositionText(std::int64_t position, std::int64_t length) {
  return "Searching fileheader at position " + std::to_string(position) + "/" +
         std::to_string(length);
}

void ReadMp3Info(FileBytes& file, bool readID3v1, bool readHeader, Mp3Info& info,
                 ScanProgress* progress) {
  info.CommentOverride.clear();
  ClearTrailerFields(info);
  const std::string digits = ScanMp3File(file, readID3v1, readHeader, info, progress);
  if (readHeader) DecodeHeader(digits, info);
}

void ReadMp3Info(const std::string& path, bool readID3v1, bool readHeader, Mp3Info& info,
                 ScanProgress* progress) {
  FileBytes file;
  if (!file.Open(path)) file.Close();
  ReadMp3Info(file, readID3v1, readHeader, info, progress);
}

std::string ScanMp3File(FileBytes& file, bool readID3v1, bool readHeader, Mp3Info& info,
                        ScanProgress* progress) {
  if (!file.IsOpen() || file.Length() > std::numeric_limits<std::int32_t>::max()) return {};
  info.FileLength = static_cast<std::int32_t>(file.Length());
  if (file.Length() < kShortestFile) return {};
  std::string digits;
  if (readHeader) {
    const std::optional<std::int64_t> sync = FindFrameSync(file, progress);
    info.NoHeader = !sync.has_value();
    if (sync) {
      std::optional<std::string> header = ReadFirstFrame(file, *sync, info);
      if (!header) return {};
      digits = std::move(*header);
    }
  }
  if (readID3v1) ScanTrailer(file, info);
  return digits;
}

std::string ScanMp3File(const std::string& path, bool readID3v1, bool readHeader, Mp3Info& info,
                        ScanProgress* progress) {
  FileBytes file;
  if (!file.Open(path)) return {};
  return ScanMp3File(file, readID3v1, readHeader, info, progress);
}

std::string BytesToBitText(std::string_view bytes) {
  std::string digits;
  digits.reserve(bytes.size() * 8);
  for (const char byte : bytes) {
    for (int bit = 7; bit >= 0; --bit) {
      const bool one = ((static_cast<unsigned char>(byte) >> bit) & 1) != 0;
      if (one || !digits.empty()) digits += one ? '1' : '0';
    }
  }
  return digits;
}

std::uint32_t BitTextToNumber(std::string_view digits) noexcept {
  std::uint32_t number = 0;
  for (const char digit : digits) number = number << 1 | (digit == '1' ? 1U : 0U);
  return number;
}

std::string QualityText(const Mp3Info& info) {
  if (info.NoHeader) return std::string(kDamagedHeader);
  return std::to_string(info.Bitrate) + (info.IsVbr ? " kbps (VBR)" : " kbps") + " / " +
         FormatShortest(info.SampleRate / 1000.0) + " khz / " + info.ChannelMode;
}

}  // namespace tunemeadow
