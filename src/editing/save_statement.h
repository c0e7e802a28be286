// SPDX-License-Identifier: GPL-3.0-or-later
// The statements that write an edited row. Pure: they are run elsewhere.
#pragma once

#include <cstdint>
#include <string>

#include "tracks/track_fields.h"

namespace tunemeadow {

/// The update of the record in the editor. Texts are as they shall be stored; the number of the
/// genre and the seconds of the play time follow from their texts. `quote` delimits the texts; one
/// that stands inside a text is doubled.
void BuildSaveStatement(const TrackTexts& texts, std::int64_t uid, char quote,
                        std::string& statement);

/// The update of one row of a mass save. The delimiter is ", whatever the setting is.
void BuildMassSaveStatement(const TrackTexts& texts, std::int64_t uid, std::string& statement);

}  // namespace tunemeadow
