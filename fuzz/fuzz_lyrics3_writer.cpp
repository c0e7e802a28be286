// SPDX-License-Identifier: GPL-3.0-or-later
// The Lyrics3 writer and remover on file ends of any kind: what stands before the block and the
// record after it stay, the reader finds what was written, a failure leaves the file as it was.
#include "audio/lyrics3_writer.h"
#include "core/text.h"
#include "fuzz/written_file.h"

namespace tunemeadow::fuzz {
namespace {

std::optional<Lyrics3Block> BlockIn(const std::string& bytes) {
  FileBytes file;
  file.OpenMemory(bytes);
  return FindLyrics3Block(file);
}

bool HasRecord(const std::string& bytes) {
  return bytes.size() >= 128 && bytes.substr(bytes.size() - 128).starts_with("TAG");
}

/// What stands before block and record, where the block is one before the record.
std::string Before(const std::string& bytes) {
  const std::optional<Lyrics3Block> block = BlockIn(bytes);
  return bytes.substr(0, block ? static_cast<std::size_t>(block->start) : bytes.size() - 128);
}

void CheckWritten(const std::string& old, const std::string& file, const Lyrics3& block) {
  const std::optional<Lyrics3Block> old_block = BlockIn(old);
  if (!HasRecord(old) || (old_block && !old_block->before_id3v1)) return;
  Require(Before(file) == Before(old), "the audio stays");
  Require(file.ends_with(old.substr(old.size() - 128)), "the record stays");
  FileBytes bytes;
  bytes.OpenMemory(file);
  Lyrics3 read;
  Require(ReadLyrics3Tag(bytes, read), "the block is walked to its end");
  Require(read.Lyrics3Lyr == Trim(block.Lyrics3Lyr) && read.Lyrics3Moo == Trim(block.Lyrics3Moo) &&
              read.Lyrics3Sit == Trim(block.Lyrics3Sit) && read.Lyrics3Aut == block.Lyrics3Aut &&
              read.Lyrics3Other == block.Lyrics3Other,
          "the values are read back");
}

void CheckKilled(const std::string& file) {
  const UnnamedFile real(file);
  const bool killed = KillLyrics3Tag(Writing(), real.Path()) == "OK";
  const std::string left = BytesOf(real.Path());
  Require(killed || left == file, "what is not removed stays");
  const std::optional<Lyrics3Block> block = BlockIn(file);
  Require(block || !killed, "only a block is removed");
  if (!killed || block->before_id3v1 != HasRecord(file)) return;
  const std::string record = HasRecord(file) ? file.substr(file.size() - 128) : "";
  Require(left == file.substr(0, static_cast<std::size_t>(block->start)) + record,
          "what is around the block stays");
}

void WriteOne(const std::string& old, const Lyrics3Texts& texts) {
  const UnnamedFile real(old);
  Lyrics3 block;
  (void)ReadLyrics3Tag(real.Path(), block);  // of a bad block what was read is kept
  bool ok = false;
  WriteTag(Writing(), real.Path(), texts, block, ok);
  const std::string file = BytesOf(real.Path());
  if (!ok) Require(file == old, "a failure leaves the file as it was");
  if (ok && file != old) CheckWritten(old, file, block);
  CheckKilled(old);
  if (file != old) CheckKilled(file);
}

void Run(std::string_view input) {
  Lyrics3Texts texts;
  texts.title = std::string(TakeNumber(input), 't');
  for (TagText Lyrics3Texts::*field :
       {&Lyrics3Texts::lyrics, &Lyrics3Texts::mood, &Lyrics3Texts::situation}) {
    texts.*field = TakeInput(input, TakeNumber(input));
  }
  const std::string old(input);
  WriteOne(old, texts);
  const std::string record = "TAG" + std::string(125, 'r');
  WriteOne(std::string(64, 'a') + old + record, texts);
  // The same as the fields of a block that is otherwise good.
  std::string digits = std::to_string(old.size() + 11);
  digits.insert(0, digits.size() < 6 ? 6 - digits.size() : 0, '0');
  const std::string block = "LYRICSBEGIN" + old + digits + "LYRICS200";
  WriteOne(std::string(143, 'a') + block, texts);
  WriteOne(std::string(64, 'a') + block + record, texts);
}

}  // namespace
}  // namespace tunemeadow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tunemeadow::fuzz::Run(tunemeadow::fuzz::Input(data, size));
  return 0;
}
