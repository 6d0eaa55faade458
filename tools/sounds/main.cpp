// vorn1-sounds: makes the game's sound files, checks those of a folder or reports on them.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <thread>

#include "checks.h"
#include "maker.h"
#include "pack.h"
#include "progress.h"
#include "recipe.h"
#include "report/judge.h"
#include "report/report.h"

namespace vorn::sounds {
namespace {

struct Orders {
  std::string folder;
  std::string folderToCheck;
  std::string report;  ///< page to write about the folder's files
  std::string pack;    ///< file to put all of the folder's files into
  std::vector<std::string> only;
  bool list = false;
  bool figures = false;  ///< judge the folder's files
  int workers = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
};

constexpr std::string_view kSuffix = ".wav";

std::string baseName(std::string name) {
  return name.ends_with(kSuffix) ? name.substr(0, name.size() - kSuffix.size()) : name;
}

/// The recipes of `names`, all of them when none is named.
std::vector<const Recipe*> chosen(const std::vector<std::string>& names) {
  std::vector<const Recipe*> recipes;
  if (names.empty()) {
    for (const Recipe& recipe : allRecipes()) recipes.push_back(&recipe);
  }
  for (const std::string& name : names) {
    const Recipe* recipe = findRecipe(baseName(name));
    if (recipe == nullptr) throw std::runtime_error("no sound is called " + name);
    if (std::find(recipes.begin(), recipes.end(), recipe) == recipes.end()) recipes.push_back(recipe);
  }
  return recipes;
}

int list(const std::vector<const Recipe*>& recipes) {
  for (const Recipe* recipe : recipes) {
    const Layout layout = layoutOf(recipe->name);
    std::printf("%-8s %6d bytes  %5.2f s  %s\n", std::string(recipe->name).c_str(), layout.entry.bytes,
                layout.seconds(), std::string(recipe->what).c_str());
  }
  return 0;
}

int check(const std::vector<const Recipe*>& recipes, const std::string& folder) {
  if (!std::filesystem::is_directory(folder)) throw std::runtime_error("there is no folder " + folder);
  int wrong = 0;
  for (const Recipe* recipe : recipes) {
    const std::string file = soundFileName(recipe->name);
    const std::vector<std::string> faults = faultsOfFile(layoutOf(recipe->name), folder + "/" + file);
    for (const std::string& fault : faults) std::cerr << file << ": " << fault << '\n';
    wrong += !faults.empty();
  }
  std::cout << recipes.size() - static_cast<std::size_t>(wrong) << " of " << recipes.size()
            << " sounds are right in " << folder << '\n';
  return wrong == 0 ? 0 : 1;
}

int make(const std::vector<const Recipe*>& recipes, const Orders& orders) {
  std::filesystem::create_directories(orders.folder);
  const int total = static_cast<int>(recipes.size());
  Progress progress(stdout, "Making sounds", total);
  const std::vector<Failure> failures =
      makeSounds(recipes, orders.folder, orders.workers,
                 [&progress](std::string_view, int count) { progress.show(count); });
  for (const Failure& failure : failures)
    std::cerr << soundFileName(failure.name) << ": " << failure.reason << '\n';
  if (!failures.empty()) return 1;
  std::cout << total << (total == 1 ? " sound" : " sounds") << " in " << orders.folder << '\n';
  return 0;
}

int writePage(const std::vector<const Recipe*>& recipes, const Orders& orders) {
  vorn::report::writeReport(recipes, orders.folder, orders.report);
  std::cout << recipes.size() << (recipes.size() == 1 ? " sound" : " sounds") << " in " << orders.report
            << '\n';
  return 0;
}

int judge(const std::vector<const Recipe*>& recipes, const std::string& folder) {
  std::cout << vorn::report::figuresAsText(recipes, folder);
  return 0;
}

int pack(const std::vector<const Recipe*>& recipes, const Orders& orders) {
  if (check(recipes, orders.folder) != 0) return 1;
  writePack(orders.folder, orders.pack);
  return 0;
}

int follow(const Orders& orders) {
  const std::vector<const Recipe*> recipes = chosen(orders.only);
  if (orders.list) return list(recipes);
  if (!orders.folderToCheck.empty()) return check(recipes, orders.folderToCheck);
  if (!orders.pack.empty()) return pack(recipes, orders);
  if (orders.figures) return judge(recipes, orders.folder);
  if (!orders.report.empty()) return writePage(recipes, orders);
  return make(recipes, orders);
}

}  // namespace
}  // namespace vorn::sounds

int main(int argc, char** argv) {
  CLI::App app("Makes the sound files of the game, checks those of a folder or reports on them.",
               "vorn1-sounds");
  vorn::sounds::Orders orders;
  auto* folder = app.add_option(
      "DIR", orders.folder,
      "Folder to fill, made where it is missing; with --report and --figures, the one to take them from");
  auto* toCheck = app.add_option("--check", orders.folderToCheck, "Only check the files of this folder");
  auto* toList = app.add_flag("--list", orders.list, "Only list the sounds");
  auto* toReport = app.add_option("--report", orders.report,
                                  "Only write a page of pictures about the files of DIR, an HTML file");
  auto* toJudge =
      app.add_flag("--figures", orders.figures, "Only say the figures of the files of DIR, a line each");
  auto* toPack = app.add_option("--pack", orders.pack,
                                "Only put the files of DIR into one, as the game in a browser loads them");
  app.add_option("--only", orders.only, "Only this sound, such as vorn1t5 (may be repeated)")
      ->allow_extra_args(false);
  app.add_option("--jobs,-j", orders.workers, "Sounds to make at a time")->check(CLI::Range(1, 64));
  toCheck->excludes(toList)->excludes(folder);
  folder->excludes(toList);
  toReport->needs(folder);
  toJudge->needs(folder)->excludes(toReport);
  toPack->needs(folder)->excludes(toReport)->excludes(toJudge);
  app.callback([&] {
    if (orders.folder.empty() && orders.folderToCheck.empty() && !orders.list) {
      throw CLI::RequiredError("DIR, --check or --list");
    }
  });
  CLI11_PARSE(app, argc, argv);
  try {
    return vorn::sounds::follow(orders);
  } catch (const std::exception& error) {
    std::cerr << "vorn1-sounds: " << error.what() << '\n';
    return 1;
  }
}
