// SPDX-License-Identifier: GPL-3.0-or-later
#include "kill/stage.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <new>

#include "audio/file_bytes.h"
#include "audio/tag_writing.h"
#include "files/descriptor.h"
#include "files/durable_file.h"
#include "files/undo_journal.h"

namespace tunemeadow::kill {
namespace {

constexpr std::array<std::string_view, 2> kFolders = {"music", "program"};

/// Memory for one report, shared with the children.
Report& SharedReport() {
  static Report* const report = [] {
    void* memory =
        mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) abort();
    return new (memory) Report;
  }();
  return *report;
}

/// Runs `play` in a child. True if it came to its end.
template <typename Play>
bool InChild(Play play) {
  const pid_t child = fork();
  if (child < 0) abort();
  if (child == 0) {
    play();
    _exit(0);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// What lies in the folders of a stage, by its names below that.
std::vector<std::string> FileNames(const std::string& stage) {
  std::vector<std::string> names;
  for (const std::string_view folder : kFolders) {
    const std::string inside = std::string(folder) + "/";
    for (const auto& entry : std::filesystem::directory_iterator(stage + "/" + inside)) {
      names.push_back(inside + entry.path().filename().string());
    }
  }
  return names;
}

}  // namespace

Stage::Stage(std::string folder) : folder_(std::move(folder)) {
  for (const std::string_view name : kFolders) {
    std::filesystem::create_directories(folder_ + "/" + std::string(name));
  }
}

std::string Stage::NameOf(std::size_t file) { return "music/" + std::to_string(file) + ".mp3"; }

void Stage::Set(const Image& image) const {
  for (const std::string& name : FileNames(folder_)) {
    if (!image.contains(name)) std::filesystem::remove(folder_ + "/" + name);
  }
  const struct timespec hour_ago = {.tv_sec = time(nullptr) - 3600, .tv_nsec = 0};
  const struct timespec times[2] = {hour_ago, hour_ago};
  for (const auto& [name, bytes] : image) {
    // Not emptied first: some file systems write a file that was emptied to the disk at its close.
    const Descriptor file(open((folder_ + "/" + name).c_str(), O_WRONLY | O_CREAT, 0644));
    if (!WriteAllAt(file.get(), bytes, 0) ||
        ftruncate(file.get(), static_cast<off_t>(bytes.size())) != 0 ||
        futimens(file.get(), times) != 0) {
      perror("killsave");
      abort();
    }
  }
}

Image Stage::Get() const {
  Image image;
  for (const std::string& name : FileNames(folder_)) {
    image[name] = ReadWholeFile(folder_ + "/" + name).value_or("unreadable");
  }
  return image;
}

Image Stage::Begin(const Scenario& scenario) {
  Image image;
  for (std::size_t i = 0; i < scenario.files.size(); ++i)
    image[NameOf(i)] = scenario.files[i].bytes();
  return image;
}

/// What a session does with the files; the child.
void Stage::Play(const Scenario& scenario, std::uint32_t mask, Report& report) const {
  UndoJournal journal(folder_ + "/program");
  const auto path = [&](std::size_t file) { return folder_ + "/" + NameOf(file); };
  if (scenario.grouped) {
    journal.BeginGroup();
    for (std::size_t i = 0; i < scenario.files.size(); ++i) {
      FileBytes file;
      if (!file.Open(path(i))) continue;
      const std::vector<ByteRange> ranges = TagRanges(file);
      file.Close();
      journal.Prepare(path(i), ranges, kGroupGrowth);
    }
    (void)journal.SyncPrepared();
  }
  for (std::size_t i = 0; i < scenario.files.size(); ++i) {
    const std::vector<Step>& steps = scenario.files[i].steps;
    for (std::size_t step = 0; step < steps.size(); ++step) {
      const std::uint32_t bit = 1U << step;
      if ((mask & bit) == 0) continue;
      (steps[step](journal, path(i)) ? report.written : report.refused)[i] |= bit;
    }
    if (!scenario.grouped) continue;
    // As after "Ignore": the file is done with whatever steps have failed.
    journal.Done(path(i));
    report.done[i] = report.refused[i] == 0;
  }
  if (scenario.grouped) report.group_failed = !journal.EndGroup().empty();
  report.finished = true;
}

Report Stage::Run(const Scenario& scenario, const Blow& blow, Tape* tape,
                  std::uint32_t mask) const {
  Report& report = SharedReport();
  report = {};
  (void)InChild([&] {
    if (tape != nullptr) Arm(folder_, blow, tape);
    Play(scenario, mask, report);
  });
  return report;
}

bool Stage::Recover(const Blow& blow, Tape* tape) const {
  return InChild([&] {
    if (tape != nullptr) Arm(folder_, blow, tape);
    UndoJournal journal(folder_ + "/program", run);
    (void)journal.RollBack();
  });
}

}  // namespace tunemeadow::kill
