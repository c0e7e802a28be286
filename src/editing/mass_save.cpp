// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/mass_save.h"

#include <string_view>
#include <vector>

#include "core/dates.h"
#include "core/paths.h"
#include "core/text.h"
#include "editing/file_run.h"
#include "editing/save_rules.h"
#include "editing/save_statement.h"
#include "editing/saved_row.h"
#include "editing/tag_steps.h"
#include "store/database.h"
#include "tracks/field_order.h"

namespace tunemeadow {
namespace {

/// A ticked field and the text that every track takes.
struct TickedField {
  TrackField field;
  std::string text;
};

std::vector<TickedField> TickedFields(const DetailEditor& details) {
  std::vector<TickedField> ticked;
  for (const TrackField field : FieldsInOrder<&TrackFieldRow::save_all>()) {
    if (details.chosen[IndexOf(field)]) ticked.push_back({field, details.texts[field]});
  }
  return ticked;
}

std::string MassSaveQuestion(std::size_t count, const std::vector<TickedField>& ticked,
                             const Preferences& preferences) {
  std::string question = "Are you sure to update " + std::to_string(count) + " items(s)";
  if (ticked.empty() && !preferences.chkAutoComment) return question + "?";
  if (!ticked.empty()) {
    question += " with the ";
    for (const TickedField& field : ticked) question.append(RowOf(field.field).list.caption) += ',';
    question.pop_back();
    question += "-Tag";
  }
  return question +
         (preferences.chkSaveTags ? " in the Database and in the ID3Tag?" : " in the Database?");
}

/// The selected tracks; those on a burnt disc, or of a kind without tags, are not written.
std::vector<SelectedFile> TracksToSave(Workbench& bench) {
  std::vector<SelectedFile> tracks;
  for (const std::size_t row : bench.ListView1.SelectedRows()) {
    SelectedFile track{.uid = bench.ListView1.Uid(row),
                       .path = std::string(bench.ListView1.Cell(row, TrackField::location)),
                       .row = row};
    track.is_written =
        bench.session.preferences.chkSaveTags && WritesTags(track.path, bench.session.preferences);
    tracks.push_back(std::move(track));
  }
  return tracks;
}

FileRunPlan PlanOfMassSave(const Preferences& preferences) {
  FileRunPlan plan{.line = "saving...", .first_step = 1, .shows_path = true};
  if (preferences.chkSaveTags) {
    plan.save = SavePlan{.ranges = TagRanges, .growth = kGrowthOfTags};
  }
  return plan;
}

/// A file that was not written, or not with each of its tags.
struct FailedFile {
  std::string path;
  std::string reasons;  ///< the writers' sentences
};

/// The log window behind a run, where files failed.
void ListFailedFiles(Interaction& interaction, const std::vector<FailedFile>& failed,
                     std::size_t count, bool complete) {
  if (failed.empty()) return;
  interaction.ShowJob("Mass-saving", 1);
  interaction.AddJobLine(std::to_string(failed.size()) + " of " + std::to_string(count) +
                         " file(s) could not be written:");
  for (const FailedFile& file : failed) {
    interaction.AddJobLine("ERROR: " + DisplayPath(file.path) + " : " + file.reasons);
  }
  if (!complete) interaction.AddJobLine("Stopped before the end: not every file was tried.");
  interaction.SetJobStep(1, "", "");
  interaction.EndJob();
}

/// For the status line.
std::string SavedSentence(std::size_t failed, std::size_t count) {
  const std::string all = std::to_string(count) + " file(s).";
  return failed == 0 ? "Saved: " + all : "Saved: " + std::to_string(count - failed) + " of " + all;
}

class MassSave {
 public:
  MassSave(Workbench& bench, std::vector<TickedField> ticked)
      : bench_(bench),
        ticked_(std::move(ticked)),
        run_(bench, PlanOfMassSave(bench.session.preferences), TracksToSave(bench)) {
    talk_.begins = [this](SavedTag) { run_.BeginFile(); };
    talk_.failed = [this](SavedTag) { return AskAboutFailure(); };
  }

  /// False if it ended early.
  bool Run() {
    return run_.Run([this](const SelectedFile& track) { SaveItem(track); });
  }

  [[nodiscard]] const TagLosses& Losses() noexcept { return run_.Writing().losses; }
  [[nodiscard]] const std::vector<FailedFile>& Failed() const noexcept { return failed_; }

 private:
  void SaveItem(const SelectedFile& track) {
    TakeTexts(track.row);
    at_work_ = {.path = track.path, .reasons = {}};
    TagStepsDone done;
    if (track.is_written) {
      done = SaveTags(track.path);
      if (!at_work_.reasons.empty()) failed_.push_back(at_work_);
      if (done.aborted) return;
    }
    EscapeTexts();
    SaveRow(track, done);
  }

  /// Every value is the track's own but for those of the ticked fields.
  void TakeTexts(std::size_t row) {
    texts_ = bench_.ListView1.Record(row);
    // An import notes the number 0 for none; a save leaves it out.
    if (texts_[TrackField::trackno] == "0") texts_[TrackField::trackno].clear();
    for (const TickedField& field : ticked_) texts_[field.field] = field.text;
    for (const TrackFieldRow& each : kTrackFieldTable) {
      if (!each.editor.ruled) continue;
      texts_[each.field] = ApplySaveRules(std::move(texts_[each.field]), preferences_);
    }
    if (preferences_.chkAutoComment) {
      texts_[TrackField::Comment] = preferences_.txtautocomment;
    }
  }

  TagStepsDone SaveTags(const std::string& path) {
    const TagStepsDone done =
        WriteTags({path, {texts_}}, preferences_, bench_.Tags(), run_.Writing(), talk_);
    run_.FileDone();
    return done;
  }

  Answer AskAboutFailure() {
    const std::string& fault = run_.Writing().fault;
    ShowFault(bench_, at_work_.path, fault);
    Answer answer = Answer::kIgnore;
    if (preferences_.chkWarn) {
      answer = run_.Ask({.text = "ID3-Tag can't be written!\n\nClick Ignore to ignore all",
                         .title = "Error",
                         .buttons = Buttons::kAbortRetryIgnore});
    }
    if (answer != Answer::kRetry) NoteReason(fault);
    return answer;
  }

  /// Each once: what is wrong with a file mostly stops all of its tags.
  void NoteReason(const std::string& fault) {
    std::string& reasons = at_work_.reasons;
    const std::string reason = fault.empty() ? "The tag cannot be written." : fault;
    if (reasons.find(reason) != std::string::npos) return;
    reasons.append(reasons.empty() ? "" : "; ").append(reason);
  }

  /// What came from the editor is put down as a single save puts it down. What came from the track
  /// stays what it is; as there, so does the genre.
  void EscapeTexts() {
    for (const TickedField& field : ticked_) {
      if (RowOf(field.field).editor.escaped) Escape(texts_[field.field]);
    }
    if (preferences_.chkAutoComment) Escape(texts_[TrackField::Comment]);
  }

  static void Escape(std::string& text) { text = EscapeEditorText(text, '"'); }

  /// Where the store refuses the statement, the cells stay as they were, and the run ends.
  void SaveRow(const SelectedFile& track, const TagStepsDone& done) {
    SetFlagOfRow(texts_[TrackField::hasid3v1], done.id3v1);
    SetFlagOfRow(texts_[TrackField::hasid3v2], done.id3v2);
    try {
      texts_[TrackField::datetimeofdbupdate] = Now();
      texts_[TrackField::datetimeoffile] = FileTimeOfRow(bench_.session, track.path, track.uid);
      BuildMassSaveStatement(texts_, track.uid, statement_);
      bench_.session.connection.Execute(statement_);
    } catch (const DatabaseError& error) {
      run_.Tell({.text = error.WithStatement(), .icon = Icon::kCritical});
      run_.Stop();
      return;
    }
    StoreCells(track);
  }

  /// Those of the written fields that a list shows.
  void StoreCells(const SelectedFile& track) {
    if (track.is_written) MarkFileWritten(bench_, track.uid, at_work_.reasons.empty());
    cells_.clear();
    for (const TrackField field : FieldsInOrder<&TrackFieldRow::mass_save>()) {
      if (IndexOf(field) < kSelectedFields) cells_.push_back({field, texts_[field]});
    }
    run_.SetCells(cells_);
  }

  Workbench& bench_;
  const Preferences& preferences_ = bench_.session.preferences;
  std::vector<TickedField> ticked_;
  FileRun run_;
  TagStepTalk talk_;
  TrackTexts texts_;    ///< of the track at work
  FailedFile at_work_;  ///< without reasons as long as nothing has failed
  std::vector<FailedFile> failed_;
  std::string statement_;  ///< of its row; its memory serves them all
  std::vector<FieldText> cells_;
};

/// The panels show what the rows hold. What was typed for many and did not reach all of them stays.
void ShowTracksAgain(Workbench& bench, bool complete) {
  DetailEditor& details = bench.details;
  const DetailEditor before = details;
  ShowSavedTracks(bench);
  if (complete || !details.save_all || details.many.uids != before.many.uids) return;
  details.chosen = before.chosen;
  details.many.typed = before.many.typed;
  for (const TrackField field : FieldsInOrder<&TrackFieldRow::save_all>()) {
    if (details.chosen[IndexOf(field)]) details.texts[field] = before.texts[field];
  }
  bench.Watcher().DetailsChanged();
}

}  // namespace

void SpezialSpeichern(Workbench& bench) {
  const std::size_t count = bench.ListView1.SelectedCount();
  if (bench.playlist_in_view || count == 0) return;
  const Answer answer = bench.interaction.ShowMessage(
      {.text = MassSaveQuestion(count, TickedFields(bench.details), bench.session.preferences),
       .title = "Mass-saving",
       .buttons = Buttons::kYesNo});
  if (answer == Answer::kYes) SaveTextsForMany(bench);
}

void SaveTextsForMany(Workbench& bench) {
  const std::size_t count = bench.ListView1.SelectedCount();
  if (bench.playlist_in_view || count == 0) return;
  const Stopwatch watch;
  bool complete = false;
  TagLosses losses;
  std::vector<FailedFile> failed;
  {
    MassSave run(bench, TickedFields(bench.details));
    complete = run.Run();
    losses = run.Losses();
    failed = run.Failed();
  }
  ShowTracksAgain(bench, complete);
  if (complete) bench.interaction.SetStatus(SavedSentence(failed.size(), count));
  TellLosses(bench, losses);
  if (complete) {
    TellTagResult(bench, std::to_string(count) + " file(s) successfully saved.", watch);
  }
  ListFailedFiles(bench.interaction, failed, count, complete);
}

}  // namespace tunemeadow
