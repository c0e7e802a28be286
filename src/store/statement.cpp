// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/statement.h"

#include <array>
#include <cstdint>
#include <limits>

#include "core/text.h"
#include "store/database.h"

namespace tunemeadow {
namespace {

constexpr int kStatementError = 1;  // SQLITE_ERROR: the statement itself is wrong

enum class TokenKind : std::uint8_t {
  kWord,
  kBracketed,
  kNumber,
  kText,
  kOpen,
  kClose,
  kCompare,
  kSign,
  kOther
};

/// Bytes [begin, end) of the statement.
struct SqlToken {
  TokenKind kind;
  std::uint32_t begin;
  std::uint32_t end;
};

enum class CharClass : std::uint8_t { kOther, kBlank, kWord, kDigit, kQuote, kRefused };

constexpr std::array<CharClass, 256> kCharClasses = [] {
  std::array<CharClass, 256> classes{};
  for (int c = 'a'; c <= 'z'; ++c) classes[static_cast<std::size_t>(c)] = CharClass::kWord;
  for (int c = 'A'; c <= 'Z'; ++c) classes[static_cast<std::size_t>(c)] = CharClass::kWord;
  for (std::size_t c = 0x80; c < 0x100; ++c) classes[c] = CharClass::kWord;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = CharClass::kDigit;
  for (const char c : {' ', '\t', '\r', '\n', '\f'}) {
    classes[static_cast<unsigned char>(c)] = CharClass::kBlank;
  }
  classes['_'] = CharClass::kWord;
  classes['"'] = classes['\''] = CharClass::kQuote;
  // The store would take these for parameters, and a NUL for the end of the statement.
  for (const char c : {'?', ':', '@', '$', '\0'}) {
    classes[static_cast<unsigned char>(c)] = CharClass::kRefused;
  }
  return classes;
}();

CharClass ClassOf(char c) noexcept { return kCharClasses[static_cast<unsigned char>(c)]; }

[[noreturn]] void RefuseStatement(const std::string& why, std::string_view at) {
  throw DatabaseError(kStatementError, why + ToValidUtf8(Left(at, 40)));
}

/// Cuts a statement into tokens and takes the texts out of it.
class StatementLexer {
 public:
  StatementLexer(std::string_view statement, std::vector<std::string>& values)
      : source_(statement), values_(values) {
    if (source_.size() > std::numeric_limits<std::uint32_t>::max()) {
      throw DatabaseError(kStatementError, "The statement is too long.");
    }
    tokens_.reserve(source_.size() / 3 + 8);
  }

  std::vector<SqlToken> Run() {
    while (SkipBlanks()) {
      if (source_[at_] == ';') {
        RequireEnd();
        break;
      }
      Take();
    }
    return std::move(tokens_);
  }

 private:
  bool SkipBlanks() noexcept {
    while (at_ < source_.size() && ClassOf(source_[at_]) == CharClass::kBlank) ++at_;
    return at_ < source_.size();
  }

  void RequireEnd() const {
    const std::size_t behind = source_.find_first_not_of("; \t\r\n\f", at_);
    if (behind != std::string_view::npos) {
      RefuseStatement("Only one statement can run at a time; behind it stands: ",
                      source_.substr(behind));
    }
  }

  void Add(TokenKind kind, std::size_t end) {
    tokens_.push_back({kind, static_cast<std::uint32_t>(at_), static_cast<std::uint32_t>(end)});
    at_ = end;
  }

  void Take() {
    switch (ClassOf(source_[at_])) {
      case CharClass::kWord: {
        std::size_t end = at_ + 1;
        while (end < source_.size() && IsWordPart(source_[end])) ++end;
        return Add(TokenKind::kWord, end);
      }
      case CharClass::kDigit:
        return Add(TokenKind::kNumber, EndOfNumber());
      case CharClass::kQuote:
        return TakeText();
      case CharClass::kRefused:
        RefuseStatement("A character that has no meaning in a statement: ", source_.substr(at_, 1));
      default:
        return TakePunctuation();
    }
  }

  static bool IsWordPart(char c) noexcept {
    const CharClass kind = ClassOf(c);
    return kind == CharClass::kWord || kind == CharClass::kDigit;
  }

  char CharAt(std::size_t at) const noexcept { return at < source_.size() ? source_[at] : ' '; }

  /// Digits, decimals and exponent; letters glued to it belong to it and are the store's to refuse.
  std::size_t EndOfNumber() const noexcept {
    std::size_t end = at_;
    while (IsWordPart(CharAt(end)) || CharAt(end) == '.' ||
           ((CharAt(end) == '-' || CharAt(end) == '+') && UpperAscii(source_[end - 1]) == 'E' &&
            ClassOf(CharAt(end + 1)) == CharClass::kDigit)) {
      ++end;
    }
    return end;
  }

  void TakeText() {
    const char quote = source_[at_];
    std::string text;
    for (std::size_t from = at_ + 1;;) {
      const std::size_t end = source_.find(quote, from);
      if (end == std::string_view::npos) {
        RefuseStatement("A text of the statement has no end: ", source_.substr(at_));
      }
      const bool doubled = CharAt(end + 1) == quote;
      text.append(source_, from, end - from + (doubled ? 1 : 0));
      from = end + 2;
      if (doubled) continue;
      values_.push_back(std::move(text));
      return Add(TokenKind::kText, end + 1);
    }
  }

  void TakeBracketed(char closing) {
    const std::size_t end = source_.find(closing, at_ + 1);
    if (end == std::string_view::npos) {
      RefuseStatement("A bracket of the statement has no end: ", source_.substr(at_));
    }
    Add(TokenKind::kBracketed, end + 1);
  }

  void TakePunctuation() {
    const char next = CharAt(at_ + 1);
    switch (source_[at_]) {
      case '[':
        return TakeBracketed(']');
      case '`':
        return TakeBracketed('`');
      case '(':
        return Add(TokenKind::kOpen, at_ + 1);
      case ')':
        return Add(TokenKind::kClose, at_ + 1);
      case '+':
      case '-':
        return Add(TokenKind::kSign, at_ + 1);
      case '<':
        return Add(TokenKind::kCompare, at_ + (next == '=' || next == '>' ? 2 : 1));
      case '>':
      case '=':
        return Add(TokenKind::kCompare, at_ + (next == '=' ? 2 : 1));
      case '!':
        return Add(next == '=' ? TokenKind::kCompare : TokenKind::kOther,
                   at_ + (next == '=' ? 2 : 1));
      case '.':
        if (ClassOf(next) == CharClass::kDigit && !NameStandsBefore()) {
          return Add(TokenKind::kNumber, EndOfNumber());
        }
        [[fallthrough]];
      default:
        return Add(TokenKind::kOther, at_ + 1);
    }
  }

  bool NameStandsBefore() const noexcept {
    return !tokens_.empty() && tokens_.back().end == at_ &&
           (tokens_.back().kind == TokenKind::kWord ||
            tokens_.back().kind == TokenKind::kBracketed);
  }

  std::string_view source_;
  std::vector<std::string>& values_;
  std::vector<SqlToken> tokens_;
  std::size_t at_ = 0;
};

/// Writes the tokens down again in the store's dialect.
class StatementWriter {
 public:
  StatementWriter(std::string_view statement, const std::vector<SqlToken>& tokens)
      : source_(statement), tokens_(tokens), is_update_(IsWord(0, "UPDATE")) {
    sql_.reserve(statement.size());
  }

  std::string Run() {
    for (std::size_t i = 0; i < tokens_.size();) {
      WriteGap(i);
      i = WriteToken(i);
    }
    return std::move(sql_);
  }

 private:
  std::string_view TextOf(std::size_t i) const noexcept {
    return source_.substr(tokens_[i].begin, tokens_[i].end - tokens_[i].begin);
  }

  bool Is(std::size_t i, TokenKind kind) const noexcept {
    return i < tokens_.size() && tokens_[i].kind == kind;
  }

  /// `upper` in capitals.
  bool IsWord(std::size_t i, std::string_view upper) const noexcept {
    return Is(i, TokenKind::kWord) && EqualsNoCase(TextOf(i), upper);
  }

  void WriteGap(std::size_t i) {
    const std::size_t from = i == 0 ? tokens_[i].begin : tokens_[i - 1].end;
    sql_.append(source_, from, tokens_[i].begin - from);
  }

  void WriteRaw(std::size_t i) { sql_.append(TextOf(i)); }

  /// Writes token `i` and what belongs to it; returns the number of the next one.
  std::size_t WriteToken(std::size_t i) {
    switch (tokens_[i].kind) {
      case TokenKind::kWord:
      case TokenKind::kBracketed:
        return WriteName(i);
      case TokenKind::kText:
        sql_ += '?';
        return i + 1;
      case TokenKind::kNumber:
        if (!sql_.empty() && sql_.back() == '?') sql_ += ' ';  // "?1" is another parameter
        break;
      case TokenKind::kOpen:
        closings_.emplace_back(")");
        break;
      case TokenKind::kClose:
        if (closings_.empty()) break;  // the store says what is wrong
        sql_ += closings_.back();
        closings_.pop_back();
        return i + 1;
      case TokenKind::kCompare:
        break;
      case TokenKind::kSign:
      case TokenKind::kOther:
        return WritePunctuation(i);
    }
    WriteRaw(i);
    return i + 1;
  }

  std::size_t WritePunctuation(std::size_t i) {
    const char c = source_[tokens_[i].begin];
    // The dialect has no comments; "5--3" is a sum.
    const char before = sql_.empty() ? ' ' : sql_.back();
    if ((c == '-' && before == '-') || (c == '*' && before == '/')) sql_ += ' ';
    if (c == '&') {
      sql_ += "||";
    } else {
      sql_ += c;
    }
    return i + 1;
  }

  std::size_t WriteName(std::size_t i) {
    if (is_update_ && closings_.empty() && Is(i, TokenKind::kWord)) {
      if (IsWord(i, "SET")) in_assignments_ = true;
      if (IsWord(i, "WHERE")) in_assignments_ = false;
    }
    if (Is(i, TokenKind::kWord) && Is(i + 1, TokenKind::kOpen)) return WriteFunction(i);
    std::size_t last = i;
    while (Is(last + 1, TokenKind::kOther) && TextOf(last + 1) == "." &&
           (Is(last + 2, TokenKind::kWord) || Is(last + 2, TokenKind::kBracketed))) {
      last += 2;
    }
    const bool as_number = ComparesWithNumber(i, last) && IsNumberColumn(last);
    if (as_number) sql_ += "cast(nullif(";
    for (std::size_t part = i; part <= last; ++part) {
      if (part > i) WriteGap(part);
      WriteRaw(part);
    }
    if (as_number) sql_ += ",'') as real)";
    return last + 1;
  }

  /// A word in front of a parenthesis.
  std::size_t WriteFunction(std::size_t i) {
    if (IsWord(i, "ISNULL")) {
      sql_ += "((";
      closings_.emplace_back(") is null)");
      return i + 2;
    }
    for (const std::string_view own : {"LEFT", "RIGHT", "LEN", "NOW", "DATEADD"}) {
      if (IsWord(i, own)) sql_ += "tm_";
    }
    WriteRaw(i);
    return i + 1;
  }

  bool IsNumberColumn(std::size_t i) const noexcept {
    std::string_view name = TextOf(i);
    if (Is(i, TokenKind::kBracketed)) name = name.substr(1, name.size() - 2);
    return EqualsNoCase(name, "BPM") || EqualsNoCase(name, "PLAYTIMEREAL") ||
           EqualsNoCase(name, "FILESIZEREAL");
  }

  bool NumberStandsAt(std::size_t i) const noexcept {
    while (Is(i, TokenKind::kSign)) ++i;
    return Is(i, TokenKind::kNumber);
  }

  /// Whether the name of tokens `first` to `last` stands beside a comparison with a bare number.
  bool ComparesWithNumber(std::size_t first, std::size_t last) const noexcept {
    std::size_t next = last + 1;
    if (Is(next, TokenKind::kCompare) && NumberStandsAt(next + 1)) {
      const bool assigns = in_assignments_ && closings_.empty() && TextOf(next) == "=";
      return !assigns;
    }
    if (IsWord(next, "NOT")) ++next;
    if (IsWord(next, "BETWEEN") && NumberStandsAt(next + 1)) return true;
    return first >= 2 && Is(first - 1, TokenKind::kCompare) && Is(first - 2, TokenKind::kNumber);
  }

  std::string_view source_;
  const std::vector<SqlToken>& tokens_;
  std::string sql_;
  std::vector<std::string_view> closings_;  ///< what each open parenthesis is closed with
  bool is_update_;
  bool in_assignments_ = false;
};

}  // namespace

StoreStatement TranslateStatement(std::string_view statement) {
  StoreStatement translated;
  const std::vector<SqlToken> tokens = StatementLexer(statement, translated.values).Run();
  translated.sql = StatementWriter(statement, tokens).Run();
  return translated;
}

std::string QuoteInner(std::string_view text, char quote) {
  const std::string one(1, quote);
  return ReplaceEach(text, one, one + one);
}

std::string Quoted(std::string_view text, char quote) {
  return quote + QuoteInner(text, quote) + quote;
}

void AppendQuoted(std::string_view text, char quote, std::string& statement) {
  statement += quote;
  if (text.find(quote) == std::string_view::npos) {
    statement += text;
  } else {
    statement += QuoteInner(text, quote);
  }
  statement += quote;
}

std::string EscapeTagText(std::string_view text) {
  return ReplaceEach(ReplaceEach(text, "'", "\""), "\"", "''");
}

std::string EscapeSearchValue(std::string_view text, char quote) {
  return quote == '"' ? ReplaceEach(text, "\"", "''") : ReplaceEach(text, "'", "\"");
}

}  // namespace tunemeadow
