// SPDX-License-Identifier: GPL-3.0-or-later
// The building of the panels, and how they show a record.
#include "ui/panes/detail_panels.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QToolButton>

#include "audio/genres.h"
#include "editing/save_rules.h"
#include "tracks/track_field_table.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/qt_text.h"
#include "ui/kit/tool_tips.h"
#include "ui_picDetails.h"
#include "ui_picDetails2.h"
#include "ui_picDetails3.h"

namespace tunemeadow {
namespace {

constexpr qsizetype kLongText = 30;  // characters from which a line needs a tool tip

// The mark of a field whose values differ among the selected tracks: "not equal".
constexpr QChar kDiffers(0x2260);
constexpr QLatin1String kDifferingTip(". The selected tracks have different values.");
constexpr QLatin1String kDifferingName(" (their values differ)");

template <typename Form>
void AddDetailPanel(QStackedWidget& stack, Form& form, const char* name) {
  auto* panel = new QWidget(&stack);
  form.setupUi(panel);
  panel->setObjectName(QLatin1String(name));
  stack.addWidget(panel);
}

/// Height of so many lines of text.
int HeightOf(const QPlainTextEdit& field, int lines) {
  return field.fontMetrics().lineSpacing() * lines + 2 * field.frameWidth() +
         static_cast<int>(field.document()->documentMargin() * 2);
}

void ShowLineText(QLineEdit& line, const QString& shown) {
  if (line.text() == shown) return;
  line.setText(shown);
  line.setCursorPosition(0);
}

void ShowLongText(QPlainTextEdit& field, QString shown) {
  shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  if (TextOfField(field) != shown) field.setPlainText(shown);
}

void ShowComboText(QComboBox& combo, const QString& shown) {
  if (combo.currentText() == shown) return;
  // On its own entry, or on none: the arrow keys go on from there.
  combo.setCurrentIndex(combo.findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive));
  combo.setEditText(shown);
}

}  // namespace

DetailPanels::DetailPanels(DetailEditor& editor, Interaction& interaction, QWidget* parent)
    : QStackedWidget(parent),
      editor_(editor),
      interaction_(interaction),
      first_(std::make_unique<Ui::picDetails>()),
      second_(std::make_unique<Ui::picDetails2>()),
      third_(std::make_unique<Ui::picDetails3>()) {
  AddDetailPanel(*this, *first_, "picDetails");
  AddDetailPanel(*this, *second_, "picDetails2");
  AddDetailPanel(*this, *third_, "picDetails3");
  for (QPlainTextEdit* field : findChildren<QPlainTextEdit*>()) {
    // What a text field would like is a quarter of the window: that room is the list's.
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    field->setMinimumHeight(HeightOf(*field, 2));
  }
  QPalette greyed;
  greyed.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x80, 0x80));
  setPalette(greyed);
  SetUpGenres();
  BindFirst();
  BindSecondAndThird();
  BindBoxes();
  ConnectFields();
  Show();
}

DetailPanels::~DetailPanels() = default;

/// What cannot be written into all tracks takes input for one only; what takes none is shown.
DetailPanels::Use DetailPanels::UseOf(TrackField field) {
  if (field == TrackField::Comment) return Use::kComment;
  const TrackFieldRow& row = RowOf(field);
  return row.save_all.place != 0 || !row.editor.editable ? Use::kAlways : Use::kOneTrack;
}

void DetailPanels::Bind(TrackField field, QWidget* control) {
  auto* line = qobject_cast<QLineEdit*>(control);
  if (line != nullptr && !RowOf(field).editor.editable) line->setReadOnly(true);
  fields_.push_back(
      {.field = field, .control = control, .use = UseOf(field), .tip = control->toolTip()});
}

void DetailPanels::BindFirst() {
  Bind(TrackField::Songname, first_->txtTitelSave);
  Bind(TrackField::Artist, first_->txtInterpretSave);
  Bind(TrackField::album, first_->txtAlbumSave);
  Bind(TrackField::genrereal, first_->cboGenre1);
  Bind(TrackField::year, first_->txtYearSave);
  Bind(TrackField::trackno, first_->txtTracknumber);
  Bind(TrackField::BPM, first_->txtBPMSave);
  Bind(TrackField::quality, first_->txtQualitaetSave);
  Bind(TrackField::Playtime, first_->txtPlaytime);
  Bind(TrackField::Filesize, first_->lblFilesize);
  Bind(TrackField::location, first_->txtLocationSave);
  Bind(TrackField::Comment, first_->txtCommentSave);
  BindBigger(first_->cmdBigger_txtCommentSave, first_->txtCommentSave);
  checked_[0] = {
      .line = first_->txtTracknumber, .field = TrackField::trackno, .check = &CheckTracknumber};
  checked_[1] = {.line = first_->txtYearSave, .field = TrackField::year, .check = &CheckYear};
}

void DetailPanels::BindSecondAndThird() {
  Bind(TrackField::Situation, second_->txtSituationSave);
  Bind(TrackField::preference, second_->txtPreferenceSave);
  Bind(TrackField::tempo, second_->txtTempoSave);
  Bind(TrackField::Mood, second_->txtMoodSave);
  Bind(TrackField::bios, second_->txtBiosSave);
  Bind(TrackField::Lyrics, second_->txtLyricsSave);
  BindBigger(second_->cmdBigger_txtBiosSave, second_->txtBiosSave);
  BindBigger(second_->cmdBigger_txtLyricsSave, second_->txtLyricsSave);
  std::size_t extra = 0;
  for (QLineEdit* line : {third_->txtSave3_0, third_->txtSave3_1, third_->txtSave3_2,
                          third_->txtSave3_3, third_->txtSave3_4}) {
    Bind(ExtraField(extra++), line);
  }
}

void DetailPanels::BindBoxes() {
  const auto add = [this](QCheckBox* box, TrackField field) {
    boxes_.push_back({box, field, box->toolTip(), box->accessibleName()});
    connect(box, &QCheckBox::toggled, this,
            [this, place = IndexOf(field)](bool on) { editor_.chosen[place] = on; });
  };
  add(first_->chkAlbum, TrackField::album);
  add(first_->chkGenre, TrackField::genrereal);
  add(first_->chkInterpret, TrackField::Artist);
  add(first_->chkYear, TrackField::year);
  add(second_->chkSituation, TrackField::Situation);
  add(second_->chkPreference, TrackField::preference);
  add(second_->chkTempo, TrackField::tempo);
  add(second_->chkMood, TrackField::Mood);
  std::size_t extra = 0;
  for (QCheckBox* box : {third_->chkDetail3_0, third_->chkDetail3_1, third_->chkDetail3_2,
                         third_->chkDetail3_3, third_->chkDetail3_4}) {
    add(box, ExtraField(extra++));
  }
}

void DetailPanels::BindBigger(QWidget* button, QPlainTextEdit* field) {
  biggers_.push_back(button);
  connect(static_cast<QToolButton*>(button), &QToolButton::clicked, this,
          [this, field] { OpenBigger(*field); });
}

void DetailPanels::Show() {
  const QScopedValueRollback quiet(showing_, true);
  for (Field& field : fields_) ShowText(field);
  ShowBoxes();
  EnableFields();
  if (editor_.DetailsChanged || HasTextsForMany(editor_)) return;
  for (CheckedField& field : checked_) field.changed = false;
}

void DetailPanels::ShowText(Field& field) {
  const QString shown = ToQt(editor_.texts[field.field]);
  if (auto* line = qobject_cast<QLineEdit*>(field.control)) {
    ShowLineText(*line, shown);
    SetLiteralToolTip(*line, shown.size() > kLongText ? shown : field.tip);
  } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field.control)) {
    field.crlf = shown.contains(QLatin1String("\r\n"));
    ShowLongText(*lines, shown);
  } else if (auto* combo = qobject_cast<QComboBox*>(field.control)) {
    ShowComboText(*combo, shown);
  }
}

void DetailPanels::ShowBoxes() {
  for (const auto& [box, field, tip, name] : boxes_) {
    const bool differs = editor_.save_all && editor_.many.differs[IndexOf(field)];
    box->setChecked(editor_.chosen[IndexOf(field)]);
    box->setText(differs ? QString(kDiffers) : QString());
    box->setToolTip(differs ? tip + kDifferingTip : tip);
    box->setAccessibleName(differs ? name + kDifferingName : name);
    box->setVisible(editor_.save_all);
  }
}

void DetailPanels::EnableFields() {
  const bool one = editor_.enabled && !editor_.save_all;
  const bool any = editor_.enabled || editor_.save_all;
  for (const Field& field : fields_) {
    if (field.use != Use::kComment)
      field.control->setEnabled(field.use == Use::kAlways ? any : one);
  }
  if (any) EnableComment(one && editor_.comment_enabled);
  for (QWidget* button : biggers_) button->setEnabled(any);
  // By the field's own state: while a command is at work the whole window takes no input.
  for (QLabel* label : findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) label->setEnabled(label->buddy()->isEnabledTo(this));
  }
}

void DetailPanels::SetGenres(const std::vector<std::string>& further_genres) {
  const QScopedValueRollback quiet(showing_, true);
  QComboBox& combo = *first_->cboGenre1;
  const QString kept = combo.currentText();
  combo.clear();
  combo.addItem(QString());
  for (int number = 0; number < kGenreCount; ++number) {
    combo.addItem(ToQt(Genres[static_cast<std::size_t>(number)]));
  }
  for (const std::string& genre : further_genres) combo.addItem(ToQt(genre));
  ShowComboText(combo, kept);
}

void DetailPanels::EnableComment(bool enabled) {
  QPlainTextEdit& field = *first_->txtCommentSave;
  field.setEnabled(enabled);
  field.setReadOnly(!editor_.enabled);
  first_->lblCommentSave->setEnabled(enabled);
  QPalette look = palette();
  look.setColor(QPalette::Base,
                look.color(QPalette::Active, enabled ? QPalette::Base : QPalette::Button));
  if (!editor_.save_all) {
    // Whoever may not change a comment can still read it.
    look.setColor(QPalette::Disabled, QPalette::Text, look.color(QPalette::Active, QPalette::Text));
  }
  field.setPalette(look);
}

LookupChoice DetailPanels::Lookup() const {
  return {.chkCDDBSong = third_->chkCDDBSong->isChecked(),
          .chkCDDBArtist = third_->chkCDDBArtist->isChecked(),
          .chkCDDBAlbum = third_->chkCDDBAlbum->isChecked(),
          .chkCDDBLocation = third_->chkCDDBLocation->isChecked()};
}

void DetailPanels::FocusFirst() {
  // With several tracks the title takes no input.
  QWidget* title = first_->txtTitelSave;
  if (!title->isEnabled()) title = first_->txtInterpretSave;
  const std::array<QWidget*, 3> first = {title, second_->txtSituationSave, third_->txtSave3_0};
  first[static_cast<std::size_t>(currentIndex())]->setFocus();
}

}  // namespace tunemeadow
