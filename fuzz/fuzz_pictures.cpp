// SPDX-License-Identifier: GPL-3.0-or-later
// The picture reader: whatever it gives can be shown and named.
#include "audio/id3v2_pictures.h"
#include "fuzz/fuzz_target.h"

namespace tunemeadow::fuzz {
namespace {

void ReadOne(const std::string& bytes) {
  FileBytes file;
  file.OpenMemory(bytes);
  const std::optional<ID3v2Picture> picture = ReadID3v2Pictures(file);
  if (!picture) return;
  Require(picture->data.size() >= 2, "a picture has its signature");
  Require(!picture->extension.empty() && picture->extension.size() <= 8, "a short extension");
  Require(picture->extension.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789") ==
              std::string::npos,
          "an extension that may stand in a file name");
  Require(picture->data.size() + picture->mime.size() + picture->description.size() <=
              bytes.size() + 101,
          "nothing twice");
}

void Run(std::string_view input) {
  ReadOne(std::string(input));
  ReadOne("ID3\3" + std::string(4, '\0') +
          "\x7F\x7F"
          "APIC" +
          std::string(2, '\0') + "\x7F" + std::string(3, '\0') + std::string(input));
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
