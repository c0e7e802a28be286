// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_menus.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "editing/file_run.h"

namespace tunemeadow {
namespace {

/// One kind of tag and what goes with its removal.
struct Removal {
  SavedTag tag;
  std::string_view status;  ///< shown meanwhile; may be empty
  RowUpdate update;
};

constexpr std::array kCellsWithoutId3v1 = {FieldText{TrackField::hasid3v1, "0"}};
constexpr std::array kCellsWithoutId3v2 = {FieldText{TrackField::hasid3v2, "0"},
                                           FieldText{TrackField::haspic, "0"}};

/// In the order in which mnuKillAllTags goes through them.
constexpr std::array kRemovals = {
    Removal{SavedTag::kID3v1,
            "",
            {.before = "Update MP3sTabelle set hasid3v1=0,datetimeoffile ='",
             .after = "' where UID=",
             .cells = kCellsWithoutId3v1}},
    Removal{SavedTag::kID3v2,
            "Updating file (removing ID3v2Tag), please wait...",
            {.before = "Update MP3sTabelle set hasid3v2=0,haspic=0 ,datetimeoffile ='",
             .after = "' where UID=",
             .cells = kCellsWithoutId3v2}},
    Removal{SavedTag::kLyrics3,
            "",
            {.before = "Update MP3sTabelle set datetimeoffile='",
             .after = "' where UID=",
             .cells = {}}}};

/// One menu command.
struct TagRemover {
  std::string_view question;
  std::span<const Removal> removals;
  std::string_view failure;
  std::string_view result;
};

constexpr TagRemover kKillAllTags = {.question = "Are you sure to remove the All tags of  ",
                                     .removals = kRemovals,
                                     .failure = " Tag can't be removed!!",
                                     .result = " Tags of "};
constexpr TagRemover kKillID3v1 = {.question = "Are you sure to remove the ID3v1 tags of  ",
                                   .removals = std::span(kRemovals).subspan(0, 1),
                                   .failure = "Tag can't be removed!!",
                                   .result = "ID3v1.x Tags of "};
constexpr TagRemover kKillID3v2 = {.question = "Are you sure to remove the ID3v2 tags of  ",
                                   .removals = std::span(kRemovals).subspan(1, 1),
                                   .failure = "Tag can't be removed!!",
                                   .result = "ID3v2.x Tags of "};
constexpr TagRemover kKillLyrics3 = {.question = "Are you sure to remove the LYRICS3 tags of  ",
                                     .removals = std::span(kRemovals).subspan(2, 1),
                                     .failure = "LYRICS3 Tag can't be removed!!",
                                     .result = "LYRICS3 Tags of "};

/// What follows the audio: all that a removal there overwrites or cuts off.
std::vector<ByteRange> RangesBehindAudio(FileBytes& file) {
  std::vector<ByteRange> ranges = TagRanges(file);
  std::erase_if(ranges, [](const ByteRange& range) { return range.offset == 0; });
  return ranges;
}

/// Taking the ID3v2 tag away moves the whole file: nothing is worth being prepared then.
SavePlan PlanOf(const TagRemover& remover) {
  const bool moves_audio = remover.removals.size() == 1 && !remover.removals[0].status.empty();
  return {.ranges = moves_audio ? nullptr : RangesBehindAudio, .growth = 0};
}

/// What stands in the way of a removal, as the person is asked about it.
MessageBox RemovalFailure(const TagRemover& remover, const std::string& result) {
  return {.text = result + "\n" + std::string(remover.failure) + "\n\nClick Ignore to ignore all",
          .title = "Error",
          .icon = Icon::kCritical,
          .buttons = Buttons::kAbortRetryIgnore};
}

/// The tags that one file has lost. Its row is told once the file is marked as done: were the
/// program killed in between, the file would get them back.
class LostTags {
 public:
  explicit LostTags(FileRun& run) : run_(run) {}

  void Add(const Removal& removal) {
    untold_.push_back(&removal);
    any_ = true;
  }
  void TellRow() {
    if (untold_.empty()) return;
    run_.FileDone();
    for (const Removal* removal : std::exchange(untold_, {})) run_.UpdateRow(removal->update);
  }
  [[nodiscard]] bool Any() const noexcept { return any_; }

 private:
  FileRun& run_;
  std::vector<const Removal*> untold_;
  bool any_ = false;
};

void RemoveOne(Workbench& bench, FileRun& run, const TagRemover& remover, const Removal& removal,
               const std::string& path, LostTags& lost) {
  bool removed = false;
  const auto try_once = [&]() -> std::optional<MessageBox> {
    if (!removal.status.empty()) bench.interaction.SetStatus(std::string(removal.status));
    const std::string result = bench.Tags().Remove(removal.tag, path, run.Writing());
    if (!removal.status.empty()) bench.interaction.SetStatus("");
    removed = result == "OK";
    if (removed || result == NoTagText(removal.tag)) return std::nullopt;
    lost.TellRow();  // a box can stand for long
    return RemovalFailure(remover, result);
  };
  if (run.Try(try_once) && removed) lost.Add(removal);
}

/// Number of files that have lost a tag.
std::size_t RemoveTags(Workbench& bench, const TagRemover& remover,
                       const std::vector<SelectedFile>& files) {
  std::size_t count = 0;
  FileRun run(bench, {.line = "working...", .save = PlanOf(remover)}, files);
  (void)run.Run([&](const SelectedFile& file) {
    LostTags lost(run);
    for (const Removal& removal : remover.removals) {
      RemoveOne(bench, run, remover, removal, file.path, lost);
      if (run.Stopped()) break;
    }
    lost.TellRow();
    if (lost.Any()) ++count;
  });
  return count;
}

void RunRemover(Workbench& bench, const TagRemover& remover) {
  const SelectedFiles selected = TakeSelectedFiles(bench);
  if (selected.items == 0) return;
  const std::string items = std::to_string(selected.items);
  const Answer answer =
      bench.interaction.ShowMessage({.text = std::string(remover.question) + items + " items(s)?",
                                     .title = "Tag Remover",
                                     .icon = Icon::kQuestion,
                                     .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes) return;
  const Stopwatch watch;
  const std::size_t count = RemoveTags(bench, remover, selected.files);
  RefreshPicture(bench, selected);
  TellTagResult(bench,
                std::string(remover.result) + std::to_string(count) + "/" + items +
                    " file(s) successfully removed.",
                watch);
}

}  // namespace

void mnuKillAllTags_Click(Workbench& bench) { RunRemover(bench, kKillAllTags); }
void mnuKillID3v11Tag_Click(Workbench& bench) { RunRemover(bench, kKillID3v1); }
void mnuKillID3v2xTag_Click(Workbench& bench) { RunRemover(bench, kKillID3v2); }
void mnuKillLyrics3_Click(Workbench& bench) { RunRemover(bench, kKillLyrics3); }

}  // namespace tunemeadow
