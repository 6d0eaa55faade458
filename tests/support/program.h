/// Other programs under test, run to their end or talked to line by line.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// How a program ended and what it left on its standard streams.
struct Finished {
  int exitStatus;  ///< -1 where it did not exit by itself
  std::string output, errors;
};

/// Runs `arguments` (the program first) with `input` on its standard input, and waits for its end.
Finished runProgram(const std::vector<std::string>& arguments, const std::string& input = "");

/// A running program with pipes to its standard input and output; its errors go
/// where the test's go. Killed when this is destroyed before its end.
class LiveProgram {
 public:
  explicit LiveProgram(const std::vector<std::string>& arguments);
  ~LiveProgram();
  LiveProgram(const LiveProgram&) = delete;
  LiveProgram& operator=(const LiveProgram&) = delete;

  void writeLine(const std::string& line) const;
  void closeInput();
  /// The next line of its output; nothing at its end or when none comes within `withinMs`.
  std::optional<std::string> readLine(int withinMs = 60'000);
  /// Whether it stays silent for `forMs`.
  bool isSilent(int forMs);
  pid_t process() const { return process_; }
  int waitForEnd();  ///< exit status, -1 where it did not exit by itself

 private:
  bool fill(int withinMs);

  pid_t process_ = -1;
  int toProgram_ = -1;
  int fromProgram_ = -1;
  std::string pending_;  ///< read, but not asked for yet
};

}  // namespace vorn
