// SPDX-License-Identifier: GPL-3.0-or-later
// Builds the bytes of audio files for tests: tags, frames, trailers, whole files.
//
//   folder.Write("a.mp3", Mp3File().Id3v2({{"TIT2", "Blue"}}).Frames(10).Id3v1({.title = "Blue"}));
//
// Texts are bytes of Windows-1252, as they stand in a tag. Pieces come in the order of the calls.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunemeadow {

/// `value` as `count` bytes, the most significant first, of `bits` bits each.
inline std::string BigEndian(std::uint64_t value, int count, int bits = 8) {
  std::string bytes;
  for (int i = count - 1; i >= 0; --i) {
    bytes += static_cast<char>((value >> (i * bits)) & ((1U << bits) - 1));
  }
  return bytes;
}

/// A text cut or filled up to `size` bytes.
inline std::string Fixed(std::string_view text, std::size_t size, char filler) {
  std::string bytes(text.substr(0, size));
  bytes.resize(size, filler);
  return bytes;
}

// --- ID3v2 ---------------------------------------------------------------------------------------

/// Name and value of a frame. COMM, USLT and WXXX get language and empty description before it.
using TagField = std::pair<std::string, std::string>;
using TagFields = std::vector<TagField>;

struct Id3v2Options {
  int version = 3;
  std::size_t padding = 0;
  bool utf16 = false;  ///< little-endian with byte order marks, otherwise one byte per character
  std::string more_frames;  ///< finished frames after the fields
};

inline std::string Id3v2Frame(std::string_view name, std::string_view body) {
  return std::string(name) + BigEndian(body.size(), 4) + std::string(2, '\0') + std::string(body);
}

inline std::string Id3v2Text(std::string_view text, bool utf16) {
  if (!utf16) return std::string(text);
  std::string wide = "\xFF\xFE";
  for (const char each : text) wide += {each, '\0'};
  return wide;
}

inline std::string Id3v2FieldFrame(const TagField& field, bool utf16 = false) {
  const auto& [name, value] = field;
  std::string body(1, utf16 ? '\1' : '\0');
  if (name == "COMM" || name == "USLT") body += "eng";
  if (name == "COMM" || name == "USLT" || name == "WXXX") {
    body += Id3v2Text("", utf16) + std::string(utf16 ? 2 : 1, '\0');
  }
  return Id3v2Frame(name, body + Id3v2Text(value, utf16));
}

/// The comment frame that carries "Preference", "Situation", "Bio", "Tempo" or "Mood".
inline std::string MusicmatchFrame(std::string_view what, std::string_view value) {
  return Id3v2Frame(
      "COMM", std::string(4, '\0') + "MusicMatch_" + std::string(what) + '\0' + std::string(value));
}

/// A picture that is a JPEG to everything that looks at its first bytes only.
inline std::string FakeJpeg(std::size_t size = 64) {
  return Fixed("\xFF\xD8\xFF\xE0 fake", size, 'j');
}

inline std::string PictureFrame(std::string_view picture, std::string_view mime = "image/jpeg",
                                std::string_view description = "", int kind = 3) {
  return Id3v2Frame("APIC", '\0' + std::string(mime) + '\0' + static_cast<char>(kind) +
                                std::string(description) + '\0' + std::string(picture));
}

/// Header, frames and padding.
inline std::string Id3v2Tag(std::string_view frames, int version = 3, std::size_t padding = 0) {
  return "ID3" + std::string(1, static_cast<char>(version)) + std::string(2, '\0') +
         BigEndian(frames.size() + padding, 4, 7) + std::string(frames) +
         std::string(padding, '\0');
}

inline std::string Id3v2Tag(const TagFields& fields, const Id3v2Options& options = {}) {
  std::string frames;
  for (const TagField& field : fields) frames += Id3v2FieldFrame(field, options.utf16);
  return Id3v2Tag(frames + options.more_frames, options.version, options.padding);
}

// --- MPEG frames ---------------------------------------------------------------------------------

/// The fields of a frame header, as the bits stand: 128 kbit/s, 44.1 kHz, joint stereo.
struct MpegHeader {
  unsigned version = 3;  ///< 3 MPEG 1, 2 MPEG 2, 0 MPEG 2.5
  unsigned layer = 1;    ///< 1 layer 3, 2 layer 2, 3 layer 1
  unsigned no_crc = 1;
  unsigned bitrate = 9;  ///< index
  unsigned rate = 0;     ///< index
  unsigned padding = 0;
  unsigned private_bit = 0;
  unsigned mode = 1;
  unsigned copyright = 0;
  unsigned original = 1;
  unsigned emphasis = 0;
};

inline std::string HeaderBytes(const MpegHeader& h) {
  return BigEndian(0x7FFU << 21 | h.version << 19 | h.layer << 17 | h.no_crc << 16 |
                       h.bitrate << 12 | h.rate << 10 | h.padding << 9 | h.private_bit << 8 |
                       h.mode << 6 | h.copyright << 3 | h.original << 2 | h.emphasis,
                   4);
}

inline constexpr std::size_t kTestFrameBytes = 417;  // of 128 kbit/s at 44.1 kHz

/// One frame whose data has no byte 255 and no letters.
inline std::string MpegFrame(const MpegHeader& header = {}, std::size_t size = kTestFrameBytes) {
  return Fixed(HeaderBytes(header), size, '\x55');
}

/// A frame with a Xing header 36 bytes after its start.
inline std::string XingFrame(std::uint32_t frames, const MpegHeader& header = {}) {
  return Fixed(
      Fixed(HeaderBytes(header), 36, '\0') + "Xing" + BigEndian(1, 4) + BigEndian(frames, 4),
      kTestFrameBytes, '\0');
}

// --- Trailers ------------------------------------------------------------------------------------

struct Id3v1Fields {
  std::string title;
  std::string artist;
  std::string album;
  std::string year;
  std::string comment;
  int track = 0;  ///< above 0 makes it a tag of version 1.1
  int genre = 255;
  char filler = ' ';
  std::string mark = "TAG";
};

inline std::string Id3v1Record(const Id3v1Fields& f) {
  std::string comment = Fixed(f.comment, 30, f.filler);
  if (f.track > 0) comment.replace(28, 2, {'\0', static_cast<char>(f.track)});
  return f.mark + Fixed(f.title, 30, f.filler) + Fixed(f.artist, 30, f.filler) +
         Fixed(f.album, 30, f.filler) + Fixed(f.year, 4, f.filler) + comment +
         static_cast<char>(f.genre);
}

/// `number` with leading zeros.
inline std::string Digits(std::size_t number, std::size_t count) {
  const std::string digits = std::to_string(number);
  return std::string(count > digits.size() ? count - digits.size() : 0, '0') + digits;
}

/// A Lyrics3 v2.00 block of fields such as {"LYR", "la la"}.
inline std::string Lyrics3Bytes(const TagFields& fields) {
  std::string block = "LYRICSBEGIN";
  for (const auto& [letters, value] : fields) {
    block += letters;
    block += Digits(value.size(), 5);
    block += value;
  }
  return block + Digits(block.size(), 6) + "LYRICS200";
}

// --- Ogg -----------------------------------------------------------------------------------------

/// The head of an Ogg Vorbis file: two page headers, identification and comment packet with
/// comments such as {"TITLE", "Blue"}, and zero bytes up to `size`.
inline std::string OggHead(const TagFields& comments, std::size_t size = 4096) {
  const auto little = [](std::size_t value) {
    std::string bytes = BigEndian(value, 4);
    return std::string(bytes.rbegin(), bytes.rend());
  };
  std::string bytes = Fixed("OggS", 28, '\0') + "\1vorbis" + std::string(23, '\0') +
                      Fixed("OggS", 28, '\0') + "\3vorbis" + little(4) + "test" +
                      little(comments.size());
  for (const auto& [key, value] : comments) {
    bytes += little(key.size() + 1 + value.size());
    bytes += key;
    bytes += "=";
    bytes += value;
  }
  return Fixed(bytes, bytes.size() < size ? size : bytes.size(), '\0');
}

// --- Whole files ---------------------------------------------------------------------------------

class Mp3File {
 public:
  Mp3File& Id3v2(const TagFields& fields, const Id3v2Options& options = {}) {
    return Bytes(Id3v2Tag(fields, options));
  }
  Mp3File& Frames(std::size_t count, const MpegHeader& header = {}) {
    for (std::size_t i = 0; i < count; ++i) bytes_ += MpegFrame(header);
    return *this;
  }
  Mp3File& Xing(std::uint32_t frames, const MpegHeader& header = {}) {
    return Bytes(XingFrame(frames, header));
  }
  Mp3File& Lyrics3(const TagFields& fields) { return Bytes(Lyrics3Bytes(fields)); }
  Mp3File& Id3v1(const Id3v1Fields& fields) { return Bytes(Id3v1Record(fields)); }
  Mp3File& Bytes(std::string_view raw) {
    bytes_ += raw;
    return *this;
  }

  /// Zero bytes up to this length.
  Mp3File& FillTo(std::size_t length) {
    if (bytes_.size() < length) bytes_.resize(length, '\0');
    return *this;
  }

  [[nodiscard]] const std::string& Build() const { return bytes_; }
  operator std::string_view() const { return bytes_; }  // NOLINT: so that Write takes it

 private:
  std::string bytes_;
};

}  // namespace tunemeadow
