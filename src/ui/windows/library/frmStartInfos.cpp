// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/library/frmStartInfos.h"

#include "run/preference_rules.h"
#include "ui/kit/qt_text.h"
#include "ui_frmStartInfos.h"

namespace tunemeadow {
namespace {

constexpr int kTextWidth = 72;  // in average characters
constexpr int kTreeRows = 7;

void AddDetected(QTreeWidget& tree, const QString& what, const char* icon, const QString& value) {
  auto* node = new QTreeWidgetItem(&tree, {what});
  node->setIcon(0, QIcon::fromTheme(QLatin1String(icon)));
  auto* child = new QTreeWidgetItem(node, {value});
  child->setToolTip(0, value);
  node->setExpanded(true);
}

}  // namespace

frmStartInfos::frmStartInfos(Session& session, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmStartInfos>()), session_(session) {
  ui_->setupUi(this);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmStartInfos::cmdOK_Click);
  connect(ui_->cmdGoPref, &QPushButton::clicked, this, &frmStartInfos::cmdGoPref_Click);
  ShowDetected();
  ui_->lblText->setMinimumWidth(kTextWidth * fontMetrics().averageCharWidth());
  ui_->TreeView1->setMinimumHeight(kTreeRows * fontMetrics().lineSpacing());
  ui_->cmdOK->setFocus();
}

frmStartInfos::~frmStartInfos() = default;

void frmStartInfos::ShowDetected() {
  const Preferences& preferences = session_.preferences;
  ui_->TreeView1->clear();
  AddDetected(*ui_->TreeView1, QStringLiteral("Primary MP3 Player"), "play",
              PathForEye(preferences.lblConfigWinamp));
  AddDetected(*ui_->TreeView1, QStringLiteral("CDROM"), "archives",
              preferences.lblConfigCDROM.empty() ? QStringLiteral("none")
                                                 : PathForEye(preferences.lblConfigCDROM));
  ui_->lblAutoComment->setVisible(preferences.chkAutoComment);
  ui_->lblAutoComment->setText(
      QStringLiteral(
          "Auto-Comment is on: whenever you save a track, its comment is replaced by \"%1\", in "
          "the "
          "file and in the catalogue. What stood there before is lost. If you want to keep the "
          "comments of your files, switch Auto-Comment off in the preferences.")
          .arg(ToQt(preferences.txtautocomment)));
}

void frmStartInfos::cmdOK_Click() {
  ConfirmFirstRun(session_);
  accept();
}

void frmStartInfos::cmdGoPref_Click() {
  emit PreferencesRequested();
  ShowDetected();
}

}  // namespace tunemeadow
