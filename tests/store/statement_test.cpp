// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/statement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "store/database.h"

namespace tunemeadow {
namespace {

using testing::ElementsAre;

struct TranslationCase {
  const char* statement;
  const char* sql;
  std::vector<std::string> values;
};

void ExpectTranslations(const std::vector<TranslationCase>& cases) {
  for (const TranslationCase& one : cases) {
    SCOPED_TRACE(one.statement);
    const StoreStatement translated = TranslateStatement(one.statement);
    EXPECT_EQ(translated.sql, one.sql);
    EXPECT_EQ(translated.values, one.values);
  }
}

TEST(TranslateStatement, TextsBecomeParametersWhateverTheirQuotesAndNamesStay) {
  ExpectTranslations({
      {R"(where a="")", "where a=?", {""}},
      {R"(where a<>"")", "where a<>?", {""}},
      {R"(set a="say ""hi""")", "set a=?", {R"(say "hi")"}},
      {R"(set a="O''Neil")", "set a=?", {"O''Neil"}},
      {R"(set a='O''Neil')", "set a=?", {"O'Neil"}},
      {R"(set a='')", "set a=?", {""}},
      {R"(set a='''')", "set a=?", {"'"}},
      {R"(set a='a "b" c',b="it's")", "set a=?,b=?", {R"(a "b" c)", "it's"}},
      {"select [year],[UId],[a \"b\" & left(] from t",
       "select [year],[UId],[a \"b\" & left(] from t",
       {}},
      {"where [mp3sTabelle].[genrereal]<>'' ;  ; ", "where [mp3sTabelle].[genrereal]<>?", {""}},
  });
}

TEST(TranslateStatement, AmpersandsJoinTextsOutsideOfLiteralsOnly) {
  ExpectTranslations({
      {R"(set a="D:" & right(b,2))", "set a=? || tm_right(b,2)", {"D:"}},
      {R"(where a="Simon & Garfunkel")", "where a=?", {"Simon & Garfunkel"}},
      {R"(where a='R&B' and [R&B]=1)", "where a=? and [R&B]=1", {"R&B"}},
  });
}

TEST(TranslateStatement, FunctionsAreRenamedOutsideOfLiteralsOnly) {
  ExpectTranslations({
      {"where left(location,6)<>'MP3-CD'", "where tm_left(location,6)<>?", {"MP3-CD"}},
      {"LEFT (a,Len(b)-1)", "tm_LEFT (a,tm_Len(b)-1)", {}},
      {"'left(now(' & left", "? || left", {"left(now("}},
      {"(a < dateadd(\"d\",-7,now()) or isnull(a))",
       "(a < tm_dateadd(?,-7,tm_now()) or ((a) is null))",
       {"d"}},
      {"isnull(left(a,len(isnull(b)))) and (c)",
       "((tm_left(a,tm_len(((b) is null)))) is null) and (c)",
       {}},
      {"from a left join b", "from a left join b", {}},
  });
}

TEST(TranslateStatement, NumberColumnsCompareAsNumbersWithBareNumbers) {
  ExpectTranslations({
      {"where (BPM>= 60 and BPM<= 120.5)",
       "where (cast(nullif(BPM,'') as real)>= 60 and cast(nullif(BPM,'') as real)<= 120.5)",
       {}},
      {"where mp3sTabelle.[playtimereal]<>-1",
       "where cast(nullif(mp3sTabelle.[playtimereal],'') as real)<>-1",
       {}},
      {"where 5 < FileSizeReal", "where 5 < cast(nullif(FileSizeReal,'') as real)", {}},
      {"where bpm not between 1 and 2",
       "where cast(nullif(bpm,'') as real) not between 1 and 2",
       {}},
      {"where bpm='60' and year>1990", "where bpm=? and year>1990", {"60"}},
      {"update t set url=(BPM=1 and a),BPM=(select b from c where bpm=2),BPM=3",
       "update t set url=(cast(nullif(BPM,'') as real)=1 and a),"
       "BPM=(select b from c where cast(nullif(bpm,'') as real)=2),BPM=3",
       {}},
      {"Update t set BPM=120,filesizereal = 7 where bpm=3",
       "Update t set BPM=120,filesizereal = 7 where cast(nullif(bpm,'') as real)=3",
       {}},
  });
}

TEST(TranslateStatement, NothingIsReadAsACommentOrAParameter) {
  ExpectTranslations({
      {"dateadd('d',--3,x)", "tm_dateadd(?,- -3,x)", {"d"}},
      {"a /* b", "a / * b", {}},
      {"in ('a'5)", "in (? 5)", {"a"}},
  });
}

TEST(TranslateStatement, BrokenStatementsAreRefusedWithoutReadingOn) {
  const std::string nul("select 'a'\0, 1", 14);
  for (const std::string& broken :
       {std::string("where a=\"x"), std::string("where a='"), std::string("where a='x''"),
        std::string("select [year"), std::string("delete from a; delete from b"),
        std::string("select 1;;x"), std::string("where a=?"), std::string("where a=:b"), nul}) {
    SCOPED_TRACE(broken);
    EXPECT_THROW((void)TranslateStatement(broken), DatabaseError);
  }
}

TEST(TranslateStatement, StatementsThatDifferInTextsOnlyAreOneStatement) {
  const auto insert = [](const std::string& artist) {
    return TranslateStatement("insert into t (a,b) values (" + Quoted(artist, '"') + ",\"x\")");
  };
  EXPECT_EQ(insert("O'Neil").sql, insert(R"(a"b;--)").sql);
  EXPECT_THAT(insert(R"(a"b;--)").values, ElementsAre(R"(a"b;--)", "x"));
}

TEST(TranslateStatement, QuotingGivesBackEveryTextByteForByte) {
  const std::string hostile("\"'\0\"\"''\xff[a]?;--/*&\\\n", 19);
  for (const char quote : {'"', '\''}) {
    EXPECT_THAT(TranslateStatement("x=" + Quoted(hostile, quote)).values, ElementsAre(hostile));
  }
}

TEST(EscapeTagText, BothKindsOfQuoteComeBackAsTwoApostrophes) {
  EXPECT_EQ(EscapeTagText("O'Neil"), "O''Neil");
  EXPECT_EQ(EscapeTagText("7\" single"), "7'' single");
  EXPECT_THAT(TranslateStatement(Quoted(EscapeTagText("O'Neil"), '"')).values,
              ElementsAre("O''Neil"));
}

TEST(EscapeSearchValue, DependsOnTheDelimiter) {
  EXPECT_EQ(EscapeSearchValue("a\"b'c", '"'), "a''b'c");
  EXPECT_EQ(EscapeSearchValue("a\"b'c", '\''), "a\"b\"c");
}

}  // namespace
}  // namespace tunemeadow
