// SPDX-License-Identifier: GPL-3.0-or-later
// Turns a statement as the commands write it into the dialect of the store. It is a tokenizer: what
// stands inside a literal or brackets is never touched.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tunemeadow {

/// A statement ready for the store: each text literal has become a parameter, so that no text can
/// ever be read as a name, and statements that differ only in their texts are the same statement.
struct StoreStatement {
  std::string sql;                  ///< "?" stands for each text
  std::vector<std::string> values;  ///< the texts, in order
};

/// Translates one statement:
/// - "text" and 'text' are literals; the doubled delimiter inside stands for one, the other quote
///   for itself. [name] stays a name.
/// - `&` becomes `||`.
/// - left(, right(, len(, now(, dateadd( become functions of the store; isnull(x) becomes
///   (x is null).
/// - BPM, playtimereal and filesizereal beside a comparison with a bare number compare as numbers,
///   and an empty or missing value never falls into a range.
/// Throws DatabaseError for an unterminated literal or bracket and for a second statement after
/// the first.
[[nodiscard]] StoreStatement TranslateStatement(std::string_view statement);

/// `text` for use between two `quote` characters of a statement: each `quote` inside is doubled,
/// which TranslateStatement undoes, so the stored text is `text`.
[[nodiscard]] std::string QuoteInner(std::string_view text, char quote);

/// The literal: quote, QuoteInner, quote.
[[nodiscard]] std::string Quoted(std::string_view text, char quote);
void AppendQuoted(std::string_view text, char quote, std::string& statement);

/// Tag text on its way into an insert or update of the import: every single quote becomes a double
/// quote, then every double quote becomes two single quotes. They come back as two single quotes.
[[nodiscard]] std::string EscapeTagText(std::string_view text);

/// A search value: with the delimiter `"` every double quote becomes two single quotes, with the
/// delimiter `'` every single quote becomes a double quote.
[[nodiscard]] std::string EscapeSearchValue(std::string_view text, char quote);

}  // namespace tunemeadow
