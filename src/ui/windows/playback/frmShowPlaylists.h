// SPDX-License-Identifier: GPL-3.0-or-later
// Picks one of the playlists that exist.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmShowPlaylists;
}

namespace tunemeadow {

class frmShowPlaylists : public QDialog {
  Q_OBJECT

 public:
  explicit frmShowPlaylists(const std::vector<std::string>& names, QWidget* parent = nullptr);
  ~frmShowPlaylists() override;

  /// The name that was selected at OK; empty after Cancel.
  [[nodiscard]] std::string Chosen() const;

 private:
  std::unique_ptr<Ui::frmShowPlaylists> ui_;
};

}  // namespace tunemeadow
