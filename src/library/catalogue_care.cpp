// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/catalogue_care.h"

#include <optional>
#include <string_view>

#include "core/numbers.h"
#include "core/paths.h"
#include "files/file_facts.h"
#include "run/catalogue.h"
#include "store/backup.h"
#include "store/compact_copy.h"
#include "store/file_origin.h"

namespace tunemeadow {
namespace {

using Origin = std::optional<FileOrigin>;

constexpr std::string_view kCareSection = "CARE";

/// The last care of a catalogue. Nothing in it can mislead: what is not the bytes that it tells of
/// is cared for again.
struct CareRecord {
  Origin compacted;  ///< the catalogue that the last compact copy has become
  Origin backed_up;  ///< the catalogue that the backup holds
  Origin backup;     ///< the backup itself
  bool operator==(const CareRecord&) const = default;
};

std::string OriginText(const Origin& origin) {
  if (!origin) return {};
  return std::to_string(origin->bytes) + " " + std::to_string(origin->checksum);
}

Origin OriginOfText(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return std::nullopt;
  const auto bytes = ParseWhole(text.substr(0, blank));
  const auto checksum = ParseWhole(text.substr(blank + 1));
  if (!bytes || !checksum) return std::nullopt;
  return FileOrigin{*bytes, *checksum};
}

CareRecord ReadRecord(const cINI& ini) {
  const StoredValues stored = ini.ReadSection(kCareSection);
  return {.compacted = OriginOfText(StoredValue(stored, "Compacted")),
          .backed_up = OriginOfText(StoredValue(stored, "BackedUp")),
          .backup = OriginOfText(StoredValue(stored, "Backup"))};
}

void WriteRecord(cINI& ini, const CareRecord& record) {
  ini.SaveStrings(kCareSection, {{"Compacted", OriginText(record.compacted)},
                                 {"BackedUp", OriginText(record.backed_up)},
                                 {"Backup", OriginText(record.backup)}});
}

/// Takes over what the tool left; the origin of the catalogue afterwards. The copy holds the same
/// rows: a backup of the catalogue from before is one of it.
Origin TakeOver(Workbench& bench, CareRecord& record, const Origin& catalogue) {
  const Session& session = bench.session;
  if (catalogue && RemoveUselessCopy(*catalogue, session.program_folder)) {
    record.compacted = catalogue;
    return catalogue;
  }
  bench.interaction.ShowLoading("Compacting the database...");
  const std::string& database = session.preferences.lblConfigDB;
  const auto taken = TakeOverCompactCopy(database, session.program_folder);
  if (!taken) return catalogue;
  if (!taken->before) return OriginOfCatalogue(database);
  if (record.backed_up == taken->before) record.backed_up = taken->after;
  record.compacted = taken->after;
  return taken->after;
}

void Repair(Workbench& bench, StartWindow& window, const std::string& shipped_folder) {
  if (StartRepairTool(bench.session, bench.world.processes, shipped_folder)) return;
  bench.session.preferences.chkRepair = false;
  window.DisableRepair();
}

void BackUp(Workbench& bench, CareRecord& record, const Origin& catalogue) {
  const Session& session = bench.session;
  const std::string backup = JoinPath(session.program_folder, kBackupName);
  if (catalogue && record.backed_up == catalogue && record.backup &&
      record.backup == OriginOfFile(backup)) {
    return;
  }
  const std::string line = "Backing up the database...";
  bench.interaction.ShowLoading(line);
  const std::string& database = session.preferences.lblConfigDB;
  const bool made = MakeBackup(database, session.program_folder, [&](int percent) {
    bench.interaction.ShowLoading(line + " " + std::to_string(percent) + "%");
  });
  record.backed_up.reset();
  record.backup.reset();
  // What somebody else wrote meanwhile may be in the backup or not.
  if (!made || !catalogue || OriginOfCatalogue(database) != catalogue) return;
  record.backed_up = catalogue;
  record.backup = OriginOfFile(backup);
}

}  // namespace

void CareForCatalogue(Workbench& bench, StartWindow& window, const std::string& shipped_folder) {
  Session& session = bench.session;
  const Preferences& wanted = session.preferences;
  if (wanted.lblConfigDB == kOtherDatabase || !(wanted.chkRepair || wanted.chkBackup)) return;
  const CareRecord before = ReadRecord(session.ini);
  CareRecord record = before;
  Origin catalogue = OriginOfCatalogue(wanted.lblConfigDB);
  // What the tool left at the start before is taken over first: the tool that starts now writes to
  // the same name.
  if (wanted.chkRepair && MyFileExists(JoinPath(session.program_folder, "compact.mdb"))) {
    catalogue = TakeOver(bench, record, catalogue);
  }
  if (wanted.chkRepair && (!catalogue || record.compacted != catalogue)) {
    Repair(bench, window, shipped_folder);
  }
  if (wanted.chkBackup) BackUp(bench, record, catalogue);
  if (!(record == before)) WriteRecord(session.ini, record);
}

}  // namespace tunemeadow
