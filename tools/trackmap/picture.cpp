#include "picture.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "road.h"

namespace vorn::trackmap {
namespace {

/// All in pixels.
constexpr double kWidth = 1000;
constexpr double kMargin = 30;
constexpr double kLine = 150;     // height of the road's line
constexpr double kPerUnit = 14;   // of sharpness
constexpr double kHighest = 110;  // a bar's height is cut off here
constexpr double kLabels = 285;   // where the names of the cues begin
constexpr double kHeight = 570;
constexpr double kRoad = 6;

constexpr const char* kColours[] = {"#7a1f1f", "#c4552d", "#f0b27a"};  // at 60, 120 and 180 mph

std::string rect(double x, double y, double width, double height, const std::string& fill) {
  return "<rect x=\"" + number(x, 1) + "\" y=\"" + number(y, 1) + "\" width=\"" + number(width, 1) +
         "\" height=\"" + number(height, 1) + "\" fill=\"" + fill + "\"/>\n";
}

std::string text(double x, double y, const std::string& words, const std::string& more = "") {
  return "<text x=\"" + number(x, 1) + "\" y=\"" + number(y, 1) + "\"" + more + ">" + words + "</text>\n";
}

std::string dashedLine(double y, const std::string& colour) {
  return "<line x1=\"" + number(kMargin, 1) + "\" x2=\"" + number(kWidth - kMargin, 1) + "\" y1=\"" +
         number(y, 1) + "\" y2=\"" + number(y, 1) + "\" stroke=\"" + colour +
         "\" stroke-dasharray=\"6 4\"/>\n";
}

/// The sharpest first, so that the lower bars stand in front of it.
std::string bars(const Segment& segment, double x, double width) {
  std::string drawn;
  const bool isLeft = segment.push.turn == Turn::kLeft;
  for (std::size_t i = kSpeeds.size(); i-- > 0;) {
    const double height = std::min(sharpness(segment, kSpeeds[i]) * kPerUnit, kHighest);
    drawn += rect(x, isLeft ? kLine - height : kLine, width, height, kColours[i]);
  }
  return drawn;
}

std::string segmentPicture(const Segment& segment, int index, double x, double width) {
  std::string drawn;
  if (segment.push.turn != Turn::kNone) drawn += bars(segment, x, width);
  const double middle = x + width / 2;
  drawn += text(middle, kLine + kHighest + 18, std::to_string(index), " text-anchor=\"middle\"");
  drawn += "<line x1=\"" + number(x, 1) + "\" x2=\"" + number(x, 1) + "\" y1=\"" + number(kLine - 12, 1) +
           "\" y2=\"" + number(kLine + 12, 1) + "\" stroke=\"#333\"/>\n";
  if (segment.atEnd) {
    drawn += text(x + width, kLine - 16, "jump", " text-anchor=\"middle\" font-weight=\"bold\"");
  }
  drawn += text(middle - 4, kLabels, number(segment.length) + " " + cueOf(segment),
                " transform=\"rotate(90 " + number(middle - 4, 1) + " " + number(kLabels, 1) + ")\"");
  return drawn;
}

std::string legend() {
  std::string drawn =
      text(kMargin, kHeight - 10, "Left turns above the line, right turns below. Bars: push at");
  double x = kMargin + 400;
  for (std::size_t i = 0; i < kSpeeds.size(); ++i, x += 95) {
    drawn += rect(x, kHeight - 20, 12, 12, kColours[i]);
    drawn += text(x + 18, kHeight - 10, number(kSpeeds[i]) + " mph");
  }
  return drawn + text(x + 10, kHeight - 10, "Dashed: full lock");
}

std::string row(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += " " + cell + " |";
  return line + "\n";
}

std::string pushes(const Segment& segment) {
  if (segment.push.turn == Turn::kNone) return "";
  std::string figures;
  for (const double speed : kSpeeds) {
    figures += (figures.empty() ? "" : " / ") + number(sharpness(segment, speed), 1);
  }
  return figures;
}

std::string lengthOf(const Segment& segment) {
  const std::string length = number(segment.length);
  return cueLength(segment) == segment.length ? length
                                              : length + " (cue over " + number(cueLength(segment)) + ")";
}

}  // namespace

std::string pictureOf(const Track& track) {
  const double scale = (kWidth - 2 * kMargin) / lapLength(track);
  std::string drawn = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + number(kWidth) + " " +
                      number(kHeight) + "\" font-family=\"sans-serif\" font-size=\"13\">\n";
  drawn += "<title>" + std::string(track.name) + "</title>\n<desc>" + summaryOf(track) + "</desc>\n";
  drawn += rect(0, 0, kWidth, kHeight, "#ffffff");
  drawn += text(kMargin, 24, track.name, " font-size=\"18\" font-weight=\"bold\"");
  drawn +=
      dashedLine(kLine - kFullLock * kPerUnit, "#555") + dashedLine(kLine + kFullLock * kPerUnit, "#555");
  double x = kMargin;
  int index = 0;
  for (const Segment& segment : track.segments) {
    const double width = segment.length * scale;
    drawn += segmentPicture(segment, ++index, x, width);
    x += width;
  }
  drawn += rect(kMargin, kLine - kRoad / 2, kWidth - 2 * kMargin, kRoad, "#333");
  return drawn + legend() + "</svg>\n";
}

std::string tableOf(const Track& track) {
  std::string table = row({"#", "Segment", "Length", "Cue", "Push at 60 / 120 / 180 mph", "Held up to"});
  table += "|---|---|---|---|---|---|\n";
  int index = 0;
  for (const Segment& segment : track.segments) {
    const double held = heldUpTo(segment);
    table += row({std::to_string(++index), kindOf(segment), lengthOf(segment),
                  cueOf(segment) + " (" + std::to_string(segment.cue) + ")", pushes(segment),
                  held > 0 ? number(held) + " mph" : ""});
  }
  return table;
}

std::string summaryOf(const Track& track) {
  return "One lap is " + number(lapLength(track)) + " units in " + std::to_string(track.segments.size()) +
         " segments; steering costs " + number(track.steerDrag, 2) + " times its loss of speed" +
         (track.rule ? "; fourth gear has no cap." : ".");
}

}  // namespace vorn::trackmap
