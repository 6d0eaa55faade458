#include "codriver/preview_words.h"

#include <algorithm>
#include <cmath>

#include "demo/wheel_driver.h"
#include "race/race_clock.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kMiddle = 50;
constexpr double kReferenceSpeed = 120;  // mph
constexpr double kLongStraight = 20000;  // units
constexpr double kShortStraight = 8000;
constexpr double kLongTurn = 12000;
constexpr double kShortTurn = 3500;

struct Grade {
  double below;  ///< push at the reference speed
  const char* word;
};
constexpr Grade kGrades[] = {{1.5, "easy"}, {2.8, "medium"}, {4.5, "sharp"}, {7, "tight"}};
constexpr const char* kSharpest = "very tight";

constexpr const char* kGears[] = {"first", "second", "third", "fourth"};

std::string lengthWord(double length, double shortest, double longest) {
  if (length <= shortest) return "short ";
  return length >= longest ? "long " : "";
}

std::string gradeWord(double sharpness) {
  for (const Grade& grade : kGrades) {
    if (sharpness < grade.below) return grade.word;
  }
  return kSharpest;
}

std::string secondsText(double seconds) {
  return countedUnit(std::max(roundEven(seconds), 1.0), "second");
}

std::string straightWords(const Segment& segment, const SegmentPace& pace) {
  std::string text =
      lengthWord(segment.length, kShortStraight, kLongStraight) + "straight, " + secondsText(pace.seconds);
  if (segment.atEnd == nullptr) return text;
  return text + ", to the ramp: in the middle of the road, from 99 to 130 miles an hour";
}

std::string turnWords(const Segment& segment, const SegmentPace& pace) {
  return lengthWord(segment.length, kShortTurn, kLongTurn) +
         (segment.push.turn == Turn::kLeft ? "left, " : "right, ") + gradeWord(sharpnessOf(segment)) + ", " +
         kGears[pace.gear - 1] + " gear";
}

}  // namespace

std::vector<SegmentPace> paceOf(const Track& track, double topSpeed) {
  const RoadBook road(track, kWheelSkill);
  const std::size_t segments = track.segments.size();
  std::vector<SegmentPace> paces;
  Sight sight{.segment = 0, .lapPosition = 0, .lateralPosition = kMiddle, .speed = 0, .gear = 1};
  // The first lap brings the car up to the speed of the second.
  for (std::size_t driven = 0; driven < 2 * segments; ++driven) {
    SegmentPace pace{.seconds = 0, .slowest = topSpeed, .gear = 1};
    double ticks = 0;
    for (const std::size_t here = sight.segment; sight.segment == here; ++ticks) {
      sight.speed = std::min(road.speedKept(sight), topSpeed);
      pace.slowest = std::min(pace.slowest, sight.speed);
      Sight next = sight;
      next.lapPosition += sight.speed;
      sight = road.steered(next, 0);
    }
    pace.seconds = ticks / kTicksPerSecond;
    pace.gear = gearFor(pace.slowest, static_cast<int>(std::size(kGears)));
    if (driven >= segments) paces.push_back(pace);
  }
  return paces;
}

double sharpnessOf(const Segment& segment) {
  RaceState car;
  car.speed = kReferenceSpeed;
  car.lateralPosition = kMiddle;
  pushCar(car, segment.push);
  return std::fabs(car.lateralPosition - kMiddle);
}

std::string segmentWords(const Segment& segment, const SegmentPace& pace) {
  const bool isStraight = segment.push.turn == Turn::kNone;
  return " " + (isStraight ? straightWords(segment, pace) : turnWords(segment, pace)) + ". ";
}

}  // namespace vorn
