// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search_items.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "audio/genres.h"
#include "core/text.h"
#include "store/database.h"
#include "tracks/track_fields.h"
#include "views/paint_while_working.h"
#include "views/sort_keys.h"
#include "views/workbench.h"

namespace tunemeadow {
namespace {

constexpr std::size_t kGenreList = 4;  ///< place of cboGenre

/// A text with the first of its folded bytes, big-endian: most texts differ there.
struct HeadedText {
  std::uint64_t head;
  std::string_view text;
};

HeadedText WithHead(std::string_view text) noexcept {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof head; ++i) {
    const char c = i < text.size() ? LowerAscii(text[i]) : '\0';
    head = head << 8 | static_cast<unsigned char>(c);
  }
  return {head, text};
}

/// The distinct texts of one column. Of texts that differ in the case of A to Z only, the one that
/// came first stands for all, as in a group of the store.
class DistinctTexts {
 public:
  void Add(std::string_view text) {
    if (text.empty() || text == last_) return;  // a row often repeats the one before it
    last_ = text;
    if ((texts_.size() + 1) * 2 > slots_.size()) Grow();
    const HeadedText headed = WithHead(text);
    std::uint32_t& slot = SlotOf(headed);
    if (slot != kFree) return;
    slot = static_cast<std::uint32_t>(texts_.size());
    texts_.push_back(headed);
  }

  [[nodiscard]] std::vector<std::string> Sorted() const {
    return SortedTexts(texts_.size(), [this](std::uint32_t i) { return texts_[i].text; });
  }

 private:
  static constexpr std::uint32_t kFree = 0xFFFFFFFF;

  static std::size_t HashOf(const HeadedText& headed) noexcept {
    std::uint64_t hash = headed.head * 0x9E3779B97F4A7C15U;
    for (std::size_t i = sizeof headed.head; i < headed.text.size(); ++i) {
      hash = (hash ^ static_cast<unsigned char>(LowerAscii(headed.text[i]))) * 0x100000001B3U;
    }
    return static_cast<std::size_t>(hash ^ hash >> 29);
  }

  std::uint32_t& SlotOf(const HeadedText& headed) noexcept {
    std::size_t at = HashOf(headed) & (slots_.size() - 1);
    while (slots_[at] != kFree && !Same(texts_[slots_[at]], headed)) {
      at = (at + 1) & (slots_.size() - 1);
    }
    return slots_[at];
  }

  static bool Same(const HeadedText& left, const HeadedText& right) noexcept {
    return left.head == right.head && EqualsNoCase(left.text, right.text);
  }

  void Grow() {
    slots_.assign(std::max<std::size_t>(64, slots_.size() * 4), kFree);
    for (std::uint32_t i = 0; i < texts_.size(); ++i) SlotOf(texts_[i]) = i;
  }

  std::vector<HeadedText> texts_;
  std::vector<std::uint32_t> slots_;  ///< place in texts_, by hash; a power of two of them
  std::string_view last_;
};

/// Fills the lists from the texts that `cell(row, list)` gives, which live as long as this takes.
template <typename Cell>
void FillFrom(std::size_t rows, SearchItems& items, Cell cell) {
  std::array<DistinctTexts, std::tuple_size_v<decltype(items.lists)>> distinct;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = 0; i < distinct.size(); ++i) distinct[i].Add(cell(row, i));
  }
  for (std::size_t i = 0; i < distinct.size(); ++i) items.lists[i].values = distinct[i].Sorted();
}

/// One pass over the tracks for all lists: nine statements would walk them nine times. Throws
/// DatabaseError, lists unchanged.
void FillInOnePass(Session& session, SearchItems& items) {
  std::string statement = "select ";
  for (const SearchItemList& list : items.lists) {
    statement.append(list.column).append(&list == &items.lists.back() ? "" : ",");
  }
  statement += " FROM mp3stabelle";
  const CellTable rows = session.connection.Execute(statement).GetRows();
  FillFrom(rows.RowCount(), items,
           [&rows](std::size_t row, std::size_t list) { return rows.Cell(row, list); });
}

/// The list by its own statement; empty if that fails.
void FillAlone(Session& session, SearchItemList& list) {
  list.values.clear();
  try {
    const CellTable rows = session.connection.Execute(SearchItemStatement(list.column)).GetRows();
    list.values =
        SortedTexts(rows.RowCount(), [&rows](std::uint32_t row) { return rows.Cell(row, 0); });
  } catch (const DatabaseError&) {
    list.values.clear();
  }
}

std::vector<std::string> WithoutTableGenres(const std::vector<std::string>& genres) {
  std::vector<std::string> further;
  for (const std::string& genre : genres) {
    if (GenreNumberFromName(genre) == kNoGenre) further.push_back(genre);
  }
  return further;
}

void ShowItems(Workbench& bench) {
  SearchItems& items = bench.search_items;
  items.further_genres = WithoutTableGenres(items.lists[kGenreList].values);
  bench.Watcher().SearchItemsChanged();
}

}  // namespace

SearchItems::SearchItems()
    : lists{{{"cboArtistSearch", "Artist", {}},
             {"cboYearSearch", "year", {}},
             {"cboSongname", "Songname", {}},
             {"cboAlbum", "album", {}},
             {"cboGenre", "Genrereal", {}},
             {"cboSituation", "Situation", {}},
             {"cboPreference", "Preference", {}},
             {"cboMood", "mood", {}},
             {"cboTempo", "tempo", {}}}} {}

std::string SearchItemStatement(std::string_view column) {
  const std::string name(column);
  return "select " + name + " FROM mp3stabelle where " + name + "<>'' group by " + name +
         " order by " + name;
}

void RefreshAllSearchitems(Workbench& bench) {
  const PaintWhileWorking paint(bench);
  SearchItems& items = bench.search_items;
  try {
    FillInOnePass(bench.session, items);
  } catch (const DatabaseError&) {
    for (SearchItemList& list : items.lists) FillAlone(bench.session, list);
  }
  ShowItems(bench);
}

void TakeSearchitemsOfList(Workbench& bench) {
  constexpr std::array kFields = {
      TrackField::Artist,     TrackField::year,      TrackField::Songname,
      TrackField::album,      TrackField::genrereal, TrackField::Situation,
      TrackField::preference, TrackField::Mood,      TrackField::tempo};
  static_assert(kFields.size() == std::tuple_size_v<decltype(SearchItems::lists)>);
  const ResultList& list = bench.ListView1;
  FillFrom(list.RowCount(), bench.search_items,
           [&](std::size_t row, std::size_t i) { return list.Cell(row, kFields[i]); });
  ShowItems(bench);
}

}  // namespace tunemeadow
