// SPDX-License-Identifier: GPL-3.0-or-later
// What reading costs per file, in the order of an import, over a folder of generated files in the
// page cache. "Each file" is the whole; the others show where it goes. The floor opens the file,
// asks for its length, reads head and tail and closes it.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "audio/file_bytes.h"
#include "audio/id3v2_reader.h"
#include "audio/lyrics3.h"
#include "audio/mdl_ID3.h"
#include "audio/mp3reader.h"
#include "support/mp3_builder.h"

namespace tunemeadow {
namespace {

constexpr int kFiles = 2000;

std::string Noise(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random() % 255);  // no sync byte
  return bytes;
}

/// A file of about 24 KB, one in ten with a picture of 60 KB, one in twenty with a Xing header.
std::string OneFile(int number) {
  const auto seed = static_cast<unsigned>(number);
  const std::string n = std::to_string(number);
  TagFields fields = {{"TPE1", "An Artist of Length"},
                      {"TIT2", "A Title with Number " + n},
                      {"TALB", "The Album in Question"},
                      {"TYER", "1999"},
                      {"TRCK", n},
                      {"TCON", "(17)Rock"},
                      {"COMM", "a comment about nothing at all"},
                      {"TENC", "an encoder 3.90"},
                      {"TCOM", "Some Composer"},
                      {"WXXX", "http://www.artist.example/"}};
  Id3v2Options options{.padding = number % 3 * 800U};
  if (number % 10 == 0) options.more_frames = PictureFrame(FakeJpeg() + Noise(60000, seed));
  Mp3File file;
  file.Id3v2(fields, options);
  if (number % 20 == 1) file.Xing(50);
  return file.Frames(52)
      .Id3v1({.title = "A Title with Number " + n,
              .artist = "An Artist",
              .album = "The Album",
              .year = "1999",
              .comment = "nothing",
              .track = number % 99 + 1,
              .genre = 17})
      .Build();
}

/// The generated folder, made once and removed at the end.
class Library {
 public:
  Library() : folder_((std::filesystem::temp_directory_path() / "readers-XXXXXX").string()) {
    if (::mkdtemp(folder_.data()) == nullptr) std::abort();
    for (int i = 0; i < kFiles; ++i) {
      paths.push_back(folder_ + "/An Artist of Length - The Album - " + std::to_string(i) + ".mp3");
      const std::string bytes = OneFile(i);
      std::ofstream(paths.back(), std::ios::binary)
          .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
  }
  ~Library() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  std::vector<std::string> paths;

 private:
  std::string folder_;
};

const std::vector<std::string>& Paths() {
  static const Library library;
  return library.paths;
}

/// Runs `each` on every file, opened before, and counts files.
template <typename Each>
void OverOpenFiles(benchmark::State& state, Each each) {
  FileBytes file;
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    if (!file.Open(Paths()[next])) state.SkipWithError("a file can't be opened");
    each(file);
    next = (next + 1) % Paths().size();
  }
  state.SetItemsProcessed(state.iterations());
}

void Floor(benchmark::State& state) {
  std::vector<char> buffer(4096);
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const int file = ::open(Paths()[next].c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (::fstat(file, &status) != 0) state.SkipWithError("a file can't be opened");
    benchmark::DoNotOptimize(::pread(file, buffer.data(), 4096, 0));
    benchmark::DoNotOptimize(::pread(file, buffer.data(), 256, status.st_size - 256));
    ::close(file);
    next = (next + 1) % Paths().size();
  }
}
BENCHMARK(Floor);

void OpenOnly(benchmark::State& state) {
  OverOpenFiles(state, [](FileBytes& file) { benchmark::DoNotOptimize(file.Length()); });
}
BENCHMARK(OpenOnly);

void Id3v2Only(benchmark::State& state) {
  Mp3Info info;
  OverOpenFiles(state, [&](FileBytes& file) {
    benchmark::DoNotOptimize(ReadID3v2Tag(file, ID3v2Versions::kTwoToFour, info));
  });
}
BENCHMARK(Id3v2Only);

void AnalysisOnly(benchmark::State& state) {
  Mp3Info info;
  OverOpenFiles(state, [&](FileBytes& file) { ReadMp3Info(file, true, true, info); });
}
BENCHMARK(AnalysisOnly);

void EachFile(benchmark::State& state) {
  Mp3Info info;
  ID3v1Tag tag;
  Lyrics3 lyrics;
  OverOpenFiles(state, [&](FileBytes& file) {
    if (HasID3v2Tag(file)) {
      benchmark::DoNotOptimize(ReadID3v2Tag(file, ID3v2Versions::kTwoToFour, info));
    }
    const bool has_id3v1 = ReadID3v1Tag(file, tag);
    ReadMp3Info(file, has_id3v1, true, info);
    benchmark::DoNotOptimize(ReadLyrics3Tag(file, lyrics));
  });
}
BENCHMARK(EachFile);

void NameSearchInPicture(benchmark::State& state) {
  const std::string tag = Id3v2Tag(PictureFrame(FakeJpeg() + Noise(20000000, 1)));
  Mp3Info info;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(ParseID3v2Tag(tag, ID3v2Versions::kAny, info));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(tag.size()));
}
BENCHMARK(NameSearchInPicture)->Unit(benchmark::kMillisecond);

void SyncSearchInNoise(benchmark::State& state) {
  const std::string noise = Noise(50000000, 1);
  FileBytes file;
  file.OpenMemory(noise);
  Mp3Info info;
  for ([[maybe_unused]] auto _ : state) ReadMp3Info(file, false, true, info);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(noise.size()));
}
BENCHMARK(SyncSearchInNoise)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tunemeadow

BENCHMARK_MAIN();
