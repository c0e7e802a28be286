// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_statement.h"

#include <span>
#include <string_view>

#include "audio/genres.h"
#include "editing/save_rules.h"
#include "store/statement.h"
#include "tracks/field_order.h"

namespace tunemeadow {
namespace {

constexpr auto kSaved = FieldsInOrder<&TrackFieldRow::save>();
constexpr auto kMassSaved = FieldsInOrder<&TrackFieldRow::mass_save>();

/// Writes updates of one kind.
class UpdateWriter {
 public:
  UpdateWriter(StatementPlace TrackFieldRow::*kind, char quote) : kind_(kind), quote_(quote) {}

  void Write(std::span<const TrackField> fields, const TrackTexts& texts, std::int64_t uid,
             std::string& statement) const {
    statement = "Update mp3sTabelle set ";
    for (const TrackField field : fields) {
      statement += (RowOf(field).*kind_).text;
      AppendValue(field, texts, statement);
    }
    statement.append(" where uid=").append(std::to_string(uid));
  }

 private:
  void AppendValue(TrackField field, const TrackTexts& texts, std::string& statement) const {
    if (RowOf(field).bare_number) {
      statement += texts[field];
    } else if (field == TrackField::genre) {
      const std::int16_t number = GenreNumberFromName(texts[TrackField::genrereal]);
      AppendQuoted(std::to_string(number), quote_, statement);
    } else if (field == TrackField::playtimereal) {
      const std::int64_t seconds = PlaytimeSeconds(texts[TrackField::Playtime]);
      AppendQuoted(std::to_string(seconds), quote_, statement);
    } else {
      AppendQuoted(texts[field], quote_, statement);
    }
  }

  StatementPlace TrackFieldRow::*kind_;
  char quote_;
};

}  // namespace

void BuildSaveStatement(const TrackTexts& texts, std::int64_t uid, char quote,
                        std::string& statement) {
  UpdateWriter(&TrackFieldRow::save, quote).Write(kSaved, texts, uid, statement);
}

void BuildMassSaveStatement(const TrackTexts& texts, std::int64_t uid, std::string& statement) {
  UpdateWriter(&TrackFieldRow::mass_save, '"').Write(kMassSaved, texts, uid, statement);
}

}  // namespace tunemeadow
