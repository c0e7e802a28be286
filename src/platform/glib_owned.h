// SPDX-License-Identifier: GPL-3.0-or-later
// Owners of what GLib hands out; none of its types stands here, so that its headers stay in the few
// sources that call it.
#pragma once

#include <memory>

namespace tunemeadow {

struct FreeOfGlib {
  void operator()(void* memory) const noexcept;
};

struct FreeTextsOfGlib {
  void operator()(char** texts) const noexcept;
};

struct UnrefOfGlib {
  void operator()(void* object) const noexcept;
};

/// A text that ends in NUL, or nothing.
using GlibText = std::unique_ptr<char, FreeOfGlib>;

/// Texts with a null after the last, or nothing.
using GlibTexts = std::unique_ptr<char*, FreeTextsOfGlib>;

/// A counted object of the type T, or nothing.
template <typename T>
using GlibObject = std::unique_ptr<T, UnrefOfGlib>;

}  // namespace tunemeadow
