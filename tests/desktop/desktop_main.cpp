// The main function of the tests that need a desktop: they run on one of their own.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// The same command on a desktop whose sink is recorded where `isRecorded`; the recording is named after
/// the tests that run.
std::vector<std::string> onADesktop(const std::vector<std::string>& command, const std::string& filter) {
  std::vector<std::string> words{VORN_WITH_DESKTOP};
  if constexpr (VORN_IS_RECORDED) {
    std::string name = filter == "*" ? "all" : filter;
    std::replace(name.begin(), name.end(), '/', '.');
    words.insert(words.end(), {"--record", VORN_RECORDINGS "/" + name + ".wav"});
  }
  words.insert(words.end(), command.begin(), command.end());
  return words;
}

void replaceProcess(const std::vector<std::string>& command) {
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  execv(words[0], words.data());
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> command(argv, argv + argc);
  testing::InitGoogleTest(&argc, argv);
  if (!GTEST_FLAG_GET(list_tests) && std::getenv("VORN_DESKTOP") == nullptr) {
    replaceProcess(onADesktop(command, GTEST_FLAG_GET(filter)));
    std::cerr << "no desktop: " VORN_WITH_DESKTOP " cannot be run\n";
    return 1;
  }
  return RUN_ALL_TESTS();
}
