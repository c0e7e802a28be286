// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "audio/id3v2_reader.h"
#include "audio/id3v2_writer.h"
#include "core/paths.h"
#include "editing/chosen_picture.h"
#include "editing/row_update.h"
#include "editing/save_group.h"
#include "editing/tag_menus.h"
#include "editing/tag_values.h"
#include "run/batch.h"

namespace tunemeadow {
namespace {

/// The window of the job and what stands behind it. One object is one run through the selection.
class ImageJob {
 public:
  ImageJob(Workbench& bench, const SelectedFiles& selected)
      : bench_(bench),
        selected_(selected),
        batch_(bench.session, bench.interaction, "", 0),
        group_(bench.session.journal, batch_, selected.Paths(), {}),
        writing_(bench.session.journal) {
    writing_.yield = [&bench] { bench.interaction.Yield(); };
    bench_.interaction.ShowJob("Image adding/removing", std::max<std::int64_t>(Count(), 1));
  }
  ~ImageJob() { bench_.interaction.EndJob(); }
  ImageJob(const ImageJob&) = delete;
  ImageJob& operator=(const ImageJob&) = delete;

  /// Calls `work(job, file)` for each file, which is true where the file was changed as wanted: its
  /// row then takes `update`. Number of those files.
  template <typename Work>
  std::size_t Run(const RowUpdate& update, Work work) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < selected_.files.size(); ++i) {
      const SelectedFile& file = selected_.files[i];
      bench_.interaction.SetJobStep(static_cast<std::int64_t>(i), DisplayPath(file.path), "");
      bench_.interaction.Yield();
      if (bench_.session.CancelRequested) {
        Log("ERROR: Job cancelled");
        return count;
      }
      group_.BeginFile(i);
      const bool changed = work(*this, file);
      group_.FileDone(i);
      if (!changed) continue;
      ++count;
      if (const auto box = TryUpdateRow(bench_, update, file, rows_)) {
        group_.Close();
        batch_.ShowMessage(*box);
      }
    }
    bench_.interaction.SetJobStep(Count(), "", "");
    return count;
  }

  void Log(const std::string& line) { bench_.interaction.AddJobLine(line); }
  void LogError(const std::string& path, const std::string& error) {
    Log("ERROR: " + DisplayPath(path) + " : " + error);
  }
  [[nodiscard]] TagWriting& Writing() noexcept { return writing_; }
  void SetStatus(const std::string& text) { bench_.interaction.SetStatus(text); }

 private:
  [[nodiscard]] std::int64_t Count() const {
    return static_cast<std::int64_t>(selected_.files.size());
  }

  Workbench& bench_;
  const SelectedFiles& selected_;
  Batch batch_;
  SaveGroup group_;
  TagWriting writing_;
  const TrackRows rows_{bench_};
};

enum class PictureState { kNone, kHasOne, kEmptyFile, kUnreadable };

/// By the file's own tag: its row may be older than it.
PictureState PictureStateOf(const std::string& path) {
  FileBytes file;
  if (!file.Open(path)) return PictureState::kUnreadable;
  if (file.Length() == 0) return PictureState::kEmptyFile;
  Mp3Info own;
  const bool has = ReadID3v2Tag(file, ID3v2Versions::kAny, own) == "OK" && own.HasPicture;
  return has ? PictureState::kHasOne : PictureState::kNone;
}

/// Why no image can be written into the file; empty where nothing speaks against it.
std::string WhyNoImage(Workbench& bench, const std::string& path, PictureState state,
                       Mp3Info& info) {
  if (state == PictureState::kEmptyFile) return "the file is empty";
  // The image was there when the job began. Without it the tag would be written all the same.
  if (ObjectionToPicture(bench.PictureFile)) return "the image can't be read any more";
  if (state == PictureState::kUnreadable ||
      !FillInfoFromFile(path, bench.session.preferences, info)) {
    return "the file can't be read";
  }
  return {};
}

bool AddImage(Workbench& bench, ImageJob& job, const std::string& path) {
  const PictureState state = PictureStateOf(path);
  if (state == PictureState::kHasOne) {
    job.Log(DisplayPath(path) + " already has an image.");
    return false;
  }
  Mp3Info info;
  if (const std::string why = WhyNoImage(bench, path, state, info); !why.empty()) {
    job.LogError(path, why);
    return false;
  }
  job.SetStatus("Updating file (saving ID3v2Tag), please wait...");
  const std::string result = WriteID3v2Tag(job.Writing(), path, true, info);
  job.SetStatus("");
  if (result != "OK") {
    job.LogError(path, result);
    return false;
  }
  job.Log("OK: " + DisplayPath(path) + " : image successful saved.");
  return true;
}

bool RemoveImage(ImageJob& job, const std::string& path) {
  job.SetStatus("Updating file (removing Image from ID3v2Tag), please wait...");
  const std::string result = RemoveID3v2Picture(job.Writing(), path);
  job.SetStatus("");
  if (result == kNoID3v2Picture) {
    job.Log(DisplayPath(path) + " has no image.");
  } else if (result != "OK") {
    job.LogError(path, result);
  }
  return result == "OK";
}

bool WantsImageJob(Workbench& bench, const MessageBox& question) {
  return bench.interaction.ShowMessage(question) == Answer::kYes;
}

void AddImages(Workbench& bench) {
  const SelectedFiles selected = TakeSelectedFiles(bench);
  if (selected.items == 0) return;
  if (bench.PictureFile.empty()) {
    bench.interaction.ShowMessage(
        {.text = "No image selected!", .title = "Add Image", .icon = Icon::kExclamation});
    return;
  }
  if (const auto objection = ObjectionToPicture(bench.PictureFile)) {
    bench.interaction.ShowMessage(*objection);
    return;
  }
  const std::string items = std::to_string(selected.items);
  if (!WantsImageJob(bench,
                     {.text = "Are you sure to add the selected image to " + items + " items(s)?",
                      .title = "Add Image",
                      .icon = Icon::kQuestion,
                      .buttons = Buttons::kYesNo})) {
    return;
  }
  const Stopwatch watch;
  TagLosses losses;
  std::size_t count = 0;
  {
    ImageJob job(bench, selected);
    SetPicture(job.Writing(), bench.PictureFile);
    count = job.Run(kPictureAdded, [&bench](ImageJob& run, const SelectedFile& file) {
      return AddImage(bench, run, file.path);
    });
    losses = job.Writing().losses;
  }
  RefreshPicture(bench, selected);
  TellTagResult(bench,
                "Images to " + std::to_string(count) + "/" + items + " file(s) successfully added.",
                watch);
  TellLosses(bench, losses);
}

void RemoveImages(Workbench& bench) {
  const SelectedFiles selected = TakeSelectedFiles(bench);
  if (selected.items == 0) return;
  const std::string items = std::to_string(selected.items);
  if (!WantsImageJob(bench, {.text = "Are you sure to remove images of " + items + " items(s)?",
                             .icon = Icon::kQuestion,
                             .buttons = Buttons::kYesNo})) {
    return;
  }
  const Stopwatch watch;
  const std::size_t count =
      ImageJob(bench, selected).Run(kPictureRemoved, [](ImageJob& run, const SelectedFile& file) {
        return RemoveImage(run, file.path);
      });
  RefreshPicture(bench, selected);
  TellTagResult(bench, "Images from " + std::to_string(count) + "/" + items + " file(s) removed.",
                watch);
}

void RunImagesAtEdge(Workbench& bench, void (*run)(Workbench&)) {
  try {
    run(bench);
  } catch (const std::exception& error) {
    bench.interaction.ShowMessage(
        {.text = error.what(), .title = "Error", .icon = Icon::kCritical});
  }
}

}  // namespace

void mnuAddImagetoFile_Click(Workbench& bench) { RunImagesAtEdge(bench, AddImages); }
void mnuRemoveImagefromfile_Click(Workbench& bench) { RunImagesAtEdge(bench, RemoveImages); }

}  // namespace tunemeadow
