// SPDX-License-Identifier: GPL-3.0-or-later
// An ID3v2 tag as one text: its header, how much of the file belongs to it, and the value of a
// frame whose place is known. No frame walk: frames are found by searching for their names.
// A large text is lent piece by piece, so that a tag never takes more memory than its values do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/mp3_info.h"

namespace tunemeadow {

/// The first ten bytes of a tag. The flags are not looked at.
struct ID3v2Header {
  std::uint8_t version = 0;  ///< major version, 3 for ID3v2.3
  std::int64_t size = 0;     ///< bytes after the header: four bytes of seven bits each, unmasked
};

inline constexpr std::size_t kID3v2HeaderBytes = 10;

/// The header at the start of `head`; nullopt if that has under ten bytes or no "ID3".
[[nodiscard]] std::optional<ID3v2Header> ParseID3v2Header(std::string_view head) noexcept;

/// The whole text of a tag: tag size, or file length where that is less, + 101 bytes from the first
/// byte of the file on. It starts with the header, and 91 bytes of what follows the tag close it;
/// what the file lacks is zero. A tag that declares more than 256 MB is read to there. The view
/// lasts until the next read of the file.
[[nodiscard]] std::string_view LoadID3v2Text(FileBytes& file, const ID3v2Header& header) noexcept;

/// The same text, read as it is asked for: one of up to 4 MB at once, a larger one in windows. A
/// copy has a window of its own. The file must stay open and unread by others while it is used.
class ID3v2TagText {
 public:
  ID3v2TagText(FileBytes& file, const ID3v2Header& header) noexcept;

  /// A text that is at hand; it must outlive its use.
  explicit ID3v2TagText(std::string_view text) noexcept : size_(text.size()), window_(text) {}

  ID3v2TagText(const ID3v2TagText& other) noexcept
      : file_(other.file_), size_(other.size_), window_(other.IsWhole() ? other.window_ : "") {}
  ID3v2TagText& operator=(const ID3v2TagText&) = delete;
  ~ID3v2TagText() = default;

  [[nodiscard]] std::size_t Size() const noexcept { return size_; }

  /// Whether all of it is at hand.
  [[nodiscard]] bool IsWhole() const noexcept { return file_ == nullptr; }

  /// `count` bytes from `offset` on; fewer at the end of the text, and at most kPiece of one that
  /// is not whole. Lasts until the next call.
  [[nodiscard]] std::string_view Piece(std::size_t offset, std::size_t count) noexcept;

  /// The byte at `at`; zero after the text.
  [[nodiscard]] char Byte(std::size_t at) noexcept {
    if (at - begin_ < window_.size()) return window_[at - begin_];  // also false for at < begin_
    const std::string_view piece = Piece(at, 1);
    return piece.empty() ? '\0' : piece[0];
  }

  /// `count` bytes from `offset` on, fewer at the end of the text.
  [[nodiscard]] std::string Copy(std::size_t offset, std::size_t count);

  static constexpr std::size_t kPiece = std::size_t{1} << 16;

 private:
  FileBytes* file_ = nullptr;  ///< null: the window is the text
  std::size_t size_ = 0;
  std::size_t begin_ = 0;  ///< of the window in the text
  std::string_view window_;
  std::string bytes_;  ///< what the window of a large text shows
};

/// The size that the frame at `offset` (from 0) of `text` declares, a plain big-endian number in
/// every version. Bytes after the text count as zero. nullopt above 2^31-1.
[[nodiscard]] std::optional<std::size_t> FrameSize(ID3v2TagText& text, std::size_t offset) noexcept;
[[nodiscard]] std::optional<std::size_t> FrameSize(std::string_view text,
                                                   std::size_t offset) noexcept;

/// Where the value of a frame stands in a text.
struct ID3v2ValueRange {
  std::size_t begin = 0;
  std::size_t size = 0;
};

/// The value after frame header and encoding byte as it stands in a text of `text_size` bytes:
/// size - 1 bytes from offset + 11 on, clipped at the text's end and at 1 MB. Empty for size 0.
[[nodiscard]] ID3v2ValueRange RawFrameValue(std::size_t text_size, std::size_t offset,
                                            std::size_t size) noexcept;

/// Where the description that begins at `from` of a frame's bytes ends: at one zero byte, or with
/// `wide` at two in the step of UTF-16; at the last byte's end if there is none.
[[nodiscard]] std::size_t EndOfDescription(std::string_view frame, std::size_t from,
                                           bool wide) noexcept;

/// The value without the byte order marks: first every FF FE is removed, then every 9F FE. The zero
/// bytes of UTF-16 stay.
[[nodiscard]] TagText CleanFrameValue(std::string_view raw);

/// The value of the frame at `position` (from 1) of the tag text; nullopt if its size is above
/// 2^31-1.
[[nodiscard]] std::optional<TagText> ReadFrameText(std::size_t position, ID3v2TagText& tag_text);
[[nodiscard]] std::optional<TagText> ReadFrameText(std::size_t position, std::string_view tag_text);

}  // namespace tunemeadow
