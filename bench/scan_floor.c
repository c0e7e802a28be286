/* SPDX-License-Identifier: GPL-3.0-or-later
 *
 * scan_floor FOLDER DATABASE: the least that an import can cost. Walks FOLDER, reads the head and
 * the tail of each MP3 file, takes its tags and its first frame header apart, and commits one row a
 * file into a fresh DATABASE, as SQL text, in write-ahead logging. No window, no settings, no
 * index, no second look at anything: what the import through the window takes above this is the
 * program's own.
 *
 * Prints "files N rows N user S sys S wall S".
 */
#define _GNU_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

enum {
  kTitle,
  kArtist,
  kAlbum,
  kYear,
  kTrack,
  kGenre,
  kComment,
  kBpm,
  kEncoder,
  kComposer,
  kCopyright,
  kOriginal,
  kUrl,
  kTexts
};
static const char kFrames[kTexts][5] = {"TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCON", "COMM",
                                        "TBPM", "TENC", "TCOM", "TCOP", "TOPE", "WXXX"};
enum { kTextSize = 512, kTail = 128, kHead = 2048 };

struct Track {
  char text[kTexts][kTextSize]; /* UTF-8, apostrophes and double quotes as '' */
  char quality[64];
  long seconds;
  int has_v1, has_v2, has_picture;
};

static sqlite3* catalogue;
static long files, rows;

static void Fail(const char* what) {
  fprintf(stderr, "scan_floor: %s: %s\n", what, catalogue ? sqlite3_errmsg(catalogue) : "");
  exit(1);
}

static char* PutCharacter(char* out, unsigned c) {
  if (c == 0) return out;
  if (c == '\'' || c == '"') {
    *out++ = '\'';
    *out++ = '\'';
  } else if (c < 0x80) {
    *out++ = (char)c;
  } else if (c < 0x800) {
    *out++ = (char)(0xC0 | c >> 6);
    *out++ = (char)(0x80 | (c & 63));
  } else {
    *out++ = (char)(0xE0 | c >> 12);
    *out++ = (char)(0x80 | (c >> 6 & 63));
    *out++ = (char)(0x80 | (c & 63));
  }
  return out;
}

static void PutText(char* out, const unsigned char* bytes, long length, int wide) {
  char *start = out, *limit = out + kTextSize - 8;
  if (wide) {
    for (long i = 2; i + 1 < length && out < limit; i += 2)
      out = PutCharacter(out, bytes[i] | (unsigned)bytes[i + 1] << 8);
  } else {
    for (long i = 0; i < length && out < limit; ++i) out = PutCharacter(out, bytes[i]);
  }
  while (out > start && out[-1] == ' ') --out;
  *out = 0;
}

static void TakeV2(const unsigned char* tag, long length, struct Track* track) {
  for (long at = 0; at + 10 <= length && tag[at];) {
    const unsigned char *frame = tag + at, *body = frame + 10;
    long size = (long)frame[4] << 24 | frame[5] << 16 | frame[6] << 8 | frame[7];
    if (size < 1 || at + 10 + size > length) break;
    if (!memcmp(frame, "APIC", 4)) track->has_picture = 1;
    for (int i = 0; i < kTexts; ++i) {
      if (memcmp(frame, kFrames[i], 4)) continue;
      int wide = body[0] == 1;
      int skipped = i == kComment ? (wide ? 8 : 5) : i == kUrl ? 2 : 1;
      if (size > skipped)
        PutText(track->text[i], body + skipped, size - skipped, wide && i != kUrl);
      break;
    }
    at += 10 + size;
  }
}

static void TakeV1(const unsigned char* tail, struct Track* track) {
  static const struct {
    int text, at, length;
  } kFields[] = {
      {kTitle, 3, 30}, {kArtist, 33, 30}, {kAlbum, 63, 30}, {kYear, 93, 4}, {kComment, 97, 28}};
  if (memcmp(tail, "TAG", 3)) return;
  track->has_v1 = 1;
  for (size_t i = 0; i < sizeof kFields / sizeof *kFields; ++i)
    if (!track->text[kFields[i].text][0])
      PutText(track->text[kFields[i].text], tail + kFields[i].at, kFields[i].length, 0);
}

static void TakeFrameHeader(const unsigned char* head, long length, long file_size,
                            struct Track* track) {
  static const int kBitrates[] = {0,   32,  40,  48,  56,  64,  80,  96,
                                  112, 128, 160, 192, 224, 256, 320, 0};
  static const int kRates[] = {44100, 48000, 32000, 44100};
  static const char* const kModes[] = {"Stereo", "Joint Stereo", "Dual Channel", "Single Channel"};
  strcpy(track->quality, "damaged header");
  const unsigned char* sync = head;
  while ((sync = memchr(sync, 0xFF, (size_t)(head + length - sync))) &&
         head + length - sync >= 48) {
    if (sync[1] >= 0xF2) break;
    ++sync;
  }
  if (!sync || head + length - sync < 48) return;
  double rate = kRates[sync[2] >> 2 & 3], kbit = kBitrates[sync[2] >> 4];
  int variable = !memcmp(sync + 36, "Xing", 4);
  if (variable) {
    long frames = (long)sync[44] << 24 | sync[45] << 16 | sync[46] << 8 | sync[47];
    kbit = frames > 0 ? rate * (double)file_size / (double)frames / 144000 : 0;
  }
  if (kbit > 0) track->seconds = (long)((double)file_size * 8 / kbit / 1000);
  snprintf(track->quality, sizeof track->quality, "%.0f kbps%s / %g khz / %s", kbit,
           variable ? " (VBR)" : "", rate / 1000, kModes[sync[3] >> 6]);
}

static void Commit(const char* path, const struct stat* status, struct Track* track) {
  static char statement[16384];
  char mb[32], bytes[32], playtime[32], seconds[32], written[32], now[32], number[16] = "255";
  char *genre = track->text[kGenre], *close = strrchr(genre, ')');
  if (genre[0] == '(' && close) {
    snprintf(number, sizeof number, "%d", atoi(genre + 1));
    genre = close + 1;
  }
  time_t t = time(0);
  strftime(now, sizeof now, "%Y-%m-%d %H:%M:%S", localtime(&t));
  strftime(written, sizeof written, "%Y-%m-%d %H:%M:%S", localtime(&status->st_mtime));
  snprintf(mb, sizeof mb, "%.2f MB", (double)status->st_size / 1048576);
  snprintf(bytes, sizeof bytes, "%ld", (long)status->st_size);
  snprintf(playtime, sizeof playtime, "%ld:%02ld", track->seconds / 60, track->seconds % 60);
  snprintf(seconds, sizeof seconds, "%ld", track->seconds);
  char flags[3][2] = {{(char)('0' + track->has_picture)},
                      {(char)('0' + track->has_v1)},
                      {(char)('0' + track->has_v2)}};
  const char* values[] = {genre,
                          "",
                          "",
                          "",
                          "",
                          "",
                          "",
                          flags[0],
                          flags[1],
                          flags[2],
                          track->text[kTrack],
                          track->text[kBpm],
                          path,
                          track->text[kTitle],
                          track->text[kArtist],
                          number,
                          track->text[kYear],
                          track->text[kAlbum],
                          playtime,
                          seconds,
                          mb,
                          bytes,
                          track->text[kComment],
                          track->quality,
                          now,
                          now,
                          written,
                          track->text[kComposer],
                          track->text[kOriginal],
                          track->text[kUrl],
                          track->text[kCopyright],
                          track->text[kEncoder]};
  char* out =
      stpcpy(statement,
             "insert into mp3sTabelle "
             "(genrereal,Preference,Situation,[Mood],Tempo,BIOS,LYRICS,haspic,HasID3V1,HasID3V2,"
             "trackno,bpm,location,Songname,Artist,genre,[year],album,playtime,playtimereal,"
             "filesize,filesizereal,comment,"
             "quality,datetimeofdbinsert,datetimeofdbupdate,datetimeoffile,composer,originalartist,"
             "url,copyright,encodedby"
             ") values ('");
  for (size_t i = 0; i < sizeof values / sizeof *values; ++i) {
    if (i) out = stpcpy(out, "','");
    if (values[i] == path) { /* the one text whose apostrophes are not doubled yet */
      for (const char* c = path; *c; ++c) {
        if (*c == '\'') *out++ = '\'';
        *out++ = *c;
      }
    } else {
      out = stpcpy(out, values[i]);
    }
  }
  strcpy(out, "')");
  sqlite3_stmt* insert;
  if (sqlite3_prepare_v2(catalogue, statement, -1, &insert, 0) ||
      sqlite3_step(insert) != SQLITE_DONE)
    Fail(statement);
  sqlite3_finalize(insert);
  ++rows;
}

static void ReadFile(int folder, const char* name, const char* path) {
  static unsigned char* tag;
  static long tag_room;
  static struct Track track;
  unsigned char start[10], head[kHead], tail[kTail];
  struct stat status;
  int fd = openat(folder, name, O_RDONLY | O_CLOEXEC);
  if (fd < 0 || fstat(fd, &status)) Fail(path);
  memset(&track, 0, sizeof track);
  long tag_length = 0;
  if (pread(fd, start, sizeof start, 0) == sizeof start && !memcmp(start, "ID3", 3)) {
    tag_length = (long)start[6] << 21 | start[7] << 14 | start[8] << 7 | start[9];
    if (tag_length > tag_room) tag = realloc(tag, (size_t)(tag_room = 2 * tag_length));
    tag_length = pread(fd, tag, (size_t)tag_length, sizeof start);
    track.has_v2 = 1;
    TakeV2(tag, tag_length, &track);
  }
  long got = pread(fd, head, sizeof head, track.has_v2 ? tag_length + (long)sizeof start : 0);
  if (status.st_size >= kTail && pread(fd, tail, kTail, status.st_size - kTail) == kTail)
    TakeV1(tail, &track);
  close(fd);
  TakeFrameHeader(head, got, status.st_size, &track);
  Commit(path, &status, &track);
  ++files;
}

static void Walk(int folder, char* path, size_t length) {
  DIR* entries = fdopendir(folder);
  for (struct dirent* entry; (entry = readdir(entries));) {
    if (entry->d_name[0] == '.') continue;
    size_t n = strlen(entry->d_name);
    memcpy(path + length, entry->d_name, n + 1);
    if (entry->d_type == DT_DIR) {
      int below = openat(dirfd(entries), entry->d_name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      strcpy(path + length + n, "/");
      if (below >= 0) Walk(below, path, length + n + 1);
    } else if (n > 4 && !strcasecmp(entry->d_name + n - 4, ".mp3")) {
      ReadFile(dirfd(entries), entry->d_name, path);
    }
  }
  closedir(entries);
}

static double Seconds(struct timeval t) { return (double)t.tv_sec + (double)t.tv_usec / 1e6; }

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: scan_floor FOLDER DATABASE\n");
    return 2;
  }
  struct timespec began, ended;
  clock_gettime(CLOCK_MONOTONIC, &began);
  unlink(argv[2]);
  if (sqlite3_open(argv[2], &catalogue) ||
      sqlite3_exec(
          catalogue,
          "pragma journal_mode=wal; pragma synchronous=normal;"
          "create table mp3sTabelle (uid integer primary key, Songname text, Artist text, genre "
          "text,"
          "genrereal text, quality text, location text, year text, album text, trackno text, "
          "Playtime text,"
          "playtimereal text, Filesize text, filesizereal text, Comment text, BPM text, preview "
          "text,"
          "lasttimeplayed text, Situation text, preference text, tempo text, Mood text, bios text, "
          "Lyrics text,"
          "haspic integer, composer text, copyright text, encodedby text, originalartist text, url "
          "text,"
          "hasid3v1 integer, hasid3v2 integer, datetimeofdbinsert text, datetimeofdbupdate text,"
          "datetimeoffile text)",
          0, 0, 0))
    Fail(argv[2]);
  char path[4096];
  size_t length = strlen(strcpy(path, argv[1]));
  if (path[length - 1] != '/') strcpy(path + length++, "/");
  int folder = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) Fail(path);
  Walk(folder, path, length);
  sqlite3_close(catalogue);
  clock_gettime(CLOCK_MONOTONIC, &ended);
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  printf("files %ld rows %ld user %.3f sys %.3f wall %.3f\n", files, rows, Seconds(usage.ru_utime),
         Seconds(usage.ru_stime),
         (double)(ended.tv_sec - began.tv_sec) + (double)(ended.tv_nsec - began.tv_nsec) / 1e9);
  return 0;
}
