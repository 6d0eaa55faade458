#include <algorithm>
#include <array>

#include "groups.h"

namespace vorn::sounds {
namespace {

constexpr std::array kGroups{&engineRecipes, &wallRecipes,  &cockpitRecipes, &crashRecipes,
                             &pitRecipes,    &titleRecipes, &speechRecipes,  &mapleCues,
                             &ohioCues,      &chagrinCues,  &chardonCues,    &erieCues,
                             &mentorCues,    &kirtlandCues, &genevaCues,     &chesterlandCues};

std::vector<Recipe> inCatalogueOrder() {
  std::vector<Recipe> recipes;
  for (const auto group : kGroups) {
    const std::span<const Recipe> more = group();
    recipes.insert(recipes.end(), more.begin(), more.end());
  }
  std::sort(recipes.begin(), recipes.end(), [](const Recipe& a, const Recipe& b) { return a.name < b.name; });
  return recipes;
}

}  // namespace

std::span<const Recipe> allRecipes() {
  static const std::vector<Recipe> recipes = inCatalogueOrder();
  return recipes;
}

const Recipe* findRecipe(std::string_view name) {
  const std::span<const Recipe> recipes = allRecipes();
  const auto found = std::find_if(recipes.begin(), recipes.end(),
                                  [name](const Recipe& recipe) { return recipe.name == name; });
  return found == recipes.end() ? nullptr : &*found;
}

}  // namespace vorn::sounds
