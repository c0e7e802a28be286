// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/windows/fileops/frmdoUmbenennen.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <limits>

#include "ui_frmdoUmbenennen.h"

namespace tunemeadow {
namespace {

constexpr int kJobWidth = 90;   // in average characters: a path of some length is read whole
constexpr int kJobHeight = 22;  // in lines
constexpr int kMostLogLines = 100'000;  // of the log; older ones go

void ShowElidedPath(QLabel& label, const QString& path) {
  label.setText(label.fontMetrics().elidedText(path, Qt::ElideMiddle, label.width()));
}

}  // namespace

frmdoUmbenennen::frmdoUmbenennen(Session& session)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::frmdoUmbenennen>()),
      session_(session) {
  ui_->setupUi(this);
  ui_->txtMeldungen->setMaximumBlockCount(kMostLogLines);
  resize(kJobWidth * fontMetrics().averageCharWidth(), kJobHeight * fontMetrics().lineSpacing());
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmdoUmbenennen::reject);
}

frmdoUmbenennen::~frmdoUmbenennen() = default;

void frmdoUmbenennen::Begin(const QString& title, std::int64_t maximum, const QWidget* above) {
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  running_ = true;
  setWindowTitle(title);
  ui_->txtMeldungen->clear();
  ui_->ProgressBar1->setRange(0, static_cast<int>(std::clamp<std::int64_t>(maximum, 1, kMost)));
  ui_->cmdClose->setText("&Cancel");
  SetStep(0, QString(), QString());
  const bool over_window = above != nullptr && above->isVisible();
  const QRect area =
      over_window ? above->frameGeometry() : QApplication::primaryScreen()->availableGeometry();
  move(area.center() - rect().center());
  // Stays above the main window, which comes to the front with each of its boxes.
  (void)winId();
  if (over_window) windowHandle()->setTransientParent(above->window()->windowHandle());
  show();
  raise();
}

void frmdoUmbenennen::SetStep(std::int64_t value, const QString& from, const QString& to) {
  ui_->ProgressBar1->setValue(static_cast<int>(
      std::min<std::int64_t>(value, static_cast<std::int64_t>(ui_->ProgressBar1->maximum()))));
  from_ = from;
  to_ = to;
  ShowFiles();
}

void frmdoUmbenennen::ShowFiles() {
  ShowElidedPath(*ui_->lblFromFile, from_);
  ShowElidedPath(*ui_->lblToFile, to_);
  ui_->lblToFile->setVisible(!to_.isEmpty());
}

void frmdoUmbenennen::AddLine(const QString& line) { ui_->txtMeldungen->appendPlainText(line); }

void frmdoUmbenennen::End() {
  running_ = false;
  ui_->cmdClose->setText("&Close");
  ui_->cmdClose->setEnabled(true);
  ui_->cmdClose->setFocus();
}

void frmdoUmbenennen::reject() {
  if (!running_) {
    hide();
    return;
  }
  session_.CancelRequested = true;
  ui_->cmdClose->setEnabled(false);
}

}  // namespace tunemeadow
