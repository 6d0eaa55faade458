// The catalogue of the sounds: its names, its order, its sums.

#include "sound/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vorn {
namespace {

TEST(Catalogue, ListsThe108FilesInCharacterOrder) {
  const auto all = soundCatalogue();
  ASSERT_EQ(all.size(), 108U);
  EXPECT_TRUE(
      std::is_sorted(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.name < b.name; }));
  EXPECT_EQ(all[0].name, "vorn0");
  EXPECT_EQ(all[2].name, "vorn10");
  EXPECT_EQ(all[12].name, "vorn1t1");
  EXPECT_EQ(all[13].name, "vorn1t10");
  EXPECT_EQ(all.back().name, "vorn9");
}

TEST(Catalogue, HoldsEveryNameOnce) {
  for (int i = 0; i <= 34; ++i) EXPECT_NE(findInCatalogue("vorn" + std::to_string(i)), nullptr) << i;
  for (int i = 1; i <= 73; ++i) EXPECT_NE(findInCatalogue("vorn1t" + std::to_string(i)), nullptr) << i;
  EXPECT_EQ(findInCatalogue("vorn35"), nullptr);
  EXPECT_EQ(findInCatalogue(""), nullptr);
}

TEST(Catalogue, KnowsTheFigures) {
  const CatalogueEntry* entry = findInCatalogue("vorn12");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->bytes, 31052);
  EXPECT_EQ(entry->items, 126);
  EXPECT_EQ(entry->lastItemLength, 12526);
  long long bytes = 0, items = 0, lengths = 0;
  for (const CatalogueEntry& each : soundCatalogue()) {
    bytes += each.bytes;
    items += each.items;
    lengths += each.lastItemLength;
  }
  EXPECT_EQ(bytes, 11590416);
  EXPECT_EQ(items, 3787);
  EXPECT_EQ(lengths, 75338);
}

TEST(Catalogue, NamesFiles) {
  EXPECT_EQ(soundFileName("vorn1t5"), "vorn1t5.wav");
}

}  // namespace
}  // namespace vorn
