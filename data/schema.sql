-- SPDX-License-Identifier: GPL-3.0-or-later
-- The catalogue. It is made once, when the program is built; the program never makes or alters a
-- table. Texts compare without regard to the case of ASCII letters (collate nocase), so that any
-- SQLite tool can open the file; `location` alone compares byte for byte, for /music/a.mp3 and
-- /music/A.mp3 are two files. Keys are never used twice: preview clips are named by them.

-- Twice the usual size: rows are about 500 bytes, and a search reads every page of them.
pragma page_size = 8192;
pragma auto_vacuum = none;
pragma encoding = 'UTF-8';
pragma user_version = 1;
pragma journal_mode = wal;

create table mp3sTabelle (
  uid integer primary key autoincrement,
  Songname text collate nocase,
  Artist text collate nocase,
  genre text collate nocase,
  genrereal text collate nocase,
  quality text collate nocase,
  location text collate binary,
  [year] text collate nocase,
  album text collate nocase,
  trackno text collate nocase,
  Playtime text collate nocase,
  playtimereal text collate nocase,
  Filesize text collate nocase,
  filesizereal text collate nocase,
  Comment text collate nocase,
  BPM text collate nocase,
  preview text collate nocase,
  lasttimeplayed text collate nocase,
  Situation text collate nocase,
  preference text collate nocase,
  tempo text collate nocase,
  Mood text collate nocase,
  bios text collate nocase,
  Lyrics text collate nocase,
  haspic integer,
  composer text collate nocase,
  copyright text collate nocase,
  encodedby text collate nocase,
  originalartist text collate nocase,
  url text collate nocase,
  hasid3v1 integer,
  hasid3v2 integer,
  datetimeofdbinsert text collate nocase,
  datetimeofdbupdate text collate nocase,
  datetimeoffile text collate nocase
);

create table playlists (
  UIDPLaylist integer primary key autoincrement,
  Playlist text collate nocase,
  UID integer,
  [position] integer
);

create table cdarchives (
  UIDCDArchive integer primary key autoincrement,
  CDArchive text collate nocase,
  UID integer
);

-- Finds a known path. Its order is not that of `order by location`, on purpose: a search would walk
-- the index and fetch each row from its own page, which costs up to ten times a scan and a sort of
-- the hits.
create index known_locations on mp3sTabelle (location collate rtrim);

-- Opening a playlist, counting its tracks and storing their order go by its name and a track.
create index tracks_of_playlists on playlists (Playlist, UID);

-- A file that is imported again keeps its row, and with it its key, playlists and user tags.
create trigger known_location before insert on mp3sTabelle
when new.location <> '' and exists (
  select 1 from mp3sTabelle
  where location = new.location collate rtrim and location = new.location collate binary)
begin
  select raise(ignore);
end;

-- The demonstration track, as an import of monster.mp3 would write it; the first start points it to
-- its file.
insert into mp3sTabelle (uid, Songname, Artist, genre, genrereal, quality, location, [year], album,
  trackno, Playtime, playtimereal, Filesize, filesizereal, Comment, BPM, Lyrics, composer, haspic,
  hasid3v1, hasid3v2)
values (1, 'Monster', 'Tunemeadow', '12', 'Other', '128 kbps / 44.1 khz / Joint Stereo',
  'monster.mp3', '2026', 'Demonstration', '1', '0:08', '8', '0.13 MB', '137188',
  'Made for this catalogue', '120',
  'Hum, little monster, under the hill,' || char(13, 10)
    || 'hum till the meadow is sleeping and still.', 'Tunemeadow', 1, 1, 1);
