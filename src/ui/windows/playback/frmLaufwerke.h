// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses the drive that reads the discs of the CD archives.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "platform/drives.h"
#include "run/interaction.h"

namespace Ui {
class frmLaufwerke;
}

namespace tunemeadow {

class frmLaufwerke : public QDialog {
  Q_OBJECT

 public:
  /// Lists the drives, each with its type; that of `present`, with or without a separator at its
  /// end, is selected. A folder that is no drive is chosen by way of `interaction`.
  frmLaufwerke(const std::vector<Drive>& drives, const std::string& present,
               Interaction& interaction, QWidget* parent = nullptr);
  ~frmLaufwerke() override;

  /// The selected drive, bytes, without a separator at its end ("/" stays); empty if none is.
  [[nodiscard]] std::string Chosen() const;

 private:
  void cmdFolder_Click();

  std::unique_ptr<Ui::frmLaufwerke> ui_;
  Interaction& interaction_;
};

}  // namespace tunemeadow
