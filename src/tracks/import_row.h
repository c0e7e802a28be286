// SPDX-License-Identifier: GPL-3.0-or-later
// The row that import writes for one file, made of what the readers found, and the statement that
// writes it. Pure: opens no file, runs no statement.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "run/preferences.h"
#include "tracks/tag_port.h"
#include "tracks/track_fields.h"

namespace tunemeadow {

/// What is known of a file beside its tags.
struct FileFacts {
  std::string path;  ///< bytes
  FileKind kind = FileKind::kOther;
  std::optional<std::int64_t> length;     ///< bytes; none where the file cannot be looked at
  std::optional<std::time_t> last_write;  ///< none likewise
};

/// The texts of one row as they go between the delimiters of the statement: UTF-8, `location` in
/// bytes. haspic, hasid3v1 and hasid3v2 are "0" or "1".
struct ImportRow {
  bool whole = false;  ///< false: only dates, location and sizes stand in it
  TrackTexts texts;
};

/// Makes the row of a file whose tags have been read into its texts (TagPort::Read); of a file of
/// any other kind these count for nothing. Of the settings those of capitalising and replacing
/// count. `now` is the text of the present moment.
///
/// Quotes in tag texts: each single or double quote is two single quotes in the row. Lengths count
/// characters. Title and artist of more than 255 are cut to 25; comment, lyrics and biography have
/// no limit.
void FinishImportRow(const FileFacts& facts, const Preferences& options, std::string_view now,
                     ImportRow& row);

/// The statement that inserts the row: all columns, or dates, location and sizes for a row that is
/// not whole. `quote` delimits the texts; where a text holds it, it is doubled.
void BuildInsertStatement(const ImportRow& row, char quote, std::string& statement);

}  // namespace tunemeadow
