// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/start/detail_panels.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "audio/genres.h"
#include "ui/support/qt_text.h"
#include "ui_picDetails.h"
#include "ui_picDetails2.h"
#include "ui_picDetails3.h"

namespace tunemeadow {

/// One field of the record and the line that shows it.
struct DetailPanels::LineControl {
  std::string DetailEditor::*field;
  QLineEdit* line;
};

namespace {

template <typename Form>
void AddDetailPanel(QStackedWidget& stack, Form& form, const char* name) {
  auto* panel = new QWidget(&stack);
  form.setupUi(panel);
  panel->setObjectName(QLatin1String(name));
  stack.addWidget(panel);
}

void ShowLine(QLineEdit& line, const std::string& text) {
  const QString shown = ToQt(text);
  if (line.text() == shown) return;
  line.setText(shown);
  line.setCursorPosition(0);
  line.setToolTip(shown.size() > 30 ? shown : QString());
}

void ShowText(QPlainTextEdit& field, const std::string& text) {
  const QString shown = ToQt(text);
  if (field.toPlainText() != shown) field.setPlainText(shown);
}

/// Keeps a combo from being opened or turned while its text is there to be read only.
class LookOnly : public QObject {
 public:
  using QObject::QObject;

  [[nodiscard]] bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
        return true;
      case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        return key != Qt::Key_Tab && key != Qt::Key_Backtab && key != Qt::Key_Escape;
      }
      default:
        return false;
    }
  }
};

/// Height of so many lines of text.
int HeightOf(const QPlainTextEdit& field, int lines) {
  return field.fontMetrics().lineSpacing() * lines + 2 * field.frameWidth() +
         static_cast<int>(field.document()->documentMargin() * 2);
}

}  // namespace

DetailPanels::DetailPanels(QWidget* parent)
    : QStackedWidget(parent),
      first_(std::make_unique<Ui::picDetails>()),
      second_(std::make_unique<Ui::picDetails2>()),
      third_(std::make_unique<Ui::picDetails3>()) {
  AddDetailPanel(*this, *first_, "picDetails");
  AddDetailPanel(*this, *second_, "picDetails2");
  AddDetailPanel(*this, *third_, "picDetails3");
  BindPanels();
  BindBigger();
  for (QLineEdit* line : findChildren<QLineEdit*>()) line->setReadOnly(true);
  for (QPlainTextEdit* field : findChildren<QPlainTextEdit*>()) {
    field->setReadOnly(true);
    // What a text field would like is a quarter of the window: that room is the list's.
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    field->setMinimumHeight(HeightOf(*field, 2));
  }
  // A combo cannot be read-only and keep its look: it shows its text and no list.
  first_->cboGenre1->setEditable(true);
  first_->cboGenre1->lineEdit()->setReadOnly(true);
  first_->cboGenre1->installEventFilter(new LookOnly(this));
  first_->cboGenre1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  first_->cboGenre1->setMinimumContentsLength(8);
  SetGenres({});
  EnableAll(false);
}

DetailPanels::~DetailPanels() = default;

void DetailPanels::BindPanels() {
  using E = DetailEditor;
  lines_ = {{&E::txtTitelSave, first_->txtTitelSave},
            {&E::txtInterpretSave, first_->txtInterpretSave},
            {&E::txtAlbumSave, first_->txtAlbumSave},
            {&E::txtYearSave, first_->txtYearSave},
            {&E::txtTracknumber, first_->txtTracknumber},
            {&E::txtBPMSave, first_->txtBPMSave},
            {&E::txtPlaytime, first_->txtPlaytime},
            {&E::txtQualitaetSave, first_->txtQualitaetSave},
            {&E::lblFilesize, first_->lblFilesize},
            {&E::txtLocationSave, first_->txtLocationSave},
            {&E::txtSituationSave, second_->txtSituationSave},
            {&E::txtPreferenceSave, second_->txtPreferenceSave},
            {&E::txtTempoSave, second_->txtTempoSave},
            {&E::txtMoodSave, second_->txtMoodSave}};
  extra_ = {third_->txtSave3_0, third_->txtSave3_1, third_->txtSave3_2, third_->txtSave3_3,
            third_->txtSave3_4};
}

void DetailPanels::BindBigger() {
  const auto bind = [this](QToolButton* button, QPlainTextEdit* field) {
    connect(button, &QToolButton::clicked, this,
            [this, field] { emit BiggerRequested(field->accessibleName(), field->toPlainText()); });
  };
  bind(first_->cmdBigger_txtCommentSave, first_->txtCommentSave);
  bind(second_->cmdBigger_txtBiosSave, second_->txtBiosSave);
  bind(second_->cmdBigger_txtLyricsSave, second_->txtLyricsSave);
}

void DetailPanels::EnableAll(bool enabled) {
  for (int page = 0; page < count(); ++page) {
    for (QWidget* child : widget(page)->findChildren<QWidget*>()) child->setEnabled(enabled);
  }
}

void DetailPanels::Show(const DetailEditor& editor) {
  EnableAll(editor.enabled);
  if (editor.enabled) EnableComment(editor.comment_enabled);
  for (const LineControl& control : lines_) ShowLine(*control.line, editor.*control.field);
  for (std::size_t i = 0; i < extra_.size(); ++i) ShowLine(*extra_[i], editor.txtSave3[i]);
  ShowText(*first_->txtCommentSave, editor.txtCommentSave);
  ShowText(*second_->txtBiosSave, editor.txtBiosSave);
  ShowText(*second_->txtLyricsSave, editor.txtLyricsSave);
  const QString genre = ToQt(editor.cboGenre1);
  if (first_->cboGenre1->currentText() != genre) first_->cboGenre1->setEditText(genre);
}

void DetailPanels::SetGenres(const std::vector<std::string>& further_genres) {
  QComboBox& combo = *first_->cboGenre1;
  const QSignalBlocker quiet(&combo);
  const QString kept = combo.currentText();
  combo.clear();
  combo.addItem(QString());
  for (int number = 0; number < kGenreCount; ++number) {
    combo.addItem(ToQt(Genres[static_cast<std::size_t>(number)]));
  }
  for (const std::string& genre : further_genres) combo.addItem(ToQt(genre));
  combo.setEditText(kept);
}

void DetailPanels::EnableComment(bool enabled) {
  QPlainTextEdit& field = *first_->txtCommentSave;
  field.setEnabled(enabled);
  // Whoever may not change a comment can still read it.
  QPalette look = palette();
  look.setColor(QPalette::Base, look.color(enabled ? QPalette::Base : QPalette::Button));
  look.setColor(QPalette::Disabled, QPalette::Text, look.color(QPalette::Active, QPalette::Text));
  field.setPalette(look);
}

void DetailPanels::FocusFirst() {
  const std::array<QWidget*, 3> first = {first_->txtTitelSave, second_->txtSituationSave,
                                         third_->txtSave3_0};
  first[static_cast<std::size_t>(currentIndex())]->setFocus();
}

}  // namespace tunemeadow
