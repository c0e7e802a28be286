// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/web_lookup.h"

#include <gtest/gtest.h>

#include "support/scripted_interaction.h"
#include "support/scripted_world.h"
#include "support/temp_folder.h"

namespace tunemeadow {
namespace {

class WebLookup : public testing::Test {
 protected:
  using Lookup = void (*)(Workbench&, const LookupChoice&);

  WebLookup() {
    bench_.details.texts[TrackField::Songname] = "50% more";
    bench_.details.texts[TrackField::Artist] = "Anna & Bert";
    bench_.details.texts[TrackField::album] = "#1  hits";
    bench_.details.texts[TrackField::location] = "/m/AC\\DC.mp3";
  }

  /// Path and query of what was opened, after the host; empty if nothing was.
  std::string Opened(Lookup lookup, const LookupChoice& choice) {
    world_.log.clear();
    lookup(bench_, choice);
    if (world_.log.empty()) return {};
    const std::string opened = world_.log.front();
    EXPECT_EQ(world_.log.size(), 1U);
    EXPECT_TRUE(opened.starts_with("open https://")) << opened;
    return opened.substr(opened.find('/', std::string("open https://").size()));
  }

  TempFolder folder_;
  Session session_{folder_.Path(), "tunemeadow"};
  ScriptedInteraction interaction_;
  ScriptedWorld world_;
  Workbench bench_{session_, interaction_, world_};
};

constexpr LookupChoice kNone{}, kSong{.chkCDDBSong = true}, kArtist{.chkCDDBArtist = true},
    kAlbum{.chkCDDBAlbum = true}, kFile{.chkCDDBLocation = true}, kAll{true, true, true, true};

TEST_F(WebLookup, TheChosenValuesStandInTheQueryWithWhatWouldEndItCoded) {
  EXPECT_EQ(Opened(mnuAmazoncom_Click, kAll),
            "/exec/obidos/external-search?keyword=50%25 more Anna %26 Bert %231  hits AC\\DC.mp3"
            "&mode=music&tag=tunemeadow&pdm-search-go-btn.gif.x=10&pdm-search-go-btn.gif.y=10");
  EXPECT_EQ(Opened(mnuSearchCovers_Click, {.chkCDDBArtist = true, .chkCDDBAlbum = true}),
            "/results.asp?searchtype=4&s=Anna %26 Bert %231  hits");
  EXPECT_EQ(Opened(mnuSearchCovers_Click, kNone), "/results.asp?searchtype=4&s=Anna %26 Bert");
  bench_.details.texts[TrackField::Artist].clear();
  EXPECT_EQ(Opened(mnuSearchCovers_Click, kAll),
            "/results.asp?searchtype=4&s=50%25 more  %231  hits AC\\DC.mp3");
}

TEST_F(WebLookup, TheDiscDatabaseLooksInTheFieldsOfTheChosenValues) {
  const struct {
    LookupChoice choice;
    const char *fields, *values;
  } cases[] = {
      {kSong, "f=track", "50%25 more"},
      {kArtist, "f=artist", "Anna %26 Bert"},
      {kAlbum, "f=disc", "%231  hits"},
      {kFile, "f=disc&f=track&f=artist", "AC\\DC.mp3"},
      {{.chkCDDBArtist = true, .chkCDDBLocation = true}, "f=artist", "Anna %26 Bert AC\\DC.mp3"},
      {kAll, "f=track&f=artist&f=disc", "50%25 more Anna %26 Bert %231  hits AC\\DC.mp3"},
      {kNone, "f=artist", "Anna %26 Bert"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Opened(mnucddbcom_Click, c.choice),
              std::string("/php/search1.php3?") + c.fields + "&q=" + c.values + "&image=Search");
  }
}

TEST_F(WebLookup, TheMusicGuideTakesOneValueOrSaysSo) {
  const std::string artist = "/allmusic/artistsearch.jhtml?query=Anna %26 Bert";
  EXPECT_EQ(Opened(mnusonicnet_Click, kArtist), artist);
  EXPECT_EQ(Opened(mnusonicnet_Click, kAlbum), "/allmusic/albumsearch.jhtml?query=%231  hits");
  EXPECT_EQ(Opened(mnusonicnet_Click, {.chkCDDBArtist = true, .chkCDDBLocation = true}), artist);
  EXPECT_TRUE(interaction_.boxes.empty());
  interaction_.WillAnswer(Answer::kOk);
  EXPECT_EQ(Opened(mnusonicnet_Click, kNone), artist);
  for (const LookupChoice& refused :
       {kSong, kFile, kAll, LookupChoice{.chkCDDBArtist = true, .chkCDDBAlbum = true},
        LookupChoice{.chkCDDBSong = true, .chkCDDBArtist = true}}) {
    interaction_.WillAnswer(Answer::kOk);
    EXPECT_EQ(Opened(mnusonicnet_Click, refused), "");
  }
  const std::string no =
      "Tunemeadow: This site can search for the artist or the album only.\r\n"
      "Please redifine your searchoptions!";
  EXPECT_EQ(interaction_.BoxTexts(),
            (std::vector<std::string>{"Tunemeadow: Artist is automatically choosen.", no, no, no,
                                      no, no}));
}

}  // namespace
}  // namespace tunemeadow
