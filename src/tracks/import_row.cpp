// SPDX-License-Identifier: GPL-3.0-or-later
#include "tracks/import_row.h"

#include <array>
#include <span>

#include "core/dates.h"
#include "core/numbers.h"
#include "core/text.h"
#include "store/statement.h"
#include "tracks/field_order.h"

namespace tunemeadow {
namespace {

void CutInPlace(std::string& text, std::size_t longest, std::size_t cut_to) {
  if (text.size() > longest && Length(text) > longest) text.resize(Left(text, cut_to).size());
}

std::string SizeText(std::int64_t bytes) {
  return FormatFixed(static_cast<double>(bytes) / 1024 / 1024, 2) + " MB";
}

/// A number that was cut may be none any more.
void CapText(const TrackFieldRow& row, std::string& text) {
  const bool is_number = row.field == TrackField::BPM;
  if (is_number && !ParseNumber(text)) text.clear();
  CutInPlace(text, row.import.longest, row.import.cut_to);
  if (is_number && !ParseNumber(text)) text.clear();
  if (text.empty()) return;
  if (text.front() == ' ' || text.back() == ' ') text = StripNulls(text);
}

void BeautifyText(const Preferences& options, std::string& text) {
  if (options.chkCapitalize) text = Capitalize(text);
  if (options.chkReplace) {
    text = ReplaceEach(text, options.txtReplaceevery, options.txtReplacewith);
  }
}

void FinishTagTexts(const Preferences& options, TrackTexts& texts) {
  for (const TrackFieldRow& row : kTrackFieldTable) {
    if (!row.IsTagText()) continue;
    std::string& text = texts[row.field];
    if (text.find_first_of("'\"") != std::string::npos) text = EscapeTagText(text);
    CapText(row, text);
    if (row.import.beautified) BeautifyText(options, text);
  }
}

void SetFileTexts(const FileFacts& facts, std::string_view now, ImportRow& row) {
  TrackTexts& texts = row.texts;
  texts[TrackField::location] = facts.path;
  if (facts.length) {
    texts[TrackField::filesizereal] = std::to_string(*facts.length);
    // An empty file has a size text only where more is told of it.
    if (row.whole || *facts.length != 0) texts[TrackField::Filesize] = SizeText(*facts.length);
  }
  texts[TrackField::datetimeofdbinsert] = now;
  texts[TrackField::datetimeofdbupdate] = now;
  if (facts.last_write) texts[TrackField::datetimeoffile] = DateTimeText(*facts.last_write);
}

constexpr auto kWholeInsert = FieldsInOrder<&TrackFieldRow::insert>();

const std::string& WholeInsertHead() {
  static const std::string head = [] {
    std::string text = "insert into mp3sTabelle (";
    for (const TrackField field : kWholeInsert) text.append(RowOf(field).insert.text) += ',';
    text.back() = ')';
    return text + "  values (";
  }();
  return head;
}

constexpr std::string_view kShortInsertHead =
    "insert into mp3sTabelle (datetimeofdbinsert,datetimeofdbupdate,datetimeoffile,location,"
    "filesize,filesizereal) values (";

constexpr std::array kShortInsert = {TrackField::datetimeofdbinsert, TrackField::datetimeofdbupdate,
                                     TrackField::datetimeoffile,     TrackField::location,
                                     TrackField::Filesize,           TrackField::filesizereal};

}  // namespace

void FinishImportRow(const FileFacts& facts, const Preferences& options, std::string_view now,
                     ImportRow& row) {
  row.whole = facts.kind != FileKind::kOther;
  if (row.whole) {
    FinishTagTexts(options, row.texts);
  } else {
    for (std::string& text : row.texts.texts) text.clear();
  }
  SetFileTexts(facts, now, row);
}

void BuildInsertStatement(const ImportRow& row, char quote, std::string& statement) {
  statement = row.whole ? WholeInsertHead() : kShortInsertHead;
  const std::span<const TrackField> fields =
      row.whole ? std::span<const TrackField>(kWholeInsert) : kShortInsert;
  for (const TrackField field : fields) {
    if (RowOf(field).bare_number) {
      statement += row.texts[field];
    } else {
      AppendQuoted(row.texts[field], quote, statement);
    }
    statement += ',';
  }
  statement.back() = ')';
}

}  // namespace tunemeadow
