/// How far a long job is, for people: a bar on a terminal, now and then a plain
/// line elsewhere.
#pragma once

#include <cstdio>
#include <string>

namespace vorn::sounds {

class Progress {
 public:
  /// `label` is what is being done; the job has `total` steps, at least 1.
  Progress(std::FILE* out, std::string label, int total);

  void show(int done);
  /// Ends the bar's line, so that what follows starts on its own.
  void end();

 private:
  void drawBar(int done);

  std::FILE* out_;
  std::string label_;
  int total_;
  bool terminal_;
  int shownPart_ = -1;
};

}  // namespace vorn::sounds
