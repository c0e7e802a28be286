// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench over a catalogue of its own, empty but for what a test puts in.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run/command_run.h"
#include "support/catalogue.h"
#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"
#include "views/workbench.h"

namespace tunemeadow {

class CatalogueTest : public testing::Test {
 protected:
  using Texts = std::vector<std::string>;

  CatalogueTest() {
    session_.connection.Open(ProvideCatalogue(folder_));
    session_.connection.SetDurability(Durability::kBatch);
    Run("delete from mp3sTabelle");
  }

  void Run(const std::string& statement) { session_.connection.Execute(statement); }

  /// The first column of a select.
  Texts Rows(const std::string& statement) {
    const CellTable rows = session_.connection.Execute(statement).GetRows();
    Texts texts;
    for (std::size_t i = 0; i < rows.RowCount(); ++i) texts.emplace_back(rows.Cell(i, 0));
    return texts;
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
  ScriptedWorld world_;
  Workbench bench_{session_, interaction_, world_};
};

}  // namespace tunemeadow
