// SPDX-License-Identifier: GPL-3.0-or-later
// tagdump FILE...: what the readers of an import find in each file, one JSON object a line:
//   path, length, id3v1 (its flag), id3v2 (null, or the fields after that reader), ogg (null, or
//   that reader's result), info (the whole record after the analysis), quality, lyrics3 (null, or
//   its fields), row (what an import with the default settings would write).
// As in an import one record serves all files: what a file leaves out stays from the one before.
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "audio/file_bytes.h"
#include "audio/id3v2_reader.h"
#include "audio/lyrics3.h"
#include "audio/mdl_ID3.h"
#include "audio/mp3reader.h"
#include "audio/ogg_comments.h"
#include "core/code_page.h"
#include "core/paths.h"
#include "tracks/classic_tags.h"
#include "tracks/field_order.h"
#include "tracks/import_file.h"
#include "tracks/import_row.h"

namespace {

using tunemeadow::Lyrics3;
using tunemeadow::Mp3Info;
using tunemeadow::TagText;

void Put(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void PutQuoted(std::string_view text) {
  std::putchar('"');
  for (const char each : text) {
    if (static_cast<unsigned char>(each) < 0x20) {
      std::printf("\\u%04x", static_cast<unsigned>(each));
    } else {
      if (each == '"' || each == '\\') std::putchar('\\');
      std::putchar(each);
    }
  }
  std::putchar('"');
}

/// Members in the order in which they are added, printed as they come: a hostile tag makes long
/// ones. The object ends with its scope.
class JsonObject {
 public:
  JsonObject() { Put("{"); }
  ~JsonObject() { Put("}"); }
  JsonObject(const JsonObject&) = delete;
  JsonObject& operator=(const JsonObject&) = delete;

  /// The value is what is printed next.
  void AddName(std::string_view name) {
    Put(first_ ? "" : ", ");
    first_ = false;
    PutQuoted(name);
    Put(": ");
  }
  void AddRaw(std::string_view name, std::string_view value) {
    AddName(name);
    Put(value);
  }
  void AddText(std::string_view name, std::string_view text) {
    AddName(name);
    PutQuoted(text);
  }
  void AddTag(std::string_view name, std::string_view tag_text) {
    AddText(name, tunemeadow::FromTagText(tag_text));
  }
  void AddNumber(std::string_view name, std::int64_t number) {
    AddRaw(name, std::to_string(number));
  }
  void AddFlag(std::string_view name, bool flag) { AddRaw(name, flag ? "true" : "false"); }

 private:
  bool first_ = true;
};

void PutJson(const Mp3Info& i) {
  JsonObject o;
  o.AddNumber("Bitrate", i.Bitrate);
  o.AddNumber("SampleRate", i.SampleRate);
  o.AddTag("ChannelMode", i.ChannelMode);
  o.AddTag("Emphasis", i.Emphasis);
  o.AddNumber("Version", i.Version);
  o.AddNumber("Layer", i.Layer);
  o.AddTag("Padding", i.Padding);
  o.AddTag("Crc", i.Crc);
  o.AddNumber("Playtime", i.Playtime);
  o.AddTag("Copyright", i.Copyright);
  o.AddTag("Original", i.Original);
  o.AddTag("Private", i.Private);
  o.AddFlag("HasID3v1", i.HasID3v1);
  o.AddTag("Title", i.Title);
  o.AddTag("Artist", i.Artist);
  o.AddTag("Album", i.Album);
  o.AddTag("Year", i.Year);
  o.AddTag("Comment", i.Comment);
  o.AddNumber("Genre", i.Genre);
  o.AddTag("Track", i.Track);
  o.AddFlag("IsVbr", i.IsVbr);
  o.AddNumber("VbrFrames", i.VbrFrames);
  o.AddNumber("FileLength", i.FileLength);
  o.AddTag("CommentOverride", i.CommentOverride);
  o.AddTag("EncodedBy", i.EncodedBy);
  o.AddTag("Bpm", i.Bpm);
  o.AddTag("TrackV2", i.TrackV2);
  o.AddTag("Composer", i.Composer);
  o.AddTag("GenreV2", i.GenreV2);
  o.AddTag("Url", i.Url);
  o.AddTag("Lyrics", i.Lyrics);
  o.AddTag("Bio", i.Bio);
  o.AddTag("Tempo", i.Tempo);
  o.AddTag("Mood", i.Mood);
  o.AddTag("Situation", i.Situation);
  o.AddTag("Preference", i.Preference);
  o.AddFlag("HasPicture", i.HasPicture);
  o.AddFlag("NoHeader", i.NoHeader);
}

void PutJson(const Lyrics3& l) {
  JsonObject o;
  o.AddTag("Lyrics3Lyr", l.Lyrics3Lyr);
  o.AddTag("Lyrics3Inf", l.Lyrics3Inf);
  o.AddTag("Lyrics3Aut", l.Lyrics3Aut);
  o.AddTag("Lyrics3Eal", l.Lyrics3Eal);
  o.AddTag("Lyrics3Ear", l.Lyrics3Ear);
  o.AddTag("Lyrics3Ett", l.Lyrics3Ett);
  o.AddTag("Lyrics3Img", l.Lyrics3Img);
  o.AddTag("Lyrics3Qua", l.Lyrics3Qua);
  o.AddTag("Lyrics3Sit", l.Lyrics3Sit);
  o.AddTag("Lyrics3Moo", l.Lyrics3Moo);
  o.AddTag("Lyrics3Other", l.Lyrics3Other);
  o.AddTag("Lyrics3SizeText", l.Lyrics3SizeText);
}

/// The columns that the statement of the row names. Paths that are not UTF-8 are shown, not kept.
void PutJson(const tunemeadow::ImportRow& row) {
  JsonObject o;
  for (const tunemeadow::TrackField field :
       tunemeadow::FieldsInOrder<&tunemeadow::TrackFieldRow::insert>()) {
    const std::string& text = row.texts[field];
    if (!row.whole && text.empty()) continue;
    std::string_view name = tunemeadow::RowOf(field).insert.text;
    if (name.front() == '[') name = name.substr(1, name.size() - 2);
    o.AddText(name, tunemeadow::DisplayPath(text));
  }
}

void AddMp3(tunemeadow::FileBytes& file, Mp3Info& info, JsonObject& o) {
  tunemeadow::ID3v1Tag tag;
  o.AddFlag("id3v1", tunemeadow::ReadID3v1Tag(file, tag));
  o.AddName("id3v2");
  if (!tunemeadow::HasID3v2Tag(file)) {
    Put("null");
  } else if (ReadID3v2Tag(file, tunemeadow::ID3v2Versions::kAny, info) == "OK") {
    PutJson(info);
  } else {
    PutQuoted("");
  }
  tunemeadow::ReadMp3Info(file, tunemeadow::ReadID3v1Tag(file, tag), true, info);
  o.AddName("info");
  PutJson(info);
  o.AddText("quality", QualityText(info));
  Lyrics3 lyrics;
  o.AddName("lyrics3");
  if (tunemeadow::ReadLyrics3Tag(file, lyrics)) {
    PutJson(lyrics);
  } else {
    Put("null");
  }
}

void AddFindings(const std::string& path, tunemeadow::FileBytes& file, Mp3Info& info,
                 JsonObject& o) {
  if (!file.Open(path)) {
    o.AddText("error", "not a file that can be read");
    return;
  }
  o.AddNumber("length", file.Length());
  if (tunemeadow::HasExtension(path, "ogg")) {
    o.AddText("ogg", ReadOggInfo(file, info));
    o.AddName("info");
    PutJson(info);
  } else {
    AddMp3(file, info, o);
  }
}

void PutLine(const std::string& path, tunemeadow::FileBytes& file, Mp3Info& info,
             tunemeadow::ImportReader& reader) {
  JsonObject line;
  line.AddText("path", tunemeadow::DisplayPath(path));
  AddFindings(path, file, info, line);
  file.Close();
  line.AddName("row");
  PutJson(reader.Read(path, nullptr));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: tagdump FILE...\n", stderr);
    return 2;
  }
  tunemeadow::FileBytes file;
  Mp3Info info;
  const tunemeadow::Preferences options;
  tunemeadow::ClassicTags tags;
  tunemeadow::ImportReader reader(options, tags);
  for (int i = 1; i < argc; ++i) {
    PutLine(argv[i], file, info, reader);
    std::putchar('\n');
  }
  return 0;
}
