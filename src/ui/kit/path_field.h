// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <string>

#include "run/interaction.h"

namespace tunemeadow {

/// Shows a path that is chosen, not typed. The bytes are kept beside what the eye sees, so that a
/// name in no known encoding comes back as it was.
class PathField : public QLineEdit {
  Q_OBJECT

 public:
  explicit PathField(QWidget* parent = nullptr);

  void SetPath(const std::string& path);
  [[nodiscard]] const std::string& Path() const noexcept { return path_; }

  /// Room for some folders of a path.
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  /// The ground of a field that is not typed in.
  void ApplyGround();

  std::string path_;
};

/// Puts a chosen path into the field. False, and it is told, for one that the settings cannot hold.
bool TakePath(PathField& field, Interaction& interaction, const std::string& path);

/// Lets the person choose the folder of a setting, the present one offered first. The field gets it
/// with a trailing separator. Nothing changes on Cancel, nor with a path that the settings cannot
/// hold, which is told.
void ChooseFolderFor(PathField& field, Interaction& interaction, const std::string& title);

/// Likewise a file. True if the field got one. `choice.start` counts where the field is empty.
bool ChooseFileFor(PathField& field, Interaction& interaction, FileChoice choice);

}  // namespace tunemeadow
