// SPDX-License-Identifier: GPL-3.0-or-later
// The statements that write an edited row. Pure: they are run elsewhere.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "views/detail_editor.h"

namespace tunemeadow {

/// What a save knows beside the texts of the editor.
struct SaveFacts {
  std::string now;        ///< text of the present moment
  std::string file_time;  ///< text of the file's last-write time
  std::int64_t hasid3v1 = 0, hasid3v2 = 0;
};

/// The update of the record in the editor. `quote` delimits the texts; one that stands inside a
/// text is doubled, so that the stored text is that of the editor. Genre is the number of the text.
void BuildSaveStatement(const DetailEditor& details, const SaveFacts& facts, char quote,
                        std::string& statement);

/// One row of a mass save. Texts are as they shall be stored.
struct MassSaveTexts {
  std::string_view preference, situation, mood, tempo;
  std::array<std::string_view, kExtraFields> extra;  ///< in the order of txtSave3
  std::int64_t hasid3v1 = 0, hasid3v2 = 0;
  std::string_view comment, title, album, year, genre, now, file_time, artist;
  std::int64_t uid = 0;
};

/// The update of one row of a mass save. The delimiter is ", whatever the setting is.
void BuildMassSaveStatement(const MassSaveTexts& texts, std::string& statement);

}  // namespace tunemeadow
