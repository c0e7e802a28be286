// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/paths.h"
#include "editing/chosen_picture.h"
#include "editing/file_run.h"
#include "editing/tag_menus.h"

namespace tunemeadow {
namespace {

/// One run through the selection, in the window of a job.
class ImageJob {
 public:
  /// The audio moves.
  ImageJob(Workbench& bench, const SelectedFiles& selected)
      : bench_(bench),
        run_(bench,
             {.job =
                  FileRunJob{.title = "Image adding/removing", .cancelled = "ERROR: Job cancelled"},
              .save = SavePlan{}},
             selected.files) {}

  /// Calls `work(job, file)` for each file, which is true where the file was changed as wanted: its
  /// row then takes `update`. Number of those files.
  template <typename Work>
  std::size_t Run(const RowUpdate& update, Work work) {
    std::size_t count = 0;
    (void)run_.Run([&](const SelectedFile& file) {
      run_.BeginFile();
      const bool changed = work(*this, file);
      run_.FileDone();
      if (!changed) return;
      ++count;
      run_.UpdateRow(update);
    });
    return count;
  }

  void Log(const std::string& line) { bench_.interaction.AddJobLine(line); }
  void LogError(const std::string& path, const std::string& error) {
    Log("ERROR: " + DisplayPath(path) + " : " + error);
  }
  [[nodiscard]] TagWriting& Writing() noexcept { return run_.Writing(); }
  void SetStatus(const std::string& text) { bench_.interaction.SetStatus(text); }

 private:
  Workbench& bench_;
  FileRun run_;
};

/// Why no image can be written into the file; empty if nothing prevents it.
std::string WhyNoImage(Workbench& bench, const std::string& path, PictureState state,
                       TrackTexts& texts) {
  if (state == PictureState::kEmptyFile) return "the file is empty";
  // The image was there when the job began. Without it the tag would be written all the same.
  if (ObjectionToPicture(bench.PictureFile)) return "the image can't be read any more";
  if (state == PictureState::kUnreadable || !bench.Tags().ReadTexts(path, texts)) {
    return "the file can't be read";
  }
  return {};
}

bool AddImage(Workbench& bench, ImageJob& job, const std::string& path) {
  const PictureState state = bench.Tags().StateOfPicture(path);
  if (state == PictureState::kHasOne) {
    job.Log(DisplayPath(path) + " already has an image.");
    return false;
  }
  TrackTexts texts;
  if (const std::string why = WhyNoImage(bench, path, state, texts); !why.empty()) {
    job.LogError(path, why);
    return false;
  }
  job.SetStatus("Updating file (saving ID3v2Tag), please wait...");
  const std::string result = bench.Tags().WritePicture(path, texts, job.Writing());
  job.SetStatus("");
  if (result != "OK") {
    job.LogError(path, result);
    return false;
  }
  job.Log("OK: " + DisplayPath(path) + " : image successful saved.");
  return true;
}

bool RemoveImage(Workbench& bench, ImageJob& job, const std::string& path) {
  job.SetStatus("Updating file (removing Image from ID3v2Tag), please wait...");
  const std::string result = bench.Tags().RemovePictures(path, job.Writing());
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

}  // namespace

void mnuAddImagetoFile_Click(Workbench& bench) {
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

void mnuRemoveImagefromfile_Click(Workbench& bench) {
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
      ImageJob(bench, selected)
          .Run(kPictureRemoved, [&bench](ImageJob& run, const SelectedFile& file) {
            return RemoveImage(bench, run, file.path);
          });
  RefreshPicture(bench, selected);
  TellTagResult(bench, "Images from " + std::to_string(count) + "/" + items + " file(s) removed.",
                watch);
}

}  // namespace tunemeadow
