// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/window_interaction.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <limits>

#include "core/paths.h"
#include "core/text.h"
#include "run/busy.h"
#include "ui/kit/qt_text.h"
#include "ui/windows/editing/open_image.h"
#include "ui/windows/fileops/frmdoUmbenennen.h"
#include "ui/windows/library/frmLoading.h"

namespace tunemeadow {
namespace {

/// Painting costs fifty times as much as an event, and an eye is content with 20 pictures a second.
constexpr qint64 kPaintInterval = 50;  // milliseconds

// What a box can show without growing over the screen; in characters and lines.
constexpr qsizetype kLongestText = 1200;
constexpr qsizetype kMostLines = 24;
constexpr qsizetype kLongestWord = 90;

struct BoxButton {
  Answer answer;
  QMessageBox::StandardButton button;
  const char* caption;
};

constexpr std::array kBoxButtons{
    BoxButton{Answer::kOk, QMessageBox::Ok, "&OK"},
    BoxButton{Answer::kCancel, QMessageBox::Cancel, "&Cancel"},
    BoxButton{Answer::kYes, QMessageBox::Yes, "&Yes"},
    BoxButton{Answer::kNo, QMessageBox::No, "&No"},
    BoxButton{Answer::kAbort, QMessageBox::Abort, "&Abort"},
    BoxButton{Answer::kRetry, QMessageBox::Retry, "&Retry"},
    BoxButton{Answer::kIgnore, QMessageBox::Ignore, "&Ignore"},
};

struct BoxKind {
  QMessageBox::StandardButtons buttons;
  QMessageBox::StandardButton enter;
  QMessageBox::StandardButton escape;
};

BoxKind KindOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::kOkCancel:
      return {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel};
    case Buttons::kYesNo:
      return {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No};
    case Buttons::kAbortRetryIgnore:
      // Retry is the one answer that neither ends a batch nor skips a fault.
      return {QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore, QMessageBox::Retry,
              QMessageBox::Abort};
    case Buttons::kOk:
      break;
  }
  return {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok};
}

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::kInformation:
      return QMessageBox::Information;
    case Icon::kQuestion:
      return QMessageBox::Question;
    case Icon::kExclamation:
      return QMessageBox::Warning;
    case Icon::kCritical:
      return QMessageBox::Critical;
    case Icon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

/// The part of a text that a box can show.
QString BoxText(const QString& text) {
  QString shown = text.left(kLongestText);
  const QStringList lines = shown.split(QLatin1Char('\n'));
  if (lines.size() > kMostLines) shown = lines.mid(0, kMostLines).join(QLatin1Char('\n'));
  return shown.size() < text.size() ? shown + QChar(0x2026) : text;
}

bool HasEndlessWord(const QString& text) {
  qsizetype run = 0;
  return std::any_of(text.begin(), text.end(), [&run](QChar c) {
    run = c.isSpace() ? 0 : run + 1;
    return run > kLongestWord;
  });
}

void FillBox(QMessageBox& window, const MessageBox& box) {
  const QString text = ToQt(box.text);
  const QString shown = BoxText(text);
  window.setTextFormat(Qt::PlainText);
  window.setWindowTitle(ToQt(box.title));
  window.setText(shown);
  if (shown != text || HasEndlessWord(text)) window.setDetailedText(text);
  window.setIcon(IconOf(box.icon));
  const BoxKind kind = KindOf(box.buttons);
  window.setStandardButtons(kind.buttons);
  for (const BoxButton& row : kBoxButtons) {
    if (QAbstractButton* button = window.button(row.button)) {
      button->setText(QString::fromLatin1(row.caption));
    }
  }
  window.setDefaultButton(kind.enter);
  window.setEscapeButton(kind.escape);
}

std::string BytesOf(const QString& path) {
  const QByteArray bytes = QFile::encodeName(path);
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString PathOf(const std::string& bytes) {
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace

/// The time while a box is up: an ordinary pointer, and no window on top of the box.
class WindowInteraction::BoxScope {
 public:
  explicit BoxScope(WindowInteraction& owner) : owner_(owner) {
    owner_.Push();
    ++owner_.boxes_;
    owner_.ApplyPointer();
    loading_shown_ = owner_.loading_->isVisible();
    owner_.loading_->hide();
  }
  ~BoxScope() {
    --owner_.boxes_;
    owner_.ApplyPointer();
    if (loading_shown_) owner_.loading_->Appear(owner_.window_);
  }
  BoxScope(const BoxScope&) = delete;
  BoxScope& operator=(const BoxScope&) = delete;

 private:
  WindowInteraction& owner_;
  bool loading_shown_ = false;
};

WindowInteraction::WindowInteraction(Session& session)
    : session_(session), loading_(std::make_unique<frmLoading>(session)) {
  since_push_.start();
}

WindowInteraction::~WindowInteraction() {
  busy_depth_ = 0;
  ApplyPointer();
}

void WindowInteraction::SetMainWindow(const MainWindow& parts) {
  window_ = parts.window;
  status_label_ = parts.status;
  progress_bar_ = parts.progress;
  if (status_label_) status_label_->setTextFormat(Qt::PlainText);
  if (window_) window_->setEnabled(disabled_depth_ == 0);
  SetPanelWidth(panel_width_);
  if (progress_maximum_) {
    ShowProgress(*progress_maximum_);
  } else {
    HideProgress();
  }
}

QWidget* WindowInteraction::ParentOfBox() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (job_ && job_->isActiveWindow()) return job_.get();
  return window_ && window_->isVisible() ? window_.data() : nullptr;
}

Answer WindowInteraction::ShowMessage(const MessageBox& box) {
  const BoxScope scope(*this);
  QMessageBox window(ParentOfBox());
  FillBox(window, box);
  const int pressed = window.exec();
  for (const BoxButton& row : kBoxButtons) {
    if (row.button == pressed) return row.answer;
  }
  return Answer::kCancel;
}

std::optional<std::string> WindowInteraction::AskText(const std::string& prompt,
                                                      const std::string& title,
                                                      const std::string& offered) {
  const BoxScope scope(*this);
  QInputDialog dialog(ParentOfBox());
  dialog.setWindowTitle(ToQt(title));
  dialog.setLabelText(CaptionText(prompt));
  if (auto* label = dialog.findChild<QLabel*>()) label->setTextFormat(Qt::PlainText);
  dialog.setTextValue(ToQt(offered));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return FromQt(dialog.textValue());
}

std::optional<std::string> WindowInteraction::RunFileDialog(QFileDialog& dialog,
                                                            const std::string& start) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  const QFileInfo offered(PathOf(start));
  if (start.empty()) {
    dialog.setDirectory(QDir::home());
  } else if (offered.isDir()) {
    dialog.setDirectory(offered.filePath());
  } else {
    dialog.setDirectory(offered.dir().exists() ? offered.dir() : QDir::home());
    dialog.selectFile(offered.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return BytesOf(dialog.selectedFiles().constFirst());
}

std::optional<std::string> WindowInteraction::ChooseFolder(const std::string& title,
                                                           const std::string& start) {
  const BoxScope scope(*this);
  QFileDialog dialog(ParentOfBox(), ToQt(title));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("Select a drive or folder"));
  dialog.setLabelText(QFileDialog::Accept, QStringLiteral("&OK"));
  return RunFileDialog(dialog, start);
}

std::optional<std::string> WindowInteraction::ChooseFile(const FileChoice& choice) {
  const BoxScope scope(*this);
  const std::unique_ptr<QFileDialog> window =
      choice.images ? std::make_unique<OpenImage>(ParentOfBox(), ToQt(choice.title))
                    : std::make_unique<QFileDialog>(ParentOfBox(), ToQt(choice.title));
  QFileDialog& dialog = *window;
  dialog.setFileMode(choice.for_saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setAcceptMode(choice.for_saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, choice.asks_itself);
  if (!choice.filter.empty()) {
    const QString filter = ToQt(choice.filter);
    dialog.setNameFilters({filter, QStringLiteral("All files (*)")});
    if (choice.for_saving) {
      // "Name (*.ext)": a name typed without an extension gets this one.
      const QString pattern = filter.section(QStringLiteral("*."), 1, 1);
      dialog.setDefaultSuffix(
          pattern.section(QLatin1Char(')'), 0, 0).section(QLatin1Char(' '), 0, 0));
    }
  }
  return RunFileDialog(dialog, choice.start);
}

void WindowInteraction::SetStatus(const std::string& text) {
  status_ = text;
  if (!session_.busy) Push();
}

void WindowInteraction::SetPanelWidth(int twips) {
  panel_width_ = twips;
  if (!status_label_) return;
  // Never so wide that the panel would widen the window.
  const int room = status_label_->window()->width() * 2 / 3;
  status_label_->setMinimumWidth(std::min(twips / kTwipsPerPixel, room));
}

void WindowInteraction::SetBusyPointer(bool busy) {
  busy_depth_ = std::max(0, busy_depth_ + (busy ? 1 : -1));
  ApplyPointer();
}

void WindowInteraction::ApplyPointer() {
  const bool wanted = busy_depth_ > 0 && boxes_ == 0;
  if (wanted == pointer_busy_) return;
  pointer_busy_ = wanted;
  if (wanted) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void WindowInteraction::ShowProgress(std::int64_t maximum) {
  progress_maximum_ = std::max<std::int64_t>(maximum, 1);
  progress_ = 0;
  if (!progress_bar_) return;
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  progress_bar_->setRange(0, static_cast<int>(std::min(*progress_maximum_, kMost)));
  progress_bar_->setValue(0);
  progress_bar_->show();
}

void WindowInteraction::SetProgress(std::int64_t value) { progress_ = value; }

void WindowInteraction::HideProgress() {
  progress_maximum_.reset();
  if (progress_bar_) progress_bar_->hide();
  Push();
}

void WindowInteraction::ShowLoading(const std::string& line) {
  loading_line_ = line;
  if (loading_->isVisible()) {
    // Outside a batch nothing yields, so the new line has to be painted here.
    if (!session_.busy) {
      since_push_.invalidate();
      KeepPainting();
    }
    return;
  }
  if (session_.CancelRequested || (job_ && job_->Running())) return;
  Push();
  loading_->Appear(window_);
  since_push_.invalidate();
  KeepPainting();
}

void WindowInteraction::HideLoading() { loading_->hide(); }

void WindowInteraction::ShowJob(const std::string& title, std::int64_t maximum) {
  if (!job_) job_ = std::make_unique<frmdoUmbenennen>(session_);
  loading_->hide();
  job_->Begin(ToQt(title), maximum, window_);
}

void WindowInteraction::SetJobStep(std::int64_t value, const std::string& from,
                                   const std::string& to) {
  if (job_) job_->SetStep(value, ToQt(DisplayPath(from)), ToQt(DisplayPath(to)));
}

void WindowInteraction::AddJobLine(const std::string& line) {
  if (job_) job_->AddLine(ToQt(ToValidUtf8(line)));
}

void WindowInteraction::EndJob() {
  if (job_) job_->End();
}

void WindowInteraction::EnableMainWindow(bool enabled) {
  const bool was_enabled = disabled_depth_ == 0;
  disabled_depth_ = std::max(0, disabled_depth_ + (enabled ? -1 : 1));
  const bool is_enabled = disabled_depth_ == 0;
  if (!window_ || was_enabled == is_enabled) return;
  if (!is_enabled) focus_before_ = window_->focusWidget();
  window_->setEnabled(is_enabled);
  if (is_enabled) Push();  // the last line of the work, which nothing else will show
  if (is_enabled && focus_before_) {
    focus_before_->setFocus();
    focus_before_.clear();
  }
}

void WindowInteraction::ResizeForm() {
  if (window_ && window_->layout() != nullptr) window_->layout()->activate();
}

void WindowInteraction::Push() {
  if (status_label_) status_label_->setText(ToQt(status_));
  if (progress_bar_ && progress_maximum_) {
    progress_bar_->setValue(
        static_cast<int>(std::min<std::int64_t>(progress_, progress_bar_->maximum())));
  }
  loading_->SetLine(ToQt(loading_line_));
  since_push_.start();
}

bool WindowInteraction::MayPaint() const {
  return !since_push_.isValid() || since_push_.elapsed() >= kPaintInterval;
}

void WindowInteraction::Yield() {
  if (MayPaint()) Push();
  QCoreApplication::processEvents();
}

void WindowInteraction::KeepPainting() {
  if (!MayPaint()) return;
  // No other work starts from a timer while a statement is running.
  const Busy busy(session_, *this, {.pointer = false});
  Push();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace tunemeadow
