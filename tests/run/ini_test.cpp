// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ini.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "support/plain_user.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

TEST(IniGetString, ReadsWhatStandsInTheFileByteForByte) {
  const TempFolder folder;
  const cINI ini(
      folder.Write("x.ini",
                   "\xEF\xBB\xBF; a comment\r\nfirst=outside\r\n[Other]\r\nKey=other\r\n"
                   "[config]\r\nno equals sign\r\n;Key=commented\r\n  KEY \t= a = b ;c \r\n"
                   "Key=second\r\nblank= \r\nquoted=\"x\"\r\nempty=\r\n"
                   "path=/m/\xFF\\\xE4.mp3\r\n[Other]\nlate=yes\n[CONFIG\nbroken=head\nend=1"));
  const auto get = [&](const char* section, const char* key) {
    return ini.GetString(section, key, "(none)", 0);
  };
  EXPECT_EQ(get("CONFIG", "key"), " a = b ;c ");
  EXPECT_EQ(get("CONFIG", "BLANK"), " ");
  EXPECT_EQ(get("CONFIG", "quoted"), "\"x\"");
  EXPECT_EQ(get("CONFIG", "path"), "/m/\xFF\\\xE4.mp3");
  EXPECT_EQ(get("CONFIG", "empty"), "(none)");
  EXPECT_EQ(get("CONFIG", "first"), "(none)");
  EXPECT_EQ(get("CONFIG", "late"), "(none)");
  EXPECT_EQ(get("other", "KEY"), "other");
  EXPECT_EQ(get("OTHER", "late"), "yes");
  EXPECT_EQ(get("CONFIG", "broken"), "head") << "a section line without its bracket";
  EXPECT_EQ(get("CONFIG", "end"), "1") << "a last line without its end";
}

TEST(IniGetString, CutsAValueAt255CharactersAndNeverInsideOne) {
  const TempFolder folder;
  std::string umlauts;
  for (int i = 0; i < 300; ++i) umlauts += "ä";
  const cINI ini(
      folder.Write("x.ini", "[CONFIG]\nlong=" + std::string(300, 'x') + "\nwide=" + umlauts));
  EXPECT_EQ(ini.GetString("CONFIG", "long", "", 0), std::string(255, 'x'));
  EXPECT_EQ(ini.GetString("CONFIG", "wide", "", 0), umlauts.substr(0, 510));
  EXPECT_EQ(ini.ReadSection("CONFIG").at(1).second, umlauts.substr(0, 510));
}

TEST(IniGetString, KindsTurnUnusableValuesIntoTheDefault) {
  const TempFolder folder;
  const cINI ini(
      folder.Write("x.ini", "[C]\nyes=tRUE\nno=false\nword=maybe\nzero=0.0\nnumber=12 px\n"));
  EXPECT_EQ(ini.GetString("C", "yes", "", 1), "tRUE");
  EXPECT_EQ(ini.GetString("C", "no", "", 1), "false");
  EXPECT_EQ(ini.GetString("C", "word", "", 1), "True");
  EXPECT_EQ(ini.GetString("C", "word", "False", 1), "False");
  EXPECT_EQ(ini.GetString("C", "missing", "", 1), "True");
  EXPECT_EQ(ini.GetString("C", "zero", "7", 2), "7");
  EXPECT_EQ(ini.GetString("C", "word", "7", 2), "7");
  EXPECT_EQ(ini.GetString("C", "number", "7", 2), "12 px");
}

TEST(IniGetString, WhatCannotBeReadIsLikeAnEmptyFile) {
  const TempFolder folder;
  EXPECT_EQ(cINI(folder.Path("missing.ini")).GetString("C", "k", "default", 0), "default");
  EXPECT_EQ(cINI(folder.Path()).GetString("C", "k", "default", 0), "default");
  ASSERT_EQ(mkfifo(folder.Path("pipe.ini").c_str(), 0600), 0);
  EXPECT_EQ(cINI(folder.Path("pipe.ini")).GetString("C", "k", "default", 0), "default");
  const cINI junk(folder.Write("junk.ini", std::string("\0[[\n=\n]=[\n[]\n\xFF\xFE=\r\r\n", 19)));
  EXPECT_TRUE(junk.ReadSection("CONFIG").empty());
}

struct IniSaveCase {
  const char* what;
  std::string before, section, key, value, after;
};

TEST(IniSaveString, ChangesOneValueAndKeepsEveryOtherByte) {
  const IniSaveCase cases[] = {
      {"a new file", "", "CONFIG", "k", "v", "[CONFIG]\nk=v\n"},
      {"the first of two", "[C]\n K =1\nk=2\n", "c", "k", "v", "[C]\n K =v\nk=2\n"},
      {"CRLF stays", "; c\r\n[C]\r\nk=1\r\nz=2\r\n", "C", "k", "", "; c\r\n[C]\r\nk=\r\nz=2\r\n"},
      {"a new key goes to the end of its section", "[C]\r\na=1\r\n\r\n[D]\r\nb=2\r\n", "C", "k",
       "v", "[C]\r\na=1\r\nk=v\r\n\r\n[D]\r\nb=2\r\n"},
      {"an open last line is closed", "[C]\na=1", "C", "k", "v", "[C]\na=1\nk=v\n"},
      {"half a line end is made whole", "[C]\r\na=1\r", "C", "k", "v", "[C]\r\na=1\r\nk=v\r\n"},
      {"a new section", "junk line\n[D]\nk=1", "C", "k", "v", "junk line\n[D]\nk=1\n[C]\nk=v\n"},
      {"a byte order mark alone", "\xEF\xBB\xBF", "C", "k", "v", "\xEF\xBB\xBF[C]\nk=v\n"},
      {"a byte order mark before the section", "\xEF\xBB\xBF[C]\n", "C", "k", "v",
       "\xEF\xBB\xBF[C]\nk=v\n"},
      {"a commented key is no key", "[C]\n;k=1\n", "C", "k", "v", "[C]\n;k=1\nk=v\n"},
      {"blanks and raw bytes", "[C]\nk=1\n", "C", "k", " \xFF= ", "[C]\nk= \xFF= \n"},
      {"a value ends at its line break", "[C]\nk=1\n", "C", "k", "a\r\nb=c", "[C]\nk=a\n"},
  };
  for (const IniSaveCase& c : cases) {
    SCOPED_TRACE(c.what);
    const TempFolder folder;
    cINI ini(folder.Path("x.ini"));
    if (!c.before.empty()) folder.Write("x.ini", c.before);
    EXPECT_EQ(ini.SaveString(c.section, c.key, c.value), 1);
    EXPECT_EQ(folder.Read("x.ini"), c.after);
    EXPECT_EQ(folder.Count(), 1) << "something was left beside the file";
  }
}

TEST(IniSaveString, RefusesANameThatCouldNotBeReadAgain) {
  const TempFolder folder;
  cINI ini(folder.Path("x.ini"));
  for (const char* key : {"", "a=b", "[a", ";a", " a", "a\nb"}) {
    EXPECT_EQ(ini.SaveString("C", key, "v"), 0) << key;
  }
  EXPECT_EQ(folder.Count(), 0);
}

TEST(IniSaveStrings, SetsManyKeysThatAllReadBack) {
  const TempFolder folder;
  cINI ini(folder.Write("x.ini", "[CONFIG]\nb=old\n"));
  ASSERT_EQ(ini.SaveStrings("CONFIG", {{"a", "1"}, {"B", "2"}, {"c", " "}}), 1);
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"b", "2"}, {"a", "1"}, {"c", " "}};
  EXPECT_EQ(ini.ReadSection("config"), expected);
}

TEST(IniSaveString, KeepsPermissionBitsAndWritesThroughALink) {
  const TempFolder folder;
  folder.Write("real/x.ini", "[C]\nk=1\n");
  ASSERT_EQ(chmod(folder.Path("real/x.ini").c_str(), 0640), 0);
  ASSERT_EQ(symlink("real/x.ini", folder.Path("x.ini").c_str()), 0);
  cINI ini(folder.Path("x.ini"));
  ASSERT_EQ(ini.SaveString("C", "k", "2"), 1);
  struct stat status {};
  ASSERT_EQ(lstat(folder.Path("x.ini").c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
  ASSERT_EQ(stat(folder.Path("real/x.ini").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  EXPECT_EQ(folder.Read("real/x.ini"), "[C]\nk=2\n");
}

TEST(IniSaveString, AFailedWriteLeavesTheOldFileAlone) {
  const TempFolder folder;
  cINI missing(folder.Path("none/x.ini"));
  EXPECT_EQ(missing.SaveString("C", "k", "v"), 0);
  ASSERT_EQ(mkdir(folder.Path("folder.ini").c_str(), 0700), 0);
  cINI is_folder(folder.Path("folder.ini"));
  EXPECT_EQ(is_folder.SaveString("C", "k", "v"), 0);
  ASSERT_EQ(symlink("loop.ini", folder.Path("loop.ini").c_str()), 0);
  cINI loop(folder.Path("loop.ini"));
  EXPECT_EQ(loop.SaveString("C", "k", "v"), 0);
}

TEST(IniSaveString, AFileThatMayNotBeReadOrWrittenKeepsItsKeys) {
  const TempFolder folder;
  const ScopedPlainUser user(folder.Path());
  cINI secret(folder.Write("secret.ini", "[C]\nk=1\n"));
  ASSERT_EQ(chmod(secret.Path().c_str(), 0200), 0);
  EXPECT_EQ(secret.SaveString("C", "z", "v"), 0) << "the unread keys would be lost";
  ASSERT_EQ(chmod(secret.Path().c_str(), 0400), 0);
  EXPECT_EQ(secret.SaveString("C", "z", "v"), 0);
  EXPECT_EQ(folder.Read("secret.ini"), "[C]\nk=1\n");
}

}  // namespace
}  // namespace tunemeadow
