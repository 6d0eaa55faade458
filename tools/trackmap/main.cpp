// Draws the tracks into docs/: after a change of a table, `trackmap docs`.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "documents.h"

int main(int argc, char** argv) {
  CLI::App app("Draws the tracks from their tables");
  std::string folder;
  bool isCheck = false;
  app.add_option("folder", folder, "the documents")->required()->check(CLI::ExistingDirectory);
  app.add_flag("--check", isCheck, "write nothing; fail where a document is out of date");
  CLI11_PARSE(app, argc, argv);
  try {
    if (!isCheck) {
      vorn::trackmap::renewFiles(folder);
      return 0;
    }
    const auto outdated = vorn::trackmap::outdatedFiles(folder);
    for (const std::string& name : outdated) {
      std::cerr << name << " is not what the tables say; run: trackmap " << folder << std::endl;
    }
    return outdated.empty() ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
  }
}
