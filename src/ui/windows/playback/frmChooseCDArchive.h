// SPDX-License-Identifier: GPL-3.0-or-later
// Picks one of the CD archives that exist.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmChooseCDArchive;
}

namespace tunemeadow {

class frmChooseCDArchive : public QDialog {
  Q_OBJECT

 public:
  explicit frmChooseCDArchive(const std::vector<std::string>& names, QWidget* parent = nullptr);
  ~frmChooseCDArchive() override;

  /// The name that was selected at OK, which closes the window without one too; else empty.
  [[nodiscard]] std::string Chosen() const;

 private:
  std::unique_ptr<Ui::frmChooseCDArchive> ui_;
};

}  // namespace tunemeadow
