// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of an ID3v2 tag, walked one after the other by their true sizes. The readers search a
// tag for names instead; this is for what must not go wrong by an odd size: counting what a save
// drops, copying pictures, and reading texts that are to be written back unseen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tunemeadow {

/// The size of one frame after its header.
struct ID3v2TrueSize {
  std::size_t bytes = 0;
  bool seven_bits = false;  ///< its four bytes count as seven bits each, not as a plain number
};

/// The true size of the frame at `offset` of `tag` (header and body, nothing after them). Sizes of
/// 2.3 and 2.4 may be plain numbers or have seven bits a byte, whatever the version says: the one
/// counts that leads to a next frame, otherwise the one that leads to padding or to the end of the
/// tag; where both do, the one of the tag's own version. nullopt if neither does.
[[nodiscard]] std::optional<ID3v2TrueSize> TrueFrameSize(std::string_view tag,
                                                         std::size_t offset) noexcept;

struct ID3v2WalkedFrame {
  std::size_t offset = 0;   ///< of its name in the tag
  std::string_view name;    ///< four letters; three in version 2.2
  std::uint8_t format = 0;  ///< second byte of its flags; 0 in version 2.2
  std::string_view body;    ///< what follows its header
};

/// Walks a tag of version 2.2 to 2.4, of which `tag` holds header and body.
class ID3v2Walk {
 public:
  explicit ID3v2Walk(std::string_view tag) noexcept;

  /// The next frame; nullopt at padding, at the end of the tag, or where a frame leads nowhere.
  [[nodiscard]] std::optional<ID3v2WalkedFrame> Next() noexcept;

  /// Goes on at `offset`, where a name has been found by other means.
  void GoTo(std::size_t offset) noexcept { at_ = offset; }

  /// Where the next frame would begin.
  [[nodiscard]] std::size_t Offset() const noexcept { return at_; }

  [[nodiscard]] std::uint8_t Version() const noexcept;

 private:
  std::string_view tag_;
  std::size_t at_;
};

}  // namespace tunemeadow
