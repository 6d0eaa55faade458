#include "pit/snacks.h"

#include <array>

#include "text/numbers.h"

namespace vorn {
namespace {

/// Spelled for the voice. Those that begin with a vowel stand at the end.
constexpr std::array<const char*, kSnacks> kItems = {
    "coffee",
    "jelly doughnut",
    "hot chocolate",
    "few her she kisses",
    "glass of moon shine",
    "pickle",
    "chocolate milk",
    "Klondike bar",
    "milk",
    "turkey sandwich",
    "seven up",
    "taco",
    "grape knee high",
    "tuna fish Sandwich",
    "milk shake",
    "bag of free toes",
    "cola",
    "few chicken wings",
    "scotch",
    "pop sickle",
    "slice of watermelon",
    "glass of wine",
    "peanut butter and jelly sandwich",
    "root beer",
    "few fish sticks",
    "lemon aid",
    "three musketeers bar",
    "martini",
    "bologna sandwich",
    "water",
    "few cookies",
    "juice box",
    "snickers bar",
    "bourbon",
    "banana",
    "beer",
    "pretzel",
    "whisky",
    "granola bar",
    "Pepsi",
    "chicken salad sandwich",
    "Coke",
    "corn dog",
    "soda pop",
    "cheese burger",
    "glass of champagne",
    "hot dog",
    "doctor pepper",
    "candy bar",
    "sprite",
    "kit cat bar",
    "mountain dew",
    "slice of pizza",
    "cherry soda",
    "pop tart",
    "red pop",
    "chocolate candy bar",
    "blue ribbon beer",
    "ham and cheese sandwich",
    "margarita",
    "spam sandwich",
    "tequila",
    "box of milk duds",
    "vodka",
    "box of cracker jacks",
    "rum and coke",
    "grilled cheese sandwich",
    "bloody mary",
    "doughnut",
    "tomato juice",
    "bacon lettuce and tomato sandwich",
    "harvey wall banger",
    "orange juice",
    "egg salad sandwich",
    "ice tea",
    "energy drink",
    "egg roll",
    "energy bar",
    "orange crush",
    "ice cream sandwich",
    "apple",
    "ice cream cone",
};
constexpr int kLastWithConsonant = 72;

}  // namespace

std::string snackSentence(int number) {
  const std::string article = number > kLastWithConsonant ? " Here's an " : " Here's a ";
  return article + kItems.at(number - 1);
}

void getfood(GameState& g) {
  g.platform.reseedRandom();
  g.typedText = snackSentence(wholePart(g.platform.randomFraction() * kSnacks) + 1);
}

}  // namespace vorn
