// vorn1-testdrive: drives a lap of each track with the sounds of a folder and listens.

#include <CLI/CLI.hpp>
#include <iostream>
#include <vector>

#include "testdrive/test_drive.h"

int main(int argc, char** argv) {
  CLI::App app("Drives a lap of each track with the sounds of a folder, and says what is heard of them.",
               "vorn1-testdrive");
  std::string sounds, laps;
  app.add_option("SOUNDS", sounds, "Folder with the game's sounds")->required();
  app.add_option("LAPS", laps, "Folder for what is heard, a WAV file a lap; made where it is missing")
      ->required();
  std::vector<int> engines{1};
  app.add_option("--engine", engines, "Engine sound to drive with [1] (may be repeated)")
      ->check(CLI::Range(1, 6))
      ->allow_extra_args(false);
  CLI11_PARSE(app, argc, argv);
  try {
    return vorn::driveAllTracks(sounds, laps, engines) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "vorn1-testdrive: " << error.what() << '\n';
    return 1;
  }
}
