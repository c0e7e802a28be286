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

namespace tunemeadow {
namespace {

/// The texts that go between delimiters; genre and playtime keep their quotes.
constexpr std::array kEscapedTexts = {
    &DetailEditor::txtTitelSave,     &DetailEditor::txtQualitaetSave,
    &DetailEditor::txtInterpretSave, &DetailEditor::txtYearSave,
    &DetailEditor::txtAlbumSave,     &DetailEditor::txtCommentSave,
    &DetailEditor::txtTracknumber,   &DetailEditor::txtBPMSave,
    &DetailEditor::txtSituationSave, &DetailEditor::txtPreferenceSave,
    &DetailEditor::txtTempoSave,     &DetailEditor::txtMoodSave,
    &DetailEditor::txtLyricsSave,    &DetailEditor::txtBiosSave,
};

constexpr std::array kCutTexts = {
    &DetailEditor::txtSituationSave,
    &DetailEditor::txtPreferenceSave,
    &DetailEditor::txtMoodSave,
    &DetailEditor::txtTempoSave,
};

constexpr std::size_t kLongestText = 255;
constexpr std::int64_t kRecordBytes = sizeof(ID3v1Tag);

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

/// At its end the panels show what the save has made of their texts.
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
    const Busy busy(bench_.session, bench_.interaction, {.closed_window = true});
    const ShowsSavedTexts shows{bench_};
    ApplyRules();
    if (SaveTags()) SaveTexts();
    TellLosses(bench_, losses_);
  }

 private:
  /// A row whose file is gone stays as it is while the tags belong to the save. What is burnt on a
  /// disc takes no tags.
  bool FileIsThere() {
    const std::string& path = details_.txtLocationSave;
    if (!preferences_.chkSaveTags || bCheckCDArchive(path, preferences_)) return true;
    if (MyFileExists(path)) return true;
    if (preferences_.chkWarn) {
      bench_.interaction.ShowMessage(
          {.text = "The file " + DisplayPath(path) + " was not found.", .title = "File not found"});
    }
    return false;
  }

  bool TakeTrack() {
    const std::optional<std::string> track = TrackToSave(details_.txtTracknumber);
    if (track) {
      details_.txtTracknumber = *track;
      return true;
    }
    bench_.interaction.ShowMessage(
        {.text = "Tracknumber is not a valid number! (<256)\n\n", .title = "Error!"});
    return false;
  }

  /// Whether there is anything to be put in order.
  [[nodiscard]] bool HoldsTexts() const {
    for (const std::string* text :
         {&details_.txtInterpretSave, &details_.txtTitelSave, &details_.txtYearSave,
          &details_.txtQualitaetSave, &details_.txtAlbumSave}) {
      if (!Trim(*text).empty()) return true;
    }
    return !details_.cboGenre1.empty();
  }

  /// Without texts the record stays empty.
  void ApplyRules() {
    if (!HoldsTexts()) return;
    for (std::string* text :
         {&details_.txtTitelSave, &details_.txtInterpretSave, &details_.txtAlbumSave}) {
      *text = ApplySaveRules(std::move(*text), preferences_);
    }
    if (preferences_.chkAutoComment) details_.txtCommentSave = preferences_.txtautocomment;
    record_ = FillRecord(ValuesOfEditor(details_));
  }

  /// False: the person gave the save up.
  bool SaveTags() {
    // The details may be looked at while the window lives; the save keeps to what it began with.
    const std::string path = details_.txtLocationSave;
    if (!preferences_.chkSaveTags || !WritesTags(path, preferences_)) return true;
    UndoJournal& journal = bench_.session.journal;
    TagWriting writing(journal);
    writing.yield = [this] { bench_.interaction.Yield(); };
    const TagValues values = ValuesOfEditor(details_);
    const TagStepTalk talk = {
        .begins = [this](SavedTag tag) { TellStep(tag); },
        .failed = [this](SavedTag tag) { return AskAboutFailure(tag); },
    };
    group_.emplace(
        journal, [this](const MessageBox& box) { bench_.interaction.ShowMessage(box); },
        std::vector{path}, SavePlan{.ranges = TagRanges, .growth = kRecordBytes});
    group_->BeginFile(0);
    done_ = WriteTags({path, values, record_, true}, preferences_, bench_.info, writing, talk);
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
    if (!preferences_.chkWarn) return Answer::kIgnore;
    group_->Close();
    const Answer answer = bench_.interaction.ShowMessage(
        {.text = std::string(NameOf(tag).box) + "-Tag can't be written!",
         .title = "Error",
         .buttons = Buttons::kAbortRetryIgnore});
    if (answer != Answer::kAbort) group_->BeginFile(0);
    return answer;
  }

  void SaveTexts() {
    EscapeTexts();
    CutTexts();
    if (!SaveRow()) return;
    details_.DetailsKeyed = false;
    details_.DetailsChanged = false;
    StoreCells();
  }

  void EscapeTexts() {
    const char quote = bench_.session.quote;
    for (const auto text : kEscapedTexts) details_.*text = EscapeEditorText(details_.*text, quote);
    for (std::string& text : details_.txtSave3) text = EscapeEditorText(text, quote);
  }

  void CutTexts() {
    const auto cut = [this](std::string& text) {
      const std::size_t length = Left(text, kLongestText).size();
      if (length < text.size()) ++losses_.cut_texts;
      text.resize(length);
    };
    for (const auto text : kCutTexts) cut(details_.*text);
    for (std::string& text : details_.txtSave3) cut(text);
  }

  /// False, with nothing changed, where the store refuses the statement.
  bool SaveRow() {
    Session& session = bench_.session;
    try {
      const SaveFacts facts = {
          .now = Now(),
          .file_time = FileTimeOfRow(session, details_.txtLocationSave, details_.uid),
          .hasid3v1 = FlagOfRow(details_.hasid3v1, done_.id3v1),
          .hasid3v2 = FlagOfRow(details_.hasid3v2, done_.id3v2)};
      std::string statement;
      BuildSaveStatement(details_, facts, session.quote, statement);
      session.connection.Execute(statement);
      details_.hasid3v1 = std::to_string(facts.hasid3v1);
      details_.hasid3v2 = std::to_string(facts.hasid3v2);
      return true;
    } catch (const DatabaseError& error) {
      bench_.interaction.ShowMessage({.text = error.WithStatement(), .icon = Icon::kCritical});
      return false;
    }
  }

  /// Wherever a list shows the track, which may be several times.
  void StoreCells() {
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
  ID3v1Tag record_;
  std::optional<SaveGroup> group_;  ///< the rewrites of the one file share their syncs
  TagStepsDone done_;
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

}  // namespace tunemeadow
