// SPDX-License-Identifier: GPL-3.0-or-later
// The settings: five pages on TabStrip1. Loaded hidden at the start, shown and hidden again during
// the run, never unloaded before the end.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "platform/world.h"
#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

class frmPreferences : public QDialog {
  Q_OBJECT

 public:
  /// All must outlive the window; the preferences of the session are read already.
  frmPreferences(Session& session, Interaction& interaction, World& world,
                 QWidget* parent = nullptr);
  ~frmPreferences() override;

  /// Brings the preferences of the session into the controls.
  void ShowPreferences();

  /// chkRepair, whose preference is off, is out of reach: there is no tool that could repair.
  void DisableRepair();

  /// The chooser of the database, for a start that could not open it: the preferences of the
  /// session get the file that the person picks; nothing is written. False if nothing was picked.
  [[nodiscard]] bool ChooseDatabase();

  /// Shows the preferences of the session until OK or Cancel.
  int exec() override;

  /// Cancel: session and controls get the values back that were current when the dialog opened.
  /// What an OK before has written stays written.
  void reject() override;

 signals:
  /// The preferences of the session have changed: after OK they are those of the controls, also
  /// where a check keeps the dialog open; after a Cancel that follows such an OK, those of before.
  void PreferencesChanged();

 private:
  struct Pages;

  void BuildPages();
  void ConnectControls();
  void cdmOK_Click();
  void cboEncoder_Click(int index);
  void EnableSavingControls();
  void EnableEncoderControls();
  /// The chooser of the database; false if nothing was picked.
  bool Command3_Click();
  void Command4_Click();
  void Command6_Click();

  std::unique_ptr<Pages> ui_;
  Session& session_;
  Interaction& interaction_;
  World& world_;
  Preferences before_;               ///< when the dialog opened
  std::string kind_before_;          ///< PlayerKind then
  bool autocomment_before_ = false;  ///< txtautocomment took input then
  bool applied_ = false;             ///< OK was pressed since, and a check kept the dialog open
};

}  // namespace tunemeadow
