// SPDX-License-Identifier: GPL-3.0-or-later
// The three detail panels, of which one is in view. They show the record of the clicked row and
// take what the person makes of it; with several rows selected, the fields that can be written into
// all.
#pragma once

#include <QStackedWidget>
#include <QTimer>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "net/web_lookup.h"
#include "run/interaction.h"
#include "views/detail_editor.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

namespace Ui {
class picDetails;
class picDetails2;
class picDetails3;
}  // namespace Ui

namespace tunemeadow {

class DetailPanels : public QStackedWidget {
  Q_OBJECT

 public:
  /// Both must outlive the panels. What the person types and ticks goes into `editor` at once.
  DetailPanels(DetailEditor& editor, Interaction& interaction, QWidget* parent = nullptr);
  ~DetailPanels() override;

  /// Shows the editor: its texts, which fields take input, and with several rows selected the boxes
  /// that choose the fields to be written, with a mark where the rows' values differ. Whoever edits
  /// such a field ticks its box. A control is touched only where its text differs, and
  /// nothing of this counts as a change.
  void Show();

  /// The list of cboGenre1: an empty entry, the 148 names, then the catalogue's own genres.
  void SetGenres(const std::vector<std::string>& further_genres);

  /// The rule for txtCommentSave: whether it takes input, or looks as if it did. Before the first
  /// record it is for reading only, however it looks.
  void EnableComment(bool enabled);

  /// The boxes that choose what is sent to the web.
  [[nodiscard]] LookupChoice Lookup() const;

  /// Focus on the first field of the panel in view.
  void FocusFirst();

  /// Whether track number and year may stand. They are looked at only where the person has changed
  /// them; where one may not stand, a box says why and the field has the focus. To be asked before
  /// the record is saved or left.
  [[nodiscard]] bool FieldsStand();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// When a field takes input.
  enum class Use { kAlways, kOneTrack, kComment };

  /// One field of the record and the control that shows it.
  struct Field {
    TrackField field;
    QWidget* control;
    Use use;
    QString tip = {};   ///< of the control, while its text needs none
    bool crlf = false;  ///< lines of the text end with "\r\n"
  };

  /// A field that is looked at when it loses the focus.
  struct CheckedField {
    QLineEdit* line = nullptr;
    TrackField field = TrackField::uid;
    std::optional<MessageBox> (*check)(std::string_view text) = nullptr;
    bool changed = false;  ///< by the person, since the record was loaded
  };

  /// A box that chooses a field for many tracks, and its words where their values do not differ.
  struct Box {
    QCheckBox* box = nullptr;
    TrackField field;
    QString tip, name;
  };

  void BindFirst();
  void BindSecondAndThird();
  void BindBoxes();
  void ConnectFields();
  void SetUpGenres();
  void Bind(TrackField field, QWidget* control);
  [[nodiscard]] static Use UseOf(TrackField field);
  void BindBigger(QWidget* button, QPlainTextEdit* field);

  void ShowText(Field& field);
  void ShowBoxes();
  void EnableFields();
  void Changed(Field& field);
  void ChangedForMany(TrackField field);
  void OpenBigger(QPlainTextEdit& field);
  void CheckLeftFields();
  [[nodiscard]] bool Stands(const CheckedField& field);

  DetailEditor& editor_;
  Interaction& interaction_;
  std::unique_ptr<Ui::picDetails> first_;
  std::unique_ptr<Ui::picDetails2> second_;
  std::unique_ptr<Ui::picDetails3> third_;
  std::vector<Field> fields_;
  std::vector<QWidget*> biggers_;
  std::vector<Box> boxes_;
  std::array<CheckedField, 2> checked_;
  QTimer leave_timer_;
  bool showing_ = false;   ///< texts are being set by the program
  bool checking_ = false;  ///< a box on a field is up
};

}  // namespace tunemeadow
