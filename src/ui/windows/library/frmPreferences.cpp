// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmPreferences.h"

#include "library/start_up.h"
#include "platform/player_detection.h"
#include "run/preference_rules.h"
#include "ui/kit/help_pages.h"
#include "ui/kit/path_field.h"
#include "ui/kit/preference_controls.h"
#include "ui/kit/qt_text.h"
#include "ui/windows/playback/frmLaufwerke.h"
#include "ui_frameEncoding.h"
#include "ui_frameImport.h"
#include "ui_frameMain.h"
#include "ui_frameSaving.h"
#include "ui_frameplaying.h"
#include "ui_frmPreferences.h"

namespace tunemeadow {
namespace {

constexpr std::string_view kEncoderPage = "https://lame.sourceforge.io/";

}  // namespace

struct frmPreferences::Pages {
  Ui::frmPreferences window;
  Ui::frameMain main;
  Ui::frameImport import;
  Ui::frameplaying playing;
  Ui::frameSaving saving;
  Ui::frameEncoding encoding;
};

frmPreferences::frmPreferences(Session& session, Interaction& interaction, World& world,
                               QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Pages>()),
      session_(session),
      interaction_(interaction),
      world_(world) {
  BuildPages();
  ConnectControls();
  ShowPreferences();
  // The start rules the other way round than OK, which takes over at its first press.
  ui_->main.txtautocomment->setEnabled(session_.preferences.chkAutoComment);
}

frmPreferences::~frmPreferences() = default;

void frmPreferences::BuildPages() {
  Ui::frmPreferences& window = ui_->window;
  window.setupUi(this);
  ui_->main.setupUi(window.frameMain);
  ui_->import.setupUi(window.frameImport);
  ui_->playing.setupUi(window.frameplaying);
  ui_->saving.setupUi(window.frameSaving);
  ui_->encoding.setupUi(window.frameEncoding);
  for (const EncoderEntry& entry : kEncoders) ui_->encoding.cboEncoder->addItem(ToQt(entry.text));
  QPushButton& link = *ui_->encoding.Label16;
  QPalette colours = link.palette();
  colours.setColor(QPalette::ButtonText, colours.color(QPalette::Link));
  link.setPalette(colours);
  link.setCursor(Qt::PointingHandCursor);
  // The pages were made after the buttons and would come after them.
  setTabOrder(ui_->encoding.Label16, window.cdmOK);
  setTabOrder(window.cdmOK, window.cmdCancel);
  setTabOrder(window.cmdCancel, window.cmdHelp);
}

void frmPreferences::ConnectControls() {
  const auto folder = [this](QPushButton* button, PathField* field, const char* title) {
    connect(button, &QPushButton::clicked, this,
            [this, field, title] { ChooseFolderFor(*field, interaction_, title); });
  };
  folder(ui_->import.Command2, ui_->import.lblScan, "Import files from");
  folder(ui_->import.Command1, ui_->import.lblPreviewPath, "Save previews in");
  connect(ui_->playing.Command6, &QPushButton::clicked, this, &frmPreferences::Command6_Click);
  connect(ui_->main.Command3, &QPushButton::clicked, this, &frmPreferences::Command3_Click);
  connect(ui_->main.Command4, &QPushButton::clicked, this, &frmPreferences::Command4_Click);
  connect(ui_->encoding.Command5, &QPushButton::clicked, this, [this] {
    ChooseFileFor(*ui_->encoding.lblEncoderPath, interaction_,
                  {.title = "Program location", .start = "/usr/bin/"});
  });
  for (QCheckBox* box : {ui_->saving.chkSaveTags, ui_->saving.chkSaveTags23,
                         ui_->saving.chkSaveTags11, ui_->saving.chkSaveLyrics2}) {
    connect(box, &QCheckBox::toggled, this, &frmPreferences::EnableSavingControls);
  }
  connect(ui_->encoding.cboEncoder, &QComboBox::activated, this, &frmPreferences::cboEncoder_Click);
  connect(ui_->encoding.Label16, &QPushButton::clicked, this,
          [this] { OpenWebPage(kEncoderPage, world_.shell); });
  connect(ui_->window.cmdHelp, &QPushButton::clicked, this,
          [this] { OpenHelpPage(session_, "preferences.html", world_.shell, interaction_); });
  connect(ui_->window.cdmOK, &QPushButton::clicked, this, &frmPreferences::cdmOK_Click);
  connect(ui_->window.cmdCancel, &QPushButton::clicked, this, &frmPreferences::reject);
}

void frmPreferences::ShowPreferences() {
  FillControls(*this, session_.preferences);
  EnableSavingControls();
  EnableEncoderControls();
}

void frmPreferences::DisableRepair() {
  ui_->main.chkRepair->setChecked(false);
  ui_->main.chkRepair->setEnabled(false);
}

void frmPreferences::Command6_Click() {
  PathField& field = *ui_->playing.lblConfigCDROM;
  frmLaufwerke window(DrivesForDiscs(world_.drives), field.Path(), interaction_, this);
  if (window.exec() == Accepted) (void)TakePath(field, interaction_, window.Chosen());
}

bool frmPreferences::Command3_Click() {
  PathField& field = *ui_->main.lblConfigDB;
  const bool known = !field.Path().empty() && field.Path() != kOtherDatabase;
  FileChoice choice{.title = "Database location",
                    .filter = "Access-Datenbank (*.mdb)",
                    .start = known ? field.Path() : session_.program_folder};
  for (;;) {
    const auto chosen = interaction_.ChooseFile(choice);
    if (!chosen) return false;
    if (PathFitsSettings(*chosen)) {
      field.SetPath(*chosen);
      return true;
    }
    choice.start = *chosen;
    interaction_.ShowMessage(OpenFailedBox(*chosen, DatabaseError(0, std::string(kPathTooLong))));
  }
}

bool frmPreferences::ChooseDatabase() {
  if (!Command3_Click()) return false;
  session_.preferences.lblConfigDB = ui_->main.lblConfigDB->Path();
  return true;
}

int frmPreferences::exec() {
  before_ = session_.preferences;
  kind_before_ = session_.PlayerKind;
  autocomment_before_ = ui_->main.txtautocomment->isEnabledTo(this);
  applied_ = false;
  ShowPreferences();
  return QDialog::exec();
}

void frmPreferences::reject() {
  session_.preferences = before_;
  session_.success_messages = before_.chkWarnGlobal;
  session_.PlayerKind = kind_before_;
  ShowPreferences();
  ui_->main.txtautocomment->setEnabled(autocomment_before_);
  if (applied_) emit PreferencesChanged();
  QDialog::reject();
}

void frmPreferences::cdmOK_Click() {
  Preferences controls = session_.preferences;
  ReadControls(*this, controls);
  const bool done = ConfirmPreferences(session_, interaction_, controls, before_.lblConfigDB);
  ui_->main.txtautocomment->setEnabled(!controls.chkAutoComment);
  applied_ = true;
  emit PreferencesChanged();
  if (done) accept();
}

void frmPreferences::cboEncoder_Click(int index) {
  Preferences controls = session_.preferences;
  ReadControls(*this, controls);
  ChooseEncoder(controls, index);
  FillControls(*ui_->window.frameEncoding, controls);
  EnableEncoderControls();
}

void frmPreferences::EnableSavingControls() {
  Ui::frameSaving& page = ui_->saving;
  const SavingControls enabled =
      EnabledSavingControls(page.chkSaveTags->isChecked(), page.chkSaveTags23->isChecked());
  page.chkSaveTags11->setEnabled(enabled.chkSaveTags11);
  page.chkSaveTags23->setEnabled(enabled.chkSaveTags23);
  page.lblLyricsSaved->setEnabled(enabled.lyrics_label);
  page.chkSaveLyrics1->setEnabled(enabled.chkSaveLyrics1);
  page.chkSaveLyrics2->setEnabled(enabled.chkSaveLyrics2);
  page.lblLyricsWarning->setVisible(WritesOverSound(page.chkSaveTags->isChecked(),
                                                    page.chkSaveTags11->isChecked(),
                                                    page.chkSaveLyrics2->isChecked()));
}

void frmPreferences::EnableEncoderControls() {
  Ui::frameEncoding& page = ui_->encoding;
  const bool program = !IsLibraryEncoder(page.cboEncoder->currentIndex());
  page.Command5->setEnabled(program);
  page.txtEncoderParams->setEnabled(program);
  page.txtDecoderParams->setEnabled(program);
}

void frmPreferences::Command4_Click() {
  if (ChooseFileFor(*ui_->main.lblConfigWinamp, interaction_,
                    {.title = "External MP3-Player", .start = "/usr/bin/"})) {
    session_.PlayerKind = PlayerKindOf(ui_->main.lblConfigWinamp->Path());
  }
}

}  // namespace tunemeadow
