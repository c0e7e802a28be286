// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/import.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "audio/mp3reader.h"
#include "core/paths.h"
#include "core/text.h"
#include "files/file_facts.h"
#include "library/find_files.h"
#include "run/batch.h"
#include "store/database.h"
#include "tracks/import_file.h"
#include "tracks/import_row.h"
#include "views/quick_search.h"
#include "views/search_items.h"

namespace tunemeadow {
namespace {

std::string CountOfFiles(std::int64_t count) { return std::to_string(count) + " File(s)"; }

/// What one import knows of itself. The list grows by one slot for each file, so that its last slot
/// is always empty.
struct ImportRun {
  std::vector<std::string> ImportFileList = {""};
  std::int64_t ImportFileCount = 0;
  std::int64_t known = 0;         ///< files that had a row already
  LeftOut left_out;               ///< by the walk
  std::int64_t cancelled_at = 0;  ///< number of the file before which the cancel was seen
  std::string statement;          ///< of the row at work; its memory serves them all

  void TakeList(std::vector<std::string> paths) {
    ImportFileCount = static_cast<std::int64_t>(paths.size());
    ImportFileList = std::move(paths);
    ImportFileList.emplace_back();
  }
};

/// What other windows left for this import is gone after it, however it ends.
class GivenListScope {
 public:
  explicit GivenListScope(Workbench& bench) : bench_(bench) {}
  ~GivenListScope() {
    bench_.ImportList.clear();
    bench_.ImportGivenFiles = false;
    bench_.ImportFromMonitor = false;
  }
  GivenListScope(const GivenListScope&) = delete;
  GivenListScope& operator=(const GivenListScope&) = delete;

 private:
  Workbench& bench_;
};

/// A long search for a frame header takes the status panel and lets the window live.
class HeaderSearchProgress : public ScanProgress {
 public:
  explicit HeaderSearchProgress(Interaction& interaction) : interaction_(interaction) {}

  void OnPosition(std::int64_t position, std::int64_t length) override {
    if (!shown_before_) shown_before_ = interaction_.Status();
    interaction_.SetStatus(SearchPositionText(position, length));
    interaction_.Yield();
  }

  void OnSearchEnd() override {
    if (shown_before_) interaction_.SetStatus(*shown_before_);
    shown_before_.reset();
  }

 private:
  Interaction& interaction_;
  std::optional<std::string> shown_before_;
};

// --- The list ------------------------------------------------------------------------------------

/// False: no folder was chosen.
bool EnsureScanFolder(Workbench& bench) {
  std::string& folder = bench.session.preferences.lblScan;
  if (!folder.empty()) return true;
  const auto chosen = bench.interaction.ChooseFolder("Import files from", folder);
  if (chosen) folder = WithTrailingSeparator(*chosen);
  return !folder.empty();
}

void TakeFilesOfFolder(Workbench& bench, ImportRun& run) {
  const Preferences& preferences = bench.session.preferences;
  const WalkOptions walk{.extensions = preferences.txtPattern,
                         .recursive = preferences.chkRekursiv,
                         .read_hidden = preferences.chkReadHiddenFiles,
                         .statusMode = StatusMode::kImport};
  std::vector<std::string> found;
  run.left_out =
      FindFilesRecursive(bench.session, bench.interaction, preferences.lblScan, walk, found);
  run.TakeList(std::move(found));
}

void TellNoFiles(Workbench& bench, const ImportRun& run) {
  bench.interaction.ShowMessage({.text = "No File(s) found", .icon = Icon::kExclamation});
  const std::string left_out = LeftOutText(run.left_out);
  if (!left_out.empty()) bench.interaction.SetStatus(left_out);
}

/// False: there is nothing to import, and the person was told.
bool TakeFiles(Workbench& bench, ImportRun& run) {
  if (bench.ImportFromMonitor) {
    run.TakeList(std::move(bench.ImportList));
    return run.ImportFileCount > 0;
  }
  {
    const Batch search(bench.session, bench.interaction, "searching files...", 0);
    if (bench.ImportGivenFiles) {
      run.TakeList(std::move(bench.ImportList));
    } else {
      TakeFilesOfFolder(bench, run);
    }
  }
  if (run.ImportFileCount > 0) return true;
  if (bench.session.CancelRequested) {
    bench.interaction.ShowMessage({.text = "Search was cancelled!", .icon = Icon::kInformation});
  } else {
    TellNoFiles(bench, run);
  }
  return false;
}

bool WantsImport(Workbench& bench, const std::string& what) {
  return bench.interaction.ShowMessage(
             {.text = "Import " + what + "?", .buttons = Buttons::kOkCancel}) == Answer::kOk;
}

// --- The files -----------------------------------------------------------------------------------

/// Runs the statement of one row, which is committed by itself.
void InsertRow(Workbench& bench, Batch& batch, const ImportRow& row, ImportRun& run) {
  BuildInsertStatement(row, bench.session.quote, run.statement);
  try {
    bench.session.connection.Execute(run.statement);
    if (bench.session.connection.Changes() == 0) ++run.known;
  } catch (const DatabaseError& error) {
    batch.ShowMessage({.text = error.WithStatement()});
  }
}

ImportEnd ImportFiles(Workbench& bench, ImportRun& run) {
  const auto last = static_cast<std::int64_t>(run.ImportFileList.size()) - 1;
  Batch batch(bench.session, bench.interaction, "importing...", std::max<std::int64_t>(last, 1));
  ImportReader reader(bench.session.preferences, bench.Tags());
  HeaderSearchProgress progress(bench.interaction);
  for (std::int64_t i = 0; i <= last; ++i) {
    if (!batch.Step(i)) {
      run.cancelled_at = i;
      return ImportEnd::kCancelled;
    }
    const std::string& path = run.ImportFileList[static_cast<std::size_t>(i)];
    if (path.empty()) continue;
    bench.interaction.SetStatus(DisplayPath(path));
    InsertRow(bench, batch, reader.Read(path, &progress), run);
  }
  return ImportEnd::kComplete;
}

// --- The end -------------------------------------------------------------------------------------

void TellEnd(Workbench& bench, const ImportRun& run, ImportEnd end) {
  if (end == ImportEnd::kCancelled) {
    const std::string text = std::to_string(run.cancelled_at) + "/" +
                             std::to_string(run.ImportFileCount) + " Files successfully imported.";
    bench.interaction.ShowMessage({.text = text, .title = "Import was cancelled!"});
  } else if (bench.session.success_messages && !bench.ImportFromMonitor) {
    bench.interaction.ShowMessage(
        {.text = CountOfFiles(run.ImportFileCount) + " successfully imported.", .title = "Import"});
  }
  bench.ImportFromMonitor = false;
}

/// What the closing box does not say: the files that had a row already, and what was left out.
std::string ClosingLine(const ImportRun& run) {
  std::string line = LeftOutText(run.left_out);
  if (run.known == 0) return line;
  return CountOfFiles(run.known) + " already known." + (line.empty() ? "" : " ") + line;
}

/// The line is told last, where it stays.
void RenewViews(Workbench& bench, const ImportRun& run) {
  RefreshAllSearchitems(bench);
  UpdateTrackCount(bench);
  cmdSuchen(bench);
  const std::string line = ClosingLine(run);
  if (!line.empty()) bench.interaction.SetStatus(line);
}

ImportEnd ImportAndTell(Workbench& bench, ImportRun& run) {
  const ImportEnd end = ImportFiles(bench, run);
  TellEnd(bench, run, end);
  RenewViews(bench, run);
  return end;
}

// --- The drop ------------------------------------------------------------------------------------

/// Whether the text after the last "." of the whole path stands in the pattern.
bool ExtensionOccurs(std::string_view path, std::string_view pattern) {
  const std::size_t dot = path.rfind('.');
  const std::string_view extension = dot == std::string_view::npos ? path : path.substr(dot + 1);
  return !extension.empty() && FindNoCase(pattern, extension) != std::string_view::npos;
}

bool IsDroppedFile(const std::string& path, std::string_view pattern) {
  return ExtensionOccurs(path, pattern) && !IsDirectory(path);
}

ImportEnd ImportDroppedItems(Workbench& bench, const std::vector<std::string>& paths) {
  Preferences& preferences = bench.session.preferences;
  if (paths.size() == 1 && IsDirectory(paths.front())) {
    const bool has_separator = paths.front().find_first_of("/\\") != std::string::npos;
    preferences.lblScan = has_separator ? paths.front() : WithTrailingSeparator(paths.front());
    return Command1_Click(bench);
  }
  std::vector<std::string> files;
  std::copy_if(paths.begin(), paths.end(), std::back_inserter(files), [&](const std::string& path) {
    return IsDroppedFile(path, preferences.txtPattern);
  });
  ImportRun run;
  run.TakeList(std::move(files));
  if (run.ImportFileCount == 0) {
    TellNoFiles(bench, run);
    return ImportEnd::kNothingDone;
  }
  if (!WantsImport(bench, std::to_string(run.ImportFileCount) + " file(s)")) {
    return ImportEnd::kNothingDone;
  }
  return ImportAndTell(bench, run);
}

}  // namespace

ImportEnd Command1_Click(Workbench& bench) {
  const GivenListScope scope(bench);
  const bool list_is_given = bench.ImportGivenFiles || bench.ImportFromMonitor;
  ImportRun run;
  if (!list_is_given && !EnsureScanFolder(bench)) return ImportEnd::kNothingDone;
  if (!TakeFiles(bench, run)) return ImportEnd::kNothingDone;
  if (!bench.ImportFromMonitor && !WantsImport(bench, CountOfFiles(run.ImportFileCount))) {
    return ImportEnd::kNothingDone;
  }
  return ImportAndTell(bench, run);
}

ImportEnd ImportDropped(Workbench& bench, const std::optional<std::vector<std::string>>& paths) {
  if (!paths || paths->empty()) {
    bench.interaction.ShowMessage({.text = "This is not a supported OLE DataObject"});
    return ImportEnd::kNothingDone;
  }
  return ImportDroppedItems(bench, *paths);
}

}  // namespace tunemeadow
