// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/picture_panel.h"

#include <cstdio>
#include <string_view>

#include "core/paths.h"
#include "editing/chosen_picture.h"
#include "editing/row_update.h"
#include "files/durable_file.h"
#include "run/busy.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kPictureFolderKey = "ImageToSave";

/// One file is being written because the person asked for it, which the status line tells.
class OneFileAtWork {
 public:
  OneFileAtWork(Workbench& bench, const std::string& status) : bench_(bench) {
    bench_.interaction.SetStatus(status);
  }
  ~OneFileAtWork() { bench_.interaction.SetStatus("Ready."); }
  OneFileAtWork(const OneFileAtWork&) = delete;
  OneFileAtWork& operator=(const OneFileAtWork&) = delete;

 private:
  Workbench& bench_;
  Busy busy_{bench_.session, bench_.interaction, {.closed_window = true}};
};

void TellPictureError(Workbench& bench, const std::string& text) {
  bench.interaction.ShowMessage({.text = text, .title = "Error", .icon = Icon::kExclamation});
}

void CorrectRowAndPane(Workbench& bench, const RowUpdate& update) {
  const SelectedFile file = {.uid = bench.details.uid,
                             .path = bench.details.texts[TrackField::location]};
  const auto box = TryUpdateRow(bench, update, file, TrackRows(bench));
  if (box) bench.interaction.ShowMessage(*box);
  ShowPic(bench, file.path);
}

// --- Delete --------------------------------------------------------------------------------------

std::string RemoveShownPicture(Workbench& bench, const std::string& path) {
  const OneFileAtWork work(bench, "Updating file (removing Image from ID3v2Tag), please wait...");
  TagWriting writing(bench.session.journal);
  writing.yield = [&bench] { bench.interaction.KeepPainting(); };
  return bench.Tags().RemovePictures(path, writing);
}

void DeletePicture(Workbench& bench) {
  const std::string path = bench.details.texts[TrackField::location];
  const std::string result = RemoveShownPicture(bench, path);
  if (result == "OK") {
    CorrectRowAndPane(bench, kPictureRemoved);
    return;
  }
  ShowPic(bench, path);
  if (result != kNoID3v2Picture) TellPictureError(bench, result);
}

// --- Add -----------------------------------------------------------------------------------------

/// Lets the person choose; false if there is nothing to write.
bool ChoosePicture(Workbench& bench) {
  cINI& ini = bench.session.ini;
  const auto chosen = bench.interaction.ChooseFile(
      {.title = "Add Image",
       .filter = "JPEG Images (*.jpg)",
       .start = ini.GetString(kConfigSection, kPictureFolderKey, "", 0),
       .images = true});
  if (!chosen || chosen->empty()) return false;
  ini.SaveString(kConfigSection, kPictureFolderKey, FolderPart(*chosen));
  if (const auto objection = ObjectionToPicture(*chosen)) {
    bench.interaction.ShowMessage(*objection);
    return false;
  }
  bench.PictureFile = *chosen;
  return true;
}

/// The texts of the panels. An import notes the number 0 for none; a save leaves it out, but for
/// one that the person has typed.
TrackTexts TextsOfPanels(Workbench& bench) {
  const DetailEditor& details = bench.details;
  TrackTexts texts = details.texts;
  std::string& track = texts[TrackField::trackno];
  const ResultList& list = bench.ListInView();
  const auto row = list.RowOfUid(details.uid);
  const bool noted = row && list.Cell(*row, TrackField::trackno) == track;
  if (track == "0" && (noted || !details.DetailsChanged)) track.clear();
  return texts;
}

/// "OK", or what failed. `losses` tells what the tag could not hold.
std::string WriteChosenPicture(Workbench& bench, TagLosses& losses) {
  const DetailEditor& details = bench.details;
  // A file of no bytes would stay without a tag, and its row would tell of a picture.
  const PictureState state = bench.Tags().StateOfPicture(details.texts[TrackField::location]);
  if (state == PictureState::kEmptyFile) return "The file is empty.";
  const OneFileAtWork work(bench, "Updating file (saving ID3v2Tag), please wait...");
  TagWriting writing(bench.session.journal);
  writing.yield = [&bench] { bench.interaction.KeepPainting(); };
  SetPicture(writing, bench.PictureFile);
  std::string result =
      bench.Tags().WritePicture(details.texts[TrackField::location], TextsOfPanels(bench), writing);
  losses = writing.losses;
  return result;
}

void AddPicture(Workbench& bench) {
  if (!ChoosePicture(bench)) return;
  TagLosses losses;
  const std::string result = WriteChosenPicture(bench, losses);
  if (result != "OK") {
    TellPictureError(bench, "ID3v2-Tag can't be written!\n" + result);
    return;
  }
  CorrectRowAndPane(bench, kPictureAdded);
  TellLosses(bench, losses);
}

}  // namespace

std::string AddPictureCaption(const DetailEditor& details) {
  return details.picture.data.empty() ? "add" : "del";
}

void cmdAddpic_Click(Workbench& bench) {
  const DetailEditor& details = bench.details;
  if (!details.enabled || details.save_all ||
      !HasExtension(details.texts[TrackField::location], "mp3"))
    return;
  details.picture.data.empty() ? AddPicture(bench) : DeletePicture(bench);
}

void cmdSavePic_Click(Workbench& bench) {
  const ID3v2Picture& picture = bench.details.picture;
  if (picture.data.empty()) return;
  const std::string folder = bench.session.ini.GetString(kConfigSection, kPictureFolderKey, "", 0);
  const std::string name = "pic." + picture.extension;
  const auto chosen =
      bench.interaction.ChooseFile({.title = "Save Image",
                                    .filter = "Graphic File (*." + picture.extension + ")",
                                    .start = folder.empty() ? name : JoinPath(folder, name),
                                    .for_saving = true});
  if (!chosen || chosen->empty()) return;
  if (!ReplaceFile(*chosen, picture.data)) {
    TellPictureError(bench, DisplayPath(*chosen) + " can't be written!");
  }
}

void RemovePictureFile(Workbench& bench) {
  std::string& file = bench.details.picture_file;
  if (!file.empty()) std::remove(file.c_str());
  file.clear();
}

}  // namespace tunemeadow
