// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/dates.h"
#include "core/paths.h"
#include "core/text.h"
#include "editing/mass_save.h"
#include "editing/row_update.h"
#include "editing/save_group.h"
#include "editing/save_rules.h"
#include "editing/save_statement.h"
#include "editing/saved_row.h"
#include "editing/tag_steps.h"
#include "files/file_facts.h"
#include "run/busy.h"
#include "store/database.h"
#include "tracks/cd_archive_path.h"
#include "tracks/tag_texts.h"
#include "tracks/track_field_table.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kLongestText = 255;

/// Name in the status line and in the box of each tag.
struct SavedTagName {
  std::string_view status, box;
};
constexpr std::array<SavedTagName, 3> kSavedTagNames = {{
    {"ID3v2Tag", "ID3v2"},
    {"ID3v1Tag", "ID3v1"},
    {"LYRICS3Tag", "LYRICS3"},
}};

const SavedTagName& NameOf(SavedTag tag) { return kSavedTagNames[static_cast<std::size_t>(tag)]; }

/// At its end the panels show what the save has made of their texts. Made before the window is
/// closed to input, so that the fields are open again by then.
struct ShowsSavedTexts {
  Workbench& bench;
  ~ShowsSavedTexts() { bench.Watcher().DetailsChanged(); }
};

class SingleSave {
 public:
  explicit SingleSave(Workbench& bench) : bench_(bench) {}

  void Run() {
    if (details_.uid == 0) return;
    if (!FileIsThere() || !TakeTrack()) return;
    const ShowsSavedTexts shows{bench_};
    const Busy busy(bench_.session, bench_.interaction, {.closed_window = true});
    ApplyRules();
    if (SaveTags()) SaveTexts();
    TellLosses(bench_, losses_);
  }

 private:
  /// A row whose file is gone stays as it is while the tags belong to the save. What is burnt on a
  /// disc takes no tags.
  bool FileIsThere() {
    const std::string& path = details_.texts[TrackField::location];
    if (!preferences_.chkSaveTags || bCheckCDArchive(path, preferences_)) return true;
    if (MyFileExists(path)) return true;
    if (preferences_.chkWarn) {
      bench_.interaction.ShowMessage(
          {.text = "The file " + DisplayPath(path) + " was not found.", .title = "File not found"});
    }
    return false;
  }

  bool TakeTrack() {
    const std::optional<std::string> track = TrackToSave(details_.texts[TrackField::trackno]);
    if (track) {
      details_.texts[TrackField::trackno] = *track;
      return true;
    }
    bench_.interaction.ShowMessage(
        {.text = "Tracknumber is not a valid number! (<256)\n\n", .title = "Error!"});
    return false;
  }

  /// Whether there is anything to be put in order.
  [[nodiscard]] bool HoldsTexts() const {
    for (const TrackField field : {TrackField::Artist, TrackField::Songname, TrackField::year,
                                   TrackField::quality, TrackField::album}) {
      if (!Trim(details_.texts[field]).empty()) return true;
    }
    return !details_.texts[TrackField::genrereal].empty();
  }

  /// Without texts the ID3v1 record stays empty.
  void ApplyRules() {
    holds_texts_ = HoldsTexts();
    if (!holds_texts_) return;
    for (const TrackFieldRow& row : kTrackFieldTable) {
      if (!row.editor.ruled) continue;
      std::string& text = details_.texts[row.field];
      text = ApplySaveRules(std::move(text), preferences_);
    }
    if (preferences_.chkAutoComment)
      details_.texts[TrackField::Comment] = preferences_.txtautocomment;
  }

  /// False: the person aborted the save.
  bool SaveTags() {
    // The details may be looked at while the window lives; the save keeps to what it began with.
    const std::string path = details_.texts[TrackField::location];
    if (!preferences_.chkSaveTags || !WritesTags(path, preferences_)) return true;
    UndoJournal& journal = bench_.session.journal;
    TagWriting writing(journal);
    writing.yield = [this] { bench_.interaction.Yield(); };
    const TrackTexts texts = details_.texts;
    file_written_ = true;
    const TagStepTalk talk = {
        .begins = [this](SavedTag tag) { TellStep(tag); },
        .failed =
            [&](SavedTag tag) {
              ShowFault(bench_, path, writing.fault);
              return AskAboutFailure(tag);
            },
    };
    group_.emplace(
        journal, [this](const MessageBox& box) { bench_.interaction.ShowMessage(box); },
        std::vector{path}, SavePlan{.ranges = TagRanges, .growth = kGrowthOfTags});
    group_->BeginFile(0);
    done_ =
        WriteTags({path, {texts, !holds_texts_}, true}, preferences_, bench_.Tags(), writing, talk);
    if (!done_.aborted) group_->FileDone(0);
    group_.reset();
    bench_.interaction.SetStatus("Ready.");
    losses_ = writing.losses;
    return !done_.aborted;
  }

  void TellStep(SavedTag tag) {
    bench_.interaction.SetStatus("Updating file (saving " + std::string(NameOf(tag).status) +
                                 "), please wait...");
  }

  /// What was written is safe while the box stands, and a new try begins with the file as it is by
  /// then.
  Answer AskAboutFailure(SavedTag tag) {
    if (!preferences_.chkWarn) return PassOver();
    group_->Close();
    const Answer answer = bench_.interaction.ShowMessage(
        {.text = std::string(NameOf(tag).box) + "-Tag can't be written!",
         .title = "Error",
         .buttons = Buttons::kAbortRetryIgnore});
    if (answer != Answer::kAbort) group_->BeginFile(0);
    return answer == Answer::kIgnore ? PassOver() : answer;
  }

  Answer PassOver() {
    file_written_ = false;
    return Answer::kIgnore;
  }

  void SaveTexts() {
    EscapeTexts();
    CutTexts();
    if (!SaveRow()) return;
    details_.DetailsKeyed = false;
    details_.DetailsChanged = false;
    StoreCells();
    const bool left_out = !file_written_.value_or(true);
    bench_.interaction.SetStatus(
        (left_out ? "Saved, but for a tag that could not be written: " : "Saved: ") +
        details_.texts[TrackField::Songname] + ".");
  }

  void EscapeTexts() {
    for (const TrackFieldRow& row : kTrackFieldTable) {
      if (!row.editor.escaped) continue;
      std::string& text = details_.texts[row.field];
      text = EscapeEditorText(text, bench_.session.quote);
    }
  }

  void CutTexts() {
    for (const TrackFieldRow& row : kTrackFieldTable) {
      if (!row.editor.cut) continue;
      std::string& text = details_.texts[row.field];
      const std::size_t length = Left(text, kLongestText).size();
      if (length < text.size()) ++losses_.cut_texts;
      text.resize(length);
    }
  }

  /// False, with nothing changed, where the store refuses the statement.
  bool SaveRow() {
    try {
      const TrackTexts texts = TextsOfRow();
      std::string statement;
      BuildSaveStatement(texts, details_.uid, bench_.session.quote, statement);
      bench_.session.connection.Execute(statement);
      details_.texts = texts;
      return true;
    } catch (const DatabaseError& error) {
      bench_.interaction.ShowMessage({.text = error.WithStatement(), .icon = Icon::kCritical});
      return false;
    }
  }

  /// The texts of the editor and what the save knows beside them.
  TrackTexts TextsOfRow() {
    TrackTexts texts = details_.texts;
    texts[TrackField::datetimeofdbupdate] = Now();
    texts[TrackField::datetimeoffile] =
        FileTimeOfRow(bench_.session, texts[TrackField::location], details_.uid);
    SetFlagOfRow(texts[TrackField::hasid3v1], done_.id3v1);
    SetFlagOfRow(texts[TrackField::hasid3v2], done_.id3v2);
    return texts;
  }

  /// Wherever a list shows the track, which may be several times.
  void StoreCells() {
    if (file_written_) MarkFileWritten(bench_, details_.uid, *file_written_);
    for (ResultList* list : {&bench_.ListView1, &bench_.ListView3}) {
      for (std::size_t row = 0; row < list->RowCount(); ++row) {
        if (list->Uid(row) != details_.uid) continue;
        StoreDetails(details_, *list, row);
        if (list == &bench_.ListInView()) bench_.Watcher().RowChanged(row);
      }
    }
  }

  Workbench& bench_;
  DetailEditor& details_ = bench_.details;
  const Preferences& preferences_ = bench_.session.preferences;
  bool holds_texts_ = false;        ///< there was anything to be put in order
  std::optional<SaveGroup> group_;  ///< the rewrites of the one file share their syncs
  TagStepsDone done_;
  std::optional<bool> file_written_;  ///< no tag was passed over; none: tags are not written
  TagLosses losses_;
};

}  // namespace

void cmdSpeichern_Click(Workbench& bench) {
  if (bench.details.save_all && !bench.details.InRenameSave) {
    SpezialSpeichern(bench);
  } else {
    SingleSave(bench).Run();
  }
}

void SaveChanges(Workbench& bench) {
  if (HasTextsForMany(bench.details)) {
    SaveTextsForMany(bench);
  } else {
    cmdSpeichern_Click(bench);
  }
}

}  // namespace tunemeadow
