#include "pit/snacks.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "unit/pit/rig.h"

namespace vorn {
namespace {

// Typed from the menu of the pit crew, not from the table it is tested against.
constexpr const char* kSentences[] = {
    " Here's a coffee",
    " Here's a jelly doughnut",
    " Here's a hot chocolate",
    " Here's a few her she kisses",
    " Here's a glass of moon shine",
    " Here's a pickle",
    " Here's a chocolate milk",
    " Here's a Klondike bar",
    " Here's a milk",
    " Here's a turkey sandwich",
    " Here's a seven up",
    " Here's a taco",
    " Here's a grape knee high",
    " Here's a tuna fish Sandwich",
    " Here's a milk shake",
    " Here's a bag of free toes",
    " Here's a cola",
    " Here's a few chicken wings",
    " Here's a scotch",
    " Here's a pop sickle",
    " Here's a slice of watermelon",
    " Here's a glass of wine",
    " Here's a peanut butter and jelly sandwich",
    " Here's a root beer",
    " Here's a few fish sticks",
    " Here's a lemon aid",
    " Here's a three musketeers bar",
    " Here's a martini",
    " Here's a bologna sandwich",
    " Here's a water",
    " Here's a few cookies",
    " Here's a juice box",
    " Here's a snickers bar",
    " Here's a bourbon",
    " Here's a banana",
    " Here's a beer",
    " Here's a pretzel",
    " Here's a whisky",
    " Here's a granola bar",
    " Here's a Pepsi",
    " Here's a chicken salad sandwich",
    " Here's a Coke",
    " Here's a corn dog",
    " Here's a soda pop",
    " Here's a cheese burger",
    " Here's a glass of champagne",
    " Here's a hot dog",
    " Here's a doctor pepper",
    " Here's a candy bar",
    " Here's a sprite",
    " Here's a kit cat bar",
    " Here's a mountain dew",
    " Here's a slice of pizza",
    " Here's a cherry soda",
    " Here's a pop tart",
    " Here's a red pop",
    " Here's a chocolate candy bar",
    " Here's a blue ribbon beer",
    " Here's a ham and cheese sandwich",
    " Here's a margarita",
    " Here's a spam sandwich",
    " Here's a tequila",
    " Here's a box of milk duds",
    " Here's a vodka",
    " Here's a box of cracker jacks",
    " Here's a rum and coke",
    " Here's a grilled cheese sandwich",
    " Here's a bloody mary",
    " Here's a doughnut",
    " Here's a tomato juice",
    " Here's a bacon lettuce and tomato sandwich",
    " Here's a harvey wall banger",
    " Here's an orange juice",
    " Here's an egg salad sandwich",
    " Here's an ice tea",
    " Here's an energy drink",
    " Here's an egg roll",
    " Here's an energy bar",
    " Here's an orange crush",
    " Here's an ice cream sandwich",
    " Here's an apple",
    " Here's an ice cream cone",
};

TEST(SnackSentence, WordsEverySnack) {
  ASSERT_EQ(std::size(kSentences), 82u);
  for (int number = 1; number <= kSnacks; ++number) {
    EXPECT_EQ(snackSentence(number), kSentences[number - 1]) << number;
  }
}

TEST(SnackSentence, KnowsNoOtherNumber) {
  EXPECT_THROW(snackSentence(0), std::out_of_range);
  EXPECT_THROW(snackSentence(83), std::out_of_range);
}

TEST(GetFood, TakesAnArticleByNumberNotBySpelling) {
  EXPECT_EQ(snackSentence(72), " Here's a harvey wall banger");
  EXPECT_EQ(snackSentence(73), " Here's an orange juice");
}

TEST(GetFood, ReachesEverySnackAlikeOften) {
  Rig rig;
  std::map<std::string, int> served;
  constexpr int kTries = 82 * 100;
  for (int i = 0; i < kTries; ++i) {
    rig.platform.chance = (i + 0.5) / kTries;
    getfood(rig.g);
    ++served[rig.g.typedText];
  }
  EXPECT_EQ(served.size(), 82u);
  for (const char* sentence : kSentences) EXPECT_EQ(served[sentence], 100) << sentence;
  EXPECT_EQ(rig.platform.reseeded, kTries);
}

TEST(GetFood, HasEndsThatFit) {
  Rig rig;
  rig.platform.chance = 0;
  getfood(rig.g);
  EXPECT_EQ(rig.g.typedText, " Here's a coffee");
  rig.platform.chance = 0x1.fffffffffffffp-1;  // the largest there is
  getfood(rig.g);
  EXPECT_EQ(rig.g.typedText, " Here's an ice cream cone");
}

}  // namespace
}  // namespace vorn
