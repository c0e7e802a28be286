// SPDX-License-Identifier: GPL-3.0-or-later
// The main window over a program folder of its own, and a person who gets about in it.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "library/import.h"
#include "run/session.h"
#include "support/mp3_builder.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "support/window_driver.h"
#include "ui/panes/result_view.h"
#include "ui/shell/frmStart.h"

namespace tunemeadow {

class MainWindowTest : public testing::Test {
 public:
  ~MainWindowTest() override {
    if (!window_) return;
    Bench().details.DetailsChanged = false;  // no question
    window_->close();
  }

 protected:
  using Settings = std::vector<std::pair<std::string, std::string>>;

  /// The program has run before: its catalogue has no rows, and with its settings the start asks
  /// nothing. Start shows the window.
  MainWindowTest() { ProvideProgram(program_); }

  static void ProvideProgram(const TempFolder& folder) {
    std::filesystem::copy_file(TM_BINARY_DIR "/data/mp3s.mdb", folder.Path("mp3s.mdb"));
    Fill(folder, {"delete from mp3sTabelle"});
    Configure(folder, {{"firstrun", "1"},
                       {"lblConfigWinamp", "/bin/true"},
                       {"chkBackup", "0"},
                       {"chkRepair", "0"}});
  }

  static void Configure(const TempFolder& folder, const Settings& settings) {
    Session(folder.Path(), "tunemeadow").ini.SaveStrings(kConfigSection, settings);
  }

  static void Fill(const TempFolder& folder, const std::vector<std::string>& statements) {
    Connection connection;
    connection.Open(folder.Path("mp3s.mdb"));
    for (const std::string& statement : statements) connection.Execute(statement);
  }

  /// Files with these titles, all by Anna, in the folder of music.
  void WriteSongs(std::initializer_list<const char*> titles) {
    for (const char* title : titles) {
      music_.Write(std::string(title) + ".mp3",
                   Mp3File().Id3v2({{"TIT2", title}, {"TPE1", "Anna"}}).Frames(20));
    }
  }

  /// A new run of the program, in `program_` or the folder given.
  void Start() { Start(program_); }
  void Start(const TempFolder& folder) {
    if (window_) window_->close();
    window_.reset();
    session_ = std::make_unique<Session>(folder.Path(), "tunemeadow");
    window_ = std::make_unique<frmStart>(*session_, world_);
    ASSERT_TRUE(window_->Form_Load());
  }

  /// No platform gives the focus back after a box, as a desktop does.
  void Activate() {
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  /// The files in the folder of music come in and are shown.
  void ImportMusic() {
    BoxAnswers answers{QMessageBox::Ok, QMessageBox::Ok};
    ImportDropped(Bench(), std::vector<std::string>{music_.Path()});
    Trigger(*window_, "mnuSuchen");
  }

  Workbench& Bench() { return window_->Bench(); }
  Connection& Catalogue() { return session_->connection; }
  ResultView& List(const char* name = "ListView1") { return Find<ResultView>(*window_, name); }
  QAction& Action(const char* name) { return Find<QAction>(*window_, name); }

  static QPoint Place(ResultView& list, int row) {
    const QModelIndex index = list.model()->index(row, 1);
    list.scrollTo(index);
    return list.visualRect(index).center();
  }
  static void ClickRow(ResultView& list, int row, Qt::KeyboardModifiers held = {}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, held, Place(list, row));
  }
  /// The rows of that title.
  void Click(std::string_view title, Qt::KeyboardModifiers held = {}) {
    for (std::size_t row = 0; row < Bench().ListView1.RowCount(); ++row) {
      if (Bench().ListView1.Cell(row, TrackField::Songname) != title) continue;
      ClickRow(List(), static_cast<int>(row), held);
    }
  }
  void Type(const char* field, const char* text) {
    auto& line = Find<QLineEdit>(*window_, field);
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, text);
  }
  std::string Shown(const char* field) {
    return Find<QLineEdit>(*window_, field).text().toStdString();
  }

  TempFolder program_;
  TempFolder music_;
  ScriptedWorld world_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<frmStart> window_;
};

}  // namespace tunemeadow
