/// How a headless session is set up; the defaults are those of the command line.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace vorn {

enum class HeadlessSpeech {
  kVirtual,  ///< a silent voice that takes its time
  kEspeak,   ///< the embedded synthesiser, heard in the render
};

struct HeadlessOptions {
  std::filesystem::path folder = ".";  ///< working folder
  bool controller = false;             ///< whether one game controller is attached
  int voices = 3;                      ///< how many voices are installed
  HeadlessSpeech speech = HeadlessSpeech::kVirtual;
  std::uint64_t seed = 1;  ///< of every random number
  std::chrono::year_month_day date{std::chrono::year(2026), std::chrono::March, std::chrono::day(7)};
  std::chrono::seconds timeOfDay = std::chrono::hours(12);  ///< since midnight
  std::int32_t tickCount = 1000;                            ///< of the millisecond counter at the start
  std::int64_t limitMs = 3'600'000;  ///< most virtual milliseconds one waiting statement may take
};

}  // namespace vorn
