// The same sounds come out again, byte for byte: on whatever day, in whatever
// language, beside whatever else. A player's set is then the one that was tested.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "support/temporary_folder.h"
#include "support_sounds.h"

namespace vorn::sounds {
namespace {

bool succeeds(const std::string& command) {
  return std::system(command.c_str()) == 0;
}

/// Processor time that the commands so far have taken.
double secondsOfCommands() {
  rusage used{};
  getrusage(RUSAGE_CHILDREN, &used);
  return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec);
}

/// The names of the sums of `sha256sum`, in their order.
std::vector<std::string> namesIn(const std::string& sums) {
  std::istringstream stream(sums);
  std::vector<std::string> names;
  for (std::string sum, name; stream >> sum >> name;) names.push_back(name);
  return names;
}

std::vector<std::string> allNames() {
  std::vector<std::string> names;
  for (const CatalogueEntry& entry : soundCatalogue()) names.push_back(soundFileName(entry.name));
  return names;
}

// After a change of a recipe, or of a library that a sound is made with, write the
// new sums down as tools/sounds/README.md says.
TEST(Set, IsTheOneThatWasWrittenDown) {
  const TemporaryFolder folder;
  ASSERT_TRUE(succeeds("cp " VORN_SOUNDS_SUMS " " + (folder.path() / "sums").string()));
  EXPECT_THAT(namesIn(folder.read("sums")), testing::UnorderedElementsAreArray(allNames()));
  EXPECT_TRUE(succeeds("cd " VORN_SOUNDS_FOLDER " && sha256sum --check --strict --quiet " VORN_SOUNDS_SUMS));
}

TEST(Set, ComesOutTheSameInAnotherLanguageOneByOne) {
  const TemporaryFolder folder;
  const std::string language = folder.path() / "de_DE.UTF-8";
  ASSERT_TRUE(succeeds("localedef -i de_DE -f UTF-8 " + language));  // writes numbers with a comma
  const std::string set = folder.path() / "a folder";
  const double before = secondsOfCommands();
  ASSERT_TRUE(succeeds("LOCPATH=" + folder.path().string() +
                       " LC_ALL=de_DE.UTF-8 TZ=Asia/Tokyo " VORN_SOUNDS_TOOL " -j 1 '" + set +
                       "' >/dev/null"));
  EXPECT_LT(secondsOfCommands() - before, 90);  // a player waits for it
  EXPECT_TRUE(succeeds("diff -r '" + set + "' " VORN_SOUNDS_FOLDER));
}

}  // namespace
}  // namespace vorn::sounds
