// SPDX-License-Identifier: GPL-3.0-or-later
#include "editing/save_rules.h"

#include <limits>

#include "core/numbers.h"
#include "core/text.h"

namespace tunemeadow {
namespace {

constexpr std::int64_t kLargestTrack = 255;

/// The whole number of at most 16 bits that the text is.
std::optional<std::int64_t> Whole16(std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) return std::nullopt;
  const std::int64_t whole = RoundHalfEven(*number);
  if (whole < std::numeric_limits<std::int16_t>::min() ||
      whole > std::numeric_limits<std::int16_t>::max()) {
    return std::nullopt;
  }
  return whole;
}

}  // namespace

std::optional<MessageBox> CheckTracknumber(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const std::optional<std::int64_t> number = Whole16(text);
  if (!number) return MessageBox{.text = "Track-number is not a number!"};
  if (*number <= kLargestTrack) return std::nullopt;
  return MessageBox{.text = "Track-number must be less than 256!"};
}

std::optional<MessageBox> CheckYear(std::string_view text) {
  if (text.empty() || Whole16(text)) return std::nullopt;
  return MessageBox{.text = "Year is not a number!"};
}

std::string ApplySaveRules(std::string text, const Preferences& preferences) {
  if (preferences.chkCapitalizeSave) text = Capitalize(text);
  if (preferences.chkReplaceSave) {
    text = ReplaceEach(text, preferences.txtReplaceeverySave, preferences.txtReplacewithSave);
  }
  return text;
}

std::string EscapeEditorText(std::string_view text, char quote) {
  return quote == '\'' ? ReplaceEach(text, "'", "\"") : ReplaceEach(text, "\"", "''");
}

std::int64_t PlaytimeSeconds(std::string_view playtime) {
  const std::size_t colon = playtime.find(':');
  if (colon == std::string_view::npos) return 0;
  return RoundHalfEven(LeadingNumber(playtime.substr(0, colon)) * 60 +
                       LeadingNumber(playtime.substr(colon + 1)));
}

std::string makeaudiogalaxytag(std::string_view name) {
  std::string code;
  for (const char each : name.substr(0, name.rfind('.'))) {
    if (each < 'A' || each > 'Z') continue;
    code += std::to_string(each - 'A' + 1).front();
  }
  return code;
}

}  // namespace tunemeadow
