// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/tag_menus.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/id3v1_writer.h"
#include "audio/id3v2_writer.h"
#include "audio/lyrics3_writer.h"
#include "editing/row_update.h"
#include "editing/save_group.h"
#include "run/batch.h"

namespace tunemeadow {
namespace {

/// One kind of tag and what goes with its removal.
struct Removal {
  std::string (*remove)(TagWriting& writing, const std::string& path);
  std::string_view none;    ///< result that no such tag is there
  std::string_view status;  ///< shown meanwhile; may be empty
  RowUpdate update;
};

constexpr std::array kCellsWithoutId3v1 = {FieldText{Field::hasid3v1, "0"}};
constexpr std::array kCellsWithoutId3v2 = {FieldText{Field::hasid3v2, "0"},
                                           FieldText{Field::haspic, "0"}};

/// In the order in which mnuKillAllTags goes through them.
constexpr std::array kRemovals = {
    Removal{RemoveID3v1Tag,
            kNoID3v1Tag,
            "",
            {.before = "Update MP3sTabelle set hasid3v1=0,datetimeoffile ='",
             .after = "' where UID=",
             .cells = kCellsWithoutId3v1}},
    Removal{RemoveID3v2Tag,
            kNoID3v2Tag,
            "Updating file (removing ID3v2Tag), please wait...",
            {.before = "Update MP3sTabelle set hasid3v2=0,haspic=0 ,datetimeoffile ='",
             .after = "' where UID=",
             .cells = kCellsWithoutId3v2}},
    Removal{KillLyrics3Tag,
            kNoLyrics3Tag,
            "",
            {.before = "Update MP3sTabelle set datetimeoffile ='",
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

/// What stands behind the audio: all that a removal there overwrites or cuts off.
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

enum class Removed { kYes, kNo, kAborted };

class RemovalRun {
 public:
  RemovalRun(Workbench& bench, const TagRemover& remover, const SelectedFiles& selected)
      : bench_(bench),
        remover_(remover),
        selected_(selected),
        batch_(bench.session, bench.interaction, "working...",
               std::max<std::int64_t>(static_cast<std::int64_t>(selected.files.size()), 1)),
        group_(bench.session.journal, batch_, selected.Paths(), PlanOf(remover)),
        writing_(bench.session.journal) {
    writing_.yield = [&bench] { bench.interaction.Yield(); };
  }

  /// Number of files that have lost a tag.
  std::size_t Run() {
    std::size_t count = 0;
    for (std::size_t i = 0; i < selected_.files.size(); ++i) {
      if (!batch_.Step(static_cast<std::int64_t>(i))) break;
      const bool go_on = RemoveFromFile(i, count);
      group_.FileDone(i);
      if (!go_on) break;
    }
    return count;
  }

 private:
  /// False: the person ended the work.
  bool RemoveFromFile(std::size_t index, std::size_t& count) {
    bool counted = false;
    for (const Removal& removal : remover_.removals) {
      const Removed removed = RemoveOne(removal, index);
      if (removed == Removed::kAborted) return false;
      if (removed == Removed::kYes && !counted) ++count;
      counted = counted || removed == Removed::kYes;
    }
    return true;
  }

  Removed RemoveOne(const Removal& removal, std::size_t index) {
    const SelectedFile& file = selected_.files[index];
    for (;;) {
      group_.BeginFile(index);
      if (!removal.status.empty()) bench_.interaction.SetStatus(std::string(removal.status));
      const std::string result = removal.remove(writing_, file.path);
      if (!removal.status.empty()) bench_.interaction.SetStatus("");
      if (result == removal.none) return Removed::kNo;
      if (result == "OK") {
        if (const auto box = TryUpdateRow(bench_, removal.update, file, rows_)) {
          group_.Close();
          batch_.ShowMessage(*box);
        }
        return Removed::kYes;
      }
      if (ignore_all_) return Removed::kNo;
      const Answer answer = AskWhatNow(result);
      if (answer == Answer::kAbort) return Removed::kAborted;
      if (answer == Answer::kRetry) continue;
      ignore_all_ = true;
      return Removed::kNo;
    }
  }

  Answer AskWhatNow(const std::string& result) {
    group_.Close();
    return batch_.ShowMessage(
        {.text = result + "\n" + std::string(remover_.failure) + "\n\nClick Ignore to ignore all",
         .title = "Error",
         .icon = Icon::kCritical,
         .buttons = Buttons::kAbortRetryIgnore});
  }

  Workbench& bench_;
  const TagRemover& remover_;
  const SelectedFiles& selected_;
  Batch batch_;
  SaveGroup group_;
  TagWriting writing_;
  const TrackRows rows_{bench_};
  bool ignore_all_ = false;
};

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
  const std::size_t count = RemovalRun(bench, remover, selected).Run();
  RefreshPicture(bench, selected);
  TellTagResult(bench,
                std::string(remover.result) + std::to_string(count) + "/" + items +
                    " file(s) successfully removed.",
                watch);
}

void RunRemoverAtEdge(Workbench& bench, const TagRemover& remover) {
  try {
    RunRemover(bench, remover);
  } catch (const std::exception& error) {
    bench.interaction.ShowMessage(
        {.text = error.what(), .title = "Error", .icon = Icon::kCritical});
  }
}

}  // namespace

void mnuKillAllTags_Click(Workbench& bench) { RunRemoverAtEdge(bench, kKillAllTags); }
void mnuKillID3v11Tag_Click(Workbench& bench) { RunRemoverAtEdge(bench, kKillID3v1); }
void mnuKillID3v2xTag_Click(Workbench& bench) { RunRemoverAtEdge(bench, kKillID3v2); }
void mnuKillLyrics3_Click(Workbench& bench) { RunRemoverAtEdge(bench, kKillLyrics3); }

}  // namespace tunemeadow
