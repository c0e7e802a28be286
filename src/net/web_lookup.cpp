// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/web_lookup.h"

#include <array>
#include <string_view>
#include <utility>

#include "core/paths.h"

namespace tunemeadow {
namespace {

/// Everything that may change about the sites.
struct LookupSites {
  std::string_view music_shop = "https://www.amazon.com";
  std::string_view partner_code = "tunemeadow";
  std::string_view disc_database = "https://www.gnudb.org";
  std::string_view covers = "https://www.albumartexchange.com";
  std::string_view music_guide = "https://www.allmusic.com";
};
constexpr LookupSites kSites;

void OpenQuery(Workbench& bench, std::string_view host, std::string_view path_and_query) {
  (void)bench.world.shell.Open(std::string(host).append(path_and_query));
}

/// Without a choice, the artist: an empty query finds nothing.
LookupChoice ChoiceOrArtist(LookupChoice choice) {
  const bool any =
      choice.chkCDDBSong || choice.chkCDDBArtist || choice.chkCDDBAlbum || choice.chkCDDBLocation;
  if (!any) choice.chkCDDBArtist = true;
  return choice;
}

/// The values of the query, coded.
std::string QueryOf(const Workbench& bench, const LookupChoice& choice) {
  return LookupText(LookupValues(bench.details, ChoiceOrArtist(choice)));
}

/// Where the disc database is to look: one field for each chosen value, all for a file name alone.
std::string DiscFields(const LookupChoice& choice) {
  std::string fields;
  const auto add = [&fields](bool chosen, std::string_view field) {
    if (chosen) fields.append(fields.empty() ? "" : "&").append(field);
  };
  add(choice.chkCDDBSong, "f=track");
  add(choice.chkCDDBArtist, "f=artist");
  add(choice.chkCDDBAlbum, "f=disc");
  if (fields.empty() && choice.chkCDDBLocation) return "f=disc&f=track&f=artist";
  return fields;
}

/// Whether the music guide has a search for it.
bool GuideFinds(const LookupChoice& choice) {
  if (choice.chkCDDBSong || (choice.chkCDDBArtist && choice.chkCDDBAlbum)) return false;
  return choice.chkCDDBArtist || choice.chkCDDBAlbum || !choice.chkCDDBLocation;
}

}  // namespace

std::string LookupValues(const DetailEditor& details, const LookupChoice& choice) {
  const struct {
    bool chosen;
    std::string_view text;
  } values[] = {{choice.chkCDDBSong, details.texts[TrackField::Songname]},
                {choice.chkCDDBArtist, details.texts[TrackField::Artist]},
                {choice.chkCDDBAlbum, details.texts[TrackField::album]},
                {choice.chkCDDBLocation, FileNamePart(details.texts[TrackField::location])}};
  std::string joined;
  bool first = true;
  for (const auto& value : values) {
    if (!value.chosen) continue;
    joined.append(first ? "" : " ").append(value.text);
    first = false;
  }
  return joined;
}

std::string LookupText(std::string_view text) {
  constexpr std::array<std::pair<char, std::string_view>, 4> kCoded = {
      {{'#', "%23"}, {'&', "%26"}, {'%', "%25"}, {'+', "%2B"}}};
  std::string query;
  for (const char each : text) {
    std::string_view written(&each, 1);
    for (const auto& [character, code] : kCoded) {
      if (each == character) written = code;
    }
    query += written;
  }
  return query;
}

void mnuAmazoncom_Click(Workbench& bench, const LookupChoice& choice) {
  OpenQuery(bench, kSites.music_shop,
            "/exec/obidos/external-search?keyword=" + QueryOf(bench, choice) +
                "&mode=music&tag=" + std::string(kSites.partner_code) +
                "&pdm-search-go-btn.gif.x=10&pdm-search-go-btn.gif.y=10");
}

void mnucddbcom_Click(Workbench& bench, const LookupChoice& choice) {
  OpenQuery(bench, kSites.disc_database,
            "/php/search1.php3?" + DiscFields(ChoiceOrArtist(choice)) +
                "&q=" + QueryOf(bench, choice) + "&image=Search");
}

void mnuSearchCovers_Click(Workbench& bench, const LookupChoice& choice) {
  OpenQuery(bench, kSites.covers, "/results.asp?searchtype=4&s=" + QueryOf(bench, choice));
}

void mnusonicnet_Click(Workbench& bench, const LookupChoice& choice) {
  if (!GuideFinds(choice)) {
    bench.interaction.ShowMessage({.text =
                                       "This site can search for the artist or the album only.\r\n"
                                       "Please redifine your searchoptions!"});
    return;
  }
  if (choice.chkCDDBAlbum) {
    OpenQuery(
        bench, kSites.music_guide,
        "/allmusic/albumsearch.jhtml?query=" + LookupText(bench.details.texts[TrackField::album]));
    return;
  }
  if (!choice.chkCDDBArtist) {
    bench.interaction.ShowMessage({.text = "Artist is automatically choosen."});
  }
  OpenQuery(
      bench, kSites.music_guide,
      "/allmusic/artistsearch.jhtml?query=" + LookupText(bench.details.texts[TrackField::Artist]));
}

}  // namespace tunemeadow
