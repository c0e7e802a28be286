// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the first MPEG audio frame header of a file, decodes that one header (ISO/IEC 11172-3 and
// 13818-3) and the Xing header after it, and scans the last 129 bytes for an ID3v1 tag. Never
// walks the stream frame by frame and never computes a frame length.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// Who wants to show how far the search for a frame header has come, and to let the window live.
/// Positions count from 1.
class ScanProgress {
 public:
  ScanProgress() = default;
  virtual ~ScanProgress() = default;
  ScanProgress(const ScanProgress&) = delete;
  ScanProgress& operator=(const ScanProgress&) = delete;

  /// Called before each position that is a multiple of 100000 is looked at.
  virtual void OnPosition(std::int64_t position, std::int64_t length) = 0;

  /// Called when a search ends that called OnPosition: the place to restore what was shown before.
  virtual void OnSearchEnd() {}
};

/// "Searching fileheader at position 100000/5000000"
[[nodiscard]] std::string SearchPositionText(std::int64_t position, std::int64_t length);

/// Analyses the file: empties the tag strings of an ID3v1 tag in `info` and CommentOverride, then
/// with `readHeader` decodes the first frame header and with `readID3v1` scans the trailer.
///
/// Bitrate, Crc, Playtime, Emphasis, SampleRate, ChannelMode, Layer, Version, Padding, Original,
/// Copyright and Private are stored together at the end, or not at all: they keep the values of the
/// file analysed before when there is no frame sync (NoHeader is then true), when the file is
/// missing, has under 256 bytes or more than 2 GB, when the layer code, the bit-rate index or the
/// sample-rate index is reserved, when a Xing header declares no frames or more than 32767, or when
/// the file is so long (256 MB) or the estimated bit rate so high that the numbers overflow.
///
/// What was read from an ID3v2 tag before is lost: copy it out first.
void ReadMp3Info(FileBytes& file, bool readID3v1, bool readHeader, Mp3Info& info,
                 ScanProgress* progress = nullptr);
void ReadMp3Info(const std::string& path, bool readID3v1, bool readHeader, Mp3Info& info,
                 ScanProgress* progress = nullptr);

/// The inner step: fills IsVbr, VbrFrames, FileLength, NoHeader and with `readID3v1` the ID3v1
/// fields. Returns the four header bytes as digits, or an empty text if there are none or a
/// failure came first; a failure skips the trailer.
[[nodiscard]] std::string ScanMp3File(FileBytes& file, bool readID3v1, bool readHeader,
                                      Mp3Info& info, ScanProgress* progress = nullptr);
[[nodiscard]] std::string ScanMp3File(const std::string& path, bool readID3v1, bool readHeader,
                                      Mp3Info& info, ScanProgress* progress = nullptr);

/// The bits of 1 to 4 bytes, most significant first, as "0" and "1" without leading zeros: 32
/// digits for a frame header, an empty text for four zero bytes.
[[nodiscard]] std::string BytesToBitText(std::string_view bytes);

/// The number that up to 32 binary digits stand for; 0 for an empty text.
[[nodiscard]] std::uint32_t BitTextToNumber(std::string_view digits) noexcept;

/// The quality of a file without a frame header.
inline constexpr std::string_view kDamagedHeader = "damaged header";

/// What the catalogue shows as quality: "128 kbps / 44.1 khz / Stereo", "192 kbps (VBR) / ..." or
/// "damaged header".
[[nodiscard]] std::string QualityText(const Mp3Info& info);

}  // namespace tunemeadow
