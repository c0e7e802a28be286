/* SPDX-License-Identifier: GPL-3.0-or-later
 *
 * save_floor DATABASE ARTIST: the least that setting the artist of every track of a catalogue can
 * cost. For each row: one open; the ID3v2 tag is read, TPE1 replaced, every other frame kept and
 * the tag written over the old one, which it has to fit; the artist goes into the ID3v1 record; one
 * committed update of 28 columns by key, as text, in write-ahead logging. No journal, no sync, no
 * window, no question.
 *
 * Prints "files N written N user S sys S wall S".
 */
#define _GNU_SOURCE
#include <fcntl.h>
#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

enum { kMostTag = 1 << 20, kHeader = 10, kRecord = 128 };

static const char* const kColumns[] = {"BPM",
                                       "trackno",
                                       "playtime",
                                       "playtimeREAL",
                                       "comment",
                                       "year",
                                       "album",
                                       "location",
                                       "Situation",
                                       "datetimeoffile",
                                       "datetimeofdbupdate",
                                       "Composer",
                                       "hasid3v1",
                                       "hasid3v2",
                                       "Copyright",
                                       "Encodedby",
                                       "originalartist",
                                       "url",
                                       "Preference",
                                       "Mood",
                                       "Bios",
                                       "Lyrics",
                                       "Tempo",
                                       "Songname",
                                       "Genre",
                                       "GenreReal",
                                       "quality"};
enum { kColumnCount = sizeof kColumns / sizeof kColumns[0], kFileTime = 9, kUpdateTime = 10 };

static unsigned char old_tag[kMostTag], new_tag[kMostTag + 4096];

static void Fail(const char* what) {
  perror(what);
  exit(1);
}

static long BigEndian(const unsigned char* at, int bits) {
  return (long)at[0] << 3 * bits | (long)at[1] << 2 * bits | (long)at[2] << bits | at[3];
}

/* Puts the frame of the artist before the others. Returns the length of the frames. */
static long BuildFrames(long size, const char* artist) {
  unsigned char* out = new_tag + kHeader;
  const long length = (long)strlen(artist);
  memcpy(out, "TPE1\0\0\0\0\0\0\0", 11);
  out[7] = (unsigned char)(length + 1);
  memcpy(out + 11, artist, (size_t)length);
  out += 11 + length;
  for (long at = 0; at + kHeader <= size && old_tag[at] != 0;) {
    long frame = BigEndian(old_tag + at + 4, 8);
    if (frame < 1 || at + kHeader + frame > size) break;
    frame += kHeader;
    if (memcmp(old_tag + at, "TPE1", 4) != 0) {
      memcpy(out, old_tag + at, (size_t)frame);
      out += frame;
    }
    at += frame;
  }
  return out - new_tag - kHeader;
}

static long SaveFile(const char* path, const char* artist) {
  unsigned char header[kHeader];
  unsigned char record[kRecord];
  struct stat status;
  const int file = open(path, O_RDWR | O_CLOEXEC);
  if (file < 0 || fstat(file, &status) != 0) Fail(path);
  if (pread(file, header, kHeader, 0) != kHeader || memcmp(header, "ID3", 3) != 0) Fail("no tag");
  const long size = BigEndian(header + 6, 7);
  if (size > kMostTag || pread(file, old_tag, (size_t)size, kHeader) != size) Fail("tag size");
  const long length = BuildFrames(size, artist);
  if (length > size) Fail("the new tag does not fit");
  memset(new_tag + kHeader + length, 0, (size_t)(size - length));
  memcpy(new_tag, header, kHeader);
  memcpy(new_tag, "ID3\3\0\0", 6);
  long written = pwrite(file, new_tag, (size_t)(size + kHeader), 0);
  const off_t end = status.st_size - kRecord;
  if (pread(file, record, kRecord, end) == kRecord && memcmp(record, "TAG", 3) == 0) {
    const size_t shown = strlen(artist) > 30 ? 30 : strlen(artist);
    memset(record + 33, ' ', 30);
    memcpy(record + 33, artist, shown);
    written += pwrite(file, record, kRecord, end);
  }
  if (fstat(file, &status) != 0) Fail(path);
  close(file);
  return written;
}

static void SaveRow(sqlite3* database, sqlite3_stmt* row, const char* artist) {
  static char text[1 << 20];
  char now[32];
  const time_t moment = time(NULL);
  strftime(now, sizeof now, "%Y-%m-%d %H:%M:%S", localtime(&moment));
  char* out = stpcpy(text, "Update mp3sTabelle set ");
  for (int i = 0; i < kColumnCount; ++i) {
    const char* value = (const char*)sqlite3_column_text(row, i + 1);
    if (i == kFileTime || i == kUpdateTime) value = now;
    sqlite3_snprintf((int)(text + sizeof text - out), out, "[%s]='%q',", kColumns[i],
                     value != NULL ? value : "");
    out += strlen(out);
  }
  sqlite3_snprintf((int)(text + sizeof text - out), out, "Artist='%q' where uid=%lld", artist,
                   sqlite3_column_int64(row, 0));
  if (sqlite3_exec(database, text, NULL, NULL, NULL) != SQLITE_OK) Fail(sqlite3_errmsg(database));
}

int main(int argc, char** argv) {
  sqlite3* database = NULL;
  sqlite3_stmt* rows = NULL;
  sqlite3_stmt* row = NULL;
  if (argc != 3) return 2;
  if (sqlite3_open(argv[1], &database) != SQLITE_OK ||
      sqlite3_exec(database, "pragma journal_mode=wal; pragma synchronous=normal", NULL, NULL,
                   NULL) != SQLITE_OK) {
    Fail(argv[1]);
  }
  char select[2048] = "select uid";
  for (int i = 0; i < kColumnCount; ++i) {
    strcat(strcat(strcat(select, ",["), kColumns[i]), "]");
  }
  strcat(select, " from mp3sTabelle where uid=?");
  struct timespec began;
  struct timespec ended;
  clock_gettime(CLOCK_MONOTONIC, &began);
  if (sqlite3_prepare_v2(database, select, -1, &row, NULL) != SQLITE_OK ||
      sqlite3_prepare_v2(database, "select uid from mp3sTabelle where location like '%/%.mp3'", -1,
                         &rows, NULL) != SQLITE_OK) {
    Fail(sqlite3_errmsg(database));
  }
  static sqlite3_int64 keys[1 << 20];
  long count = 0;
  while (sqlite3_step(rows) == SQLITE_ROW) keys[count++] = sqlite3_column_int64(rows, 0);
  sqlite3_finalize(rows);
  long written = 0;
  for (long i = 0; i < count; ++i) {
    sqlite3_bind_int64(row, 1, keys[i]);
    if (sqlite3_step(row) != SQLITE_ROW) Fail("row");
    written += SaveFile((const char*)sqlite3_column_text(row, 8), argv[2]);
    SaveRow(database, row, argv[2]);
    sqlite3_reset(row);
  }
  sqlite3_finalize(row);
  sqlite3_close(database);
  clock_gettime(CLOCK_MONOTONIC, &ended);
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  printf("files %ld written %ld user %.3f sys %.3f wall %.3f\n", count, written,
         (double)usage.ru_utime.tv_sec + (double)usage.ru_utime.tv_usec / 1e6,
         (double)usage.ru_stime.tv_sec + (double)usage.ru_stime.tv_usec / 1e6,
         (double)(ended.tv_sec - began.tv_sec) + (double)(ended.tv_nsec - began.tv_nsec) / 1e9);
  return 0;
}
