// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/mass_save.h"

#include <array>
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

namespace tunemeadow {
namespace {

constexpr std::int64_t kGrowthOfRecord = sizeof(ID3v1Tag);

/// A field with a selector, as its name in the question, and where its value stands.
struct MassField {
  std::string_view name;
  bool MassSelectors::*selector;
  const std::string DetailEditor::*control;
  std::string TagValues::*value;
  Field cell;
};

constexpr std::array<MassField, 8> kMassFields = {{
    {"Album", &MassSelectors::chkAlbum, &DetailEditor::txtAlbumSave, &TagValues::album,
     Field::album},
    {"Genre", &MassSelectors::chkGenre, &DetailEditor::cboGenre1, &TagValues::genre,
     Field::genrereal},
    {"Artist", &MassSelectors::chkInterpret, &DetailEditor::txtInterpretSave, &TagValues::artist,
     Field::Artist},
    {"Year", &MassSelectors::chkYear, &DetailEditor::txtYearSave, &TagValues::year, Field::year},
    {"Situation", &MassSelectors::chkSituation, &DetailEditor::txtSituationSave,
     &TagValues::situation, Field::Situation},
    {"Preference", &MassSelectors::chkPreference, &DetailEditor::txtPreferenceSave,
     &TagValues::preference, Field::preference},
    {"Tempo", &MassSelectors::chkTempo, &DetailEditor::txtTempoSave, &TagValues::tempo,
     Field::tempo},
    {"Mood", &MassSelectors::chkMood, &DetailEditor::txtMoodSave, &TagValues::mood, Field::Mood},
}};

/// The fields of txtSave3, in its order.
struct MassExtra {
  std::string TagValues::*value;
  Field cell;
};

constexpr std::array<MassExtra, kExtraFields> kMassExtras = {{
    {&TagValues::composer, Field::composer},
    {&TagValues::copyright, Field::copyright},
    {&TagValues::encoded_by, Field::encodedby},
    {&TagValues::original, Field::originalartist},
    {&TagValues::url, Field::url},
}};

/// A ticked field: its name, the text that every track takes, and where that goes.
struct TickedField {
  std::string_view name;
  std::string text;
  std::string TagValues::*value;
};

std::vector<TickedField> TickedFields(const DetailEditor& details) {
  std::vector<TickedField> ticked;
  for (const MassField& field : kMassFields) {
    if (!(details.selectors.*field.selector)) continue;
    ticked.push_back({field.name, details.*field.control, field.value});
  }
  for (std::size_t i = 0; i < kExtraFields; ++i) {
    if (!details.selectors.chkDetail3[i]) continue;
    ticked.push_back({kExtraCaptions[i], details.txtSave3[i], kMassExtras[i].value});
  }
  return ticked;
}

std::string MassSaveQuestion(std::size_t count, const std::vector<TickedField>& ticked,
                             const Preferences& preferences) {
  std::string question = "Are you sure to update " + std::to_string(count) + " items(s)";
  if (ticked.empty() && !preferences.chkAutoComment) return question + "?";
  if (!ticked.empty()) {
    question += " with the ";
    for (const TickedField& field : ticked) question.append(field.name) += ',';
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
                       .path = std::string(bench.ListView1.Cell(row, Field::location)),
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
    plan.save = SavePlan{.ranges = TagRanges, .growth = kGrowthOfRecord};
  }
  return plan;
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

  /// False where it ended early.
  bool Run() {
    return run_.Run([this](const SelectedFile& track) { SaveItem(track); });
  }

  [[nodiscard]] const TagLosses& Losses() noexcept { return run_.Writing().losses; }

 private:
  void SaveItem(const SelectedFile& track) {
    TakeValues(track.row);
    TagStepsDone done;
    if (track.is_written) {
      done = SaveTags(track.path);
      if (done.aborted) return;
    }
    EscapeTexts();
    SaveRow(track, done);
  }

  /// Every value is the track's own but for those of the ticked fields.
  void TakeValues(std::size_t row) {
    values_ = ValuesOfRow(bench_.ListView1, row);
    for (const TickedField& field : ticked_) values_.*field.value = field.text;
    for (const auto text : {&TagValues::artist, &TagValues::title, &TagValues::album}) {
      values_.*text = ApplySaveRules(std::move(values_.*text), preferences_);
    }
    if (preferences_.chkAutoComment) values_.comment = preferences_.txtautocomment;
  }

  TagStepsDone SaveTags(const std::string& path) {
    const TagStepsDone done = WriteTags({path, values_, FillRecord(values_)}, preferences_,
                                        bench_.info, run_.Writing(), talk_);
    run_.FileDone();
    return done;
  }

  Answer AskAboutFailure() {
    if (!preferences_.chkWarn) return Answer::kIgnore;
    return run_.Ask({.text = "ID3-Tag can't be written!\n\nClick Ignore to ignore all",
                     .title = "Error",
                     .buttons = Buttons::kAbortRetryIgnore});
  }

  /// What came from the editor is put down as a single save puts it down. What came from the track
  /// stays what it is; as there, so does the genre.
  void EscapeTexts() {
    for (const TickedField& field : ticked_) {
      if (field.value == &TagValues::genre) continue;
      values_.*field.value = EscapeEditorText(values_.*field.value, '"');
    }
    if (preferences_.chkAutoComment) values_.comment = EscapeEditorText(values_.comment, '"');
  }

  /// Where the store refuses the statement, the cells stay as they were, and the run ends.
  void SaveRow(const SelectedFile& track, const TagStepsDone& done) {
    const ResultList& list = bench_.ListView1;
    MassSaveTexts texts = TextsOfRow();
    texts.uid = track.uid;
    texts.hasid3v1 = FlagOfRow(list.Cell(track.row, Field::hasid3v1), done.id3v1);
    texts.hasid3v2 = FlagOfRow(list.Cell(track.row, Field::hasid3v2), done.id3v2);
    try {
      const std::string now = Now();
      const std::string file_time = FileTimeOfRow(bench_.session, track.path, texts.uid);
      texts.now = now;
      texts.file_time = file_time;
      BuildMassSaveStatement(texts, statement_);
      bench_.session.connection.Execute(statement_);
    } catch (const DatabaseError& error) {
      run_.Tell({.text = error.WithStatement(), .icon = Icon::kCritical});
      run_.Stop();
      return;
    }
    StoreCells(texts);
  }

  [[nodiscard]] MassSaveTexts TextsOfRow() const {
    return {.preference = values_.preference,
            .situation = values_.situation,
            .mood = values_.mood,
            .tempo = values_.tempo,
            .extra = {values_.composer, values_.copyright, values_.encoded_by, values_.original,
                      values_.url},
            .comment = values_.comment,
            .title = values_.title,
            .album = values_.album,
            .year = values_.year,
            .genre = values_.genre,
            .artist = values_.artist};
  }

  void StoreCells(const MassSaveTexts& texts) {
    const std::string hasid3v1 = std::to_string(texts.hasid3v1);
    const std::string hasid3v2 = std::to_string(texts.hasid3v2);
    cells_.assign({{Field::Songname, texts.title},
                   {Field::Comment, texts.comment},
                   {Field::hasid3v1, hasid3v1},
                   {Field::hasid3v2, hasid3v2}});
    for (const MassField& field : kMassFields) cells_.push_back({field.cell, values_.*field.value});
    for (const MassExtra& extra : kMassExtras) cells_.push_back({extra.cell, values_.*extra.value});
    run_.SetCells(cells_);
  }

  Workbench& bench_;
  const Preferences& preferences_ = bench_.session.preferences;
  std::vector<TickedField> ticked_;
  FileRun run_;
  TagStepTalk talk_;
  TagValues values_;       ///< of the track at work
  std::string statement_;  ///< of its row; its memory serves them all
  std::vector<FieldText> cells_;
};

/// The mode for many ends, and with it the texts that were typed for it: the editor holds one track
/// again, as its row has it.
void ShowOneTrackAgain(Workbench& bench) {
  bench.details.DetailsKeyed = false;
  bench.details.DetailsChanged = false;
  ChangeDetailSaveNo(bench);
  ReloadDetails(bench);
}

}  // namespace

void SpezialSpeichern(Workbench& bench) {
  const std::size_t count = bench.ListView1.SelectedCount();
  if (bench.playlist_in_view || count == 0) return;
  std::vector<TickedField> ticked = TickedFields(bench.details);
  const Answer answer = bench.interaction.ShowMessage(
      {.text = MassSaveQuestion(count, ticked, bench.session.preferences),
       .title = "Mass-saving",
       .buttons = Buttons::kYesNo});
  if (answer != Answer::kYes) return;
  const Stopwatch watch;
  bool complete = false;
  TagLosses losses;
  {
    MassSave run(bench, std::move(ticked));
    complete = run.Run();
    losses = run.Losses();
  }
  ShowOneTrackAgain(bench);
  TellLosses(bench, losses);
  if (complete) {
    TellTagResult(bench, std::to_string(count) + " file(s) successfully saved.", watch);
  }
}

}  // namespace tunemeadow
