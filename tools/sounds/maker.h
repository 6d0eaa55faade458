/// Fills a folder with sound files, on all processors.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "recipe.h"

namespace vorn::sounds {

struct Failure {
  std::string name;
  std::string reason;
};

/// Makes every file of `recipes` in `folder` (which is there already), each in
/// a process of its own, `workers` at a time, so that what comes out does not
/// depend on how many run or in which order. A file is written under another
/// name, checked, and then renamed. Calls `made(name, count)` after each one.
/// Waits for all; after a first failure starts no more. Returns the failures.
/// No thread may run beside it: it forks.
std::vector<Failure> makeSounds(std::span<const Recipe* const> recipes, const std::string& folder,
                                int workers, const std::function<void(std::string_view, int)>& made);

}  // namespace vorn::sounds
