// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panes/search_panels.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include "ui/kit/qt_text.h"
#include "ui/panes/search_combo.h"
#include "ui_picSearch.h"
#include "ui_picSearch2.h"
#include "ui_picSearch3.h"
#include "views/search_items.h"
#include "views/workbench.h"

namespace tunemeadow {

/// One field of a search and the control that shows it: a combo or a line.
struct SearchPanels::TextControl {
  TrackField field;
  SearchCombo* combo;
  QLineEdit* line;

  [[nodiscard]] QLineEdit* Line() const { return combo != nullptr ? combo->lineEdit() : line; }
};

namespace {

template <typename Form>
QWidget* AddPanel(QStackedWidget& stack, Form& form, const char* name) {
  auto* panel = new QWidget(&stack);
  form.setupUi(panel);
  panel->setObjectName(QLatin1String(name));
  stack.addWidget(panel);
  return panel;
}

/// The names after an empty first entry, which means any; the chosen one stays chosen.
void SetNameList(QComboBox& combo, const std::vector<std::string>& names) {
  const QSignalBlocker quiet(&combo);
  const QString chosen = combo.currentText();
  combo.clear();
  combo.addItem(QString());
  for (const std::string& name : names) combo.addItem(ToQt(name));
  combo.setCurrentIndex(chosen.isEmpty() ? -1 : combo.findText(chosen, Qt::MatchExactly));
}

void ChooseName(QComboBox& combo, const std::string& name) {
  const QSignalBlocker quiet(&combo);
  combo.setCurrentIndex(name.empty() ? -1 : combo.findText(ToQt(name), Qt::MatchExactly));
}

}  // namespace

SearchPanels::SearchPanels(QWidget* parent)
    : QStackedWidget(parent),
      first_(std::make_unique<Ui::picSearch>()),
      second_(std::make_unique<Ui::picSearch2>()),
      third_(std::make_unique<Ui::picSearch3>()) {
  AddPanel(*this, *first_, "picSearch");
  AddPanel(*this, *second_, "picSearch2");
  AddPanel(*this, *third_, "picSearch3");
  for (QComboBox* names : {first_->cboPlaylists, first_->cboCDArchive}) {
    names->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    names->setMinimumContentsLength(6);
    names->installEventFilter(this);
  }
  BindPanels();
  BindEnter();
  BindTyping();
}

SearchPanels::~SearchPanels() = default;

void SearchPanels::BindPanels() {
  using enum TrackField;
  controls_ = {{Songname, first_->cboSongname, nullptr},
               {Artist, first_->cboArtistSearch, nullptr},
               {album, first_->cboAlbum, nullptr},
               {genrereal, first_->cboGenre, nullptr},
               {year, first_->cboYearSearch, nullptr},
               {Comment, nullptr, first_->txtComment},
               {quality, nullptr, first_->txtQualitaet},
               {file, nullptr, first_->txtFileSearch},
               {location, nullptr, first_->txtLocation},
               {Situation, second_->cboSituation, nullptr},
               {preference, second_->cboPreference, nullptr},
               {Mood, second_->cboMood, nullptr},
               {tempo, second_->cboTempo, nullptr},
               {Lyrics, nullptr, second_->txtLyrics},
               {bios, nullptr, second_->txtBios}};
  std::size_t extra = 0;
  for (QLineEdit* line : {third_->txtSearch3_0, third_->txtSearch3_1, third_->txtSearch3_2,
                          third_->txtSearch3_3, third_->txtSearch3_4}) {
    controls_.push_back({ExtraField(extra++), nullptr, line});
  }
}

void SearchPanels::BindEnter() {
  const auto on_enter = [this](QLineEdit* line) {
    line->setClearButtonEnabled(true);
    connect(line, &QLineEdit::returnPressed, this, &SearchPanels::SearchRequested);
  };
  for (const TextControl& control : controls_) {
    if (control.combo != nullptr) {
      connect(control.combo, &SearchCombo::SearchRequested, this, &SearchPanels::SearchRequested);
    } else {
      on_enter(control.line);
    }
  }
}

/// Enter in the two lists of names; their own reaction to it would be none.
bool SearchPanels::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      emit SearchRequested();
      return true;
    }
  }
  return QStackedWidget::eventFilter(watched, event);
}

void SearchPanels::BindTyping() {
  for (const TextControl& control : controls_) {
    const auto typed = [this, line = control.Line()] {
      if (!first_->cboCDArchive->isHidden()) return;
      // The folder of an archive that was clicked goes with its archive.
      const bool of_archive = !first_->cboCDArchive->currentText().isEmpty();
      if (of_archive && line != first_->txtLocation) first_->txtLocation->clear();
      ChooseName(*first_->cboPlaylists, {});
      ChooseName(*first_->cboCDArchive, {});
    };
    connect(control.Line(), &QLineEdit::textEdited, this, typed);
    if (control.combo != nullptr) connect(control.combo, &QComboBox::activated, this, typed);
  }
}

SearchFields SearchPanels::Read() const {
  SearchFields fields;
  for (const TextControl& control : controls_) {
    fields.texts[control.field] = FromQt(control.Line()->text());
  }
  fields.cboPlaylists = FromQt(first_->cboPlaylists->currentText());
  fields.cboCDArchive = FromQt(first_->cboCDArchive->currentText());
  return fields;
}

void SearchPanels::Show(const SearchFields& fields) {
  for (const TextControl& control : controls_) {
    const QString text = ToQt(fields.texts[control.field]);
    if (control.Line()->text() != text) control.Line()->setText(text);
  }
  ChooseName(*first_->cboPlaylists, fields.cboPlaylists);
  ChooseName(*first_->cboCDArchive, fields.cboCDArchive);
}

void SearchPanels::SetItems(const SearchItems& items) {
  for (const SearchItemList& list : items.lists) {
    if (auto* combo = findChild<SearchCombo*>(ToQt(list.combo))) combo->SetValues(list.values);
  }
}

void SearchPanels::SetNames(const TreeData& tree) {
  SetNameList(*first_->cboPlaylists, tree.playlists);
  SetNameList(*first_->cboCDArchive, tree.archives);
}

void SearchPanels::ShowNameCombos(bool shown) {
  for (QWidget* control : std::initializer_list<QWidget*>{
           first_->lblPlayliste, first_->cboPlaylists, first_->lblCDArchiv, first_->cboCDArchive}) {
    control->setVisible(shown);
  }
  constexpr int kRow = 2;
  constexpr int kColumn = 1;
  auto& grid = *static_cast<QGridLayout*>(first_->cboPlaylists->parentWidget()->layout());
  grid.addWidget(first_->txtLocation, kRow, kColumn, 1, shown ? 1 : grid.columnCount() - kColumn);
}

void SearchPanels::FocusFirst() {
  const std::array<QLineEdit*, 3> first = {first_->cboSongname->lineEdit(),
                                           second_->cboSituation->lineEdit(), third_->txtSearch3_0};
  QLineEdit* const line = first[static_cast<std::size_t>(currentIndex())];
  line->setFocus();
  line->selectAll();
}

}  // namespace tunemeadow
