#include "road.h"

#include <cctype>
#include <cmath>
#include <iomanip>
#include <sstream>

#include "tracks/cue_names.h"

namespace vorn::trackmap {
namespace {

constexpr double kMiddle = 50;
constexpr double kFastest = 232;  // mph; nothing goes faster

}  // namespace

double sharpness(const Segment& segment, double speed) {
  RaceState car;
  car.speed = speed;
  car.lateralPosition = kMiddle;
  pushCar(car, segment.push);
  return std::fabs(car.lateralPosition - kMiddle);
}

double heldUpTo(const Segment& segment) {
  if (segment.push.turn == Turn::kNone) return 0;
  double speed = 1;
  while (speed < kFastest && sharpness(segment, speed + 1) <= kFullLock) ++speed;
  return speed < kFastest ? speed : 0;
}

std::string number(double value, int decimals) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

std::string kindOf(const Segment& segment) {
  if (segment.push.turn == Turn::kNone) return segment.atEnd ? "straight, ends at the jump" : "straight";
  const std::string turn = segment.push.turn == Turn::kLeft ? "left turn" : "right turn";
  return segment.push.rule ? "banked " + turn : turn;
}

std::string cueOf(const Segment& segment) {
  const char* side = segment.pan < 0 ? "left" : segment.pan > 0 ? "right" : "ahead";
  return std::string(cueName(segment.cue)) + ", " + side;
}

std::string fileWord(const Track& track) {
  std::string word;
  for (const char* c = track.name; *c && *c != ' '; ++c) {
    word += static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
  }
  return word;
}

}  // namespace vorn::trackmap
