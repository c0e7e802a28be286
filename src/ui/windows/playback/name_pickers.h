// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that pick one of the playlists or CD archives that exist: one look, two names.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class NamePicker;
}

namespace tunemeadow {

class NamePicker : public QDialog {
  Q_OBJECT

 public:
  ~NamePicker() override;

  /// The name that was selected at OK; empty after Cancel, or where nothing was selected.
  [[nodiscard]] std::string Chosen() const;

 protected:
  struct Look {
    const char* object_name;
    const char* title;
    const char* list_name;  ///< of the list, for a screen reader
    const char* icon;       ///< of each entry
    bool needs_choice;      ///< OK waits for a selection
  };
  NamePicker(const Look& look, const std::vector<std::string>& names, QWidget* parent);

 private:
  std::unique_ptr<Ui::NamePicker> ui_;
};

class frmShowPlaylists : public NamePicker {
  Q_OBJECT

 public:
  explicit frmShowPlaylists(const std::vector<std::string>& names, QWidget* parent = nullptr);
};

/// OK closes it without a selection too.
class frmChooseCDArchive : public NamePicker {
  Q_OBJECT

 public:
  explicit frmChooseCDArchive(const std::vector<std::string>& names, QWidget* parent = nullptr);
};

}  // namespace tunemeadow
