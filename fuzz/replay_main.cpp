// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a fuzz target over the files of the given folders, and over each file cut short, without
// libFuzzer. Fails if a folder is missing or empty, so that no corpus is lost unnoticed.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "fuzz/fuzz_target.h"

namespace {

constexpr std::size_t kCuts = 64;

// The bytes are copied to the heap without slack: the sanitizers then see the first byte too far.
void RunOne(const std::string& bytes) {
  const std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[bytes.size()]);
  std::copy(bytes.begin(), bytes.end(), exact.get());
  LLVMFuzzerTestOneInput(exact.get(), bytes.size());
}

int RunFolder(const char* folder) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    RunOne(bytes);
    const std::size_t step = std::max<std::size_t>(1, bytes.size() / kCuts);
    for (std::size_t cut = 0; cut < bytes.size(); cut += step) RunOne(bytes.substr(0, cut));
    ++count;
  }
  std::printf("%s: %d inputs\n", folder, count);
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    for (int i = 1; i < argc; ++i) {
      if (RunFolder(argv[i]) == 0) return 1;
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return argc > 1 ? 0 : 1;
}
