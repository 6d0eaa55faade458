/// How far a long job is, for people who listen: a short line at its beginning, then one every ten seconds.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace vorn::sounds {

class Progress {
 public:
  /// `label` is what is being done; the job has `total` steps.
  Progress(std::FILE* out, std::string label, int total);

  /// Says that `done` steps are done, unless something has been said within the last ten seconds.
  void show(int done);

 private:
  void say(int done);

  std::FILE* out_;
  std::string label_;
  int total_;
  std::chrono::steady_clock::time_point said_;
};

}  // namespace vorn::sounds
