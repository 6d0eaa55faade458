/// The sound server of with_desktop.sh: what happens to it, and what it plays.
#pragma once

#include <gtest/gtest.h>
#include <stdio.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace vorn {

/// See sound_server.sh.
inline void soundServer(const std::string& happening) {
  ASSERT_EQ(std::system((VORN_SOUND_SERVER " " + happening).c_str()), 0) << happening;
}

struct Stereo {
  std::vector<double> left, right;  ///< -1 .. 1
};

/// What `source`, a sink's monitor, hears in the next `seconds`; less where there is none. Calls `begun` at
/// the first sample.
inline Stereo listen(
    const std::string& source, double seconds, const std::function<void()>& begun = [] {}) {
  const std::string command = "timeout 20 parec -d " + source +
                              " --format=s16le --rate=48000 --channels=2 --latency-msec=5 --raw "
                              "2>/dev/null | head -c " +
                              std::to_string(4 * static_cast<int>(48000 * seconds));
  FILE* recorder = popen(command.c_str(), "r");
  Stereo heard;
  std::int16_t frame[2];
  while (fread(frame, sizeof frame, 1, recorder) == 1) {
    if (heard.left.empty()) begun();
    heard.left.push_back(frame[0] / 32768.0);
    heard.right.push_back(frame[1] / 32768.0);
  }
  pclose(recorder);
  return heard;
}

inline double peak(const std::vector<double>& samples) {
  double loudest = 0;
  for (const double sample : samples) loudest = std::max(loudest, std::abs(sample));
  return loudest;
}

}  // namespace vorn
