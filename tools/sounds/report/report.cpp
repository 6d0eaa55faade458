#include "report.h"

#include <fmt/format.h>
#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>

#include "finish.h"
#include "hearing/fingerprint.h"
#include "hearing/spectrogram.h"
#include "judge.h"
#include "picture.h"
#include "recipes/track_cues.h"

namespace vorn::report {
namespace {

using sounds::Play;
using sounds::Recipe;

constexpr double kSeamSeconds = 0.01;

double decibels(double gain) {
  return 20 * std::log10(gain + 1e-10);
}

std::string loudnessOf(const Sound& sound) {
  const double lufs = measured(sound.channels, *sound.recipe, sound.rate);
  if (sound.recipe->level.meter == sounds::Meter::kAsRendered) return fmt::format("{:.1f} LUFS", lufs);
  return fmt::format("{:.1f} LUFS (wanted {:.1f})", lufs, sound.recipe->level.lufs);
}

/// The jump from a loop's last sample to its first, as a share of the largest inside.
double jumpAtSeam(const synth::Signal& loop) {
  double largest = 1e-9;
  for (std::size_t i = 1; i < loop.size(); ++i) largest = std::max(largest, std::abs(loop[i] - loop[i - 1]));
  return std::abs(loop.front() - loop.back()) / largest;
}

std::string seamOf(const Sound& sound) {
  if (sound.recipe->play != Play::kLoop) return "<td>no loop</td>";
  return fmt::format("<td>{}<br>jump {:.0f} % of the largest inside</td>",
                     seam(sound.shown(), static_cast<std::size_t>(kSeamSeconds * sound.rate)),
                     100 * jumpAtSeam(sound.shown()));
}

/// The figures, and where they have one the place in the company they are heard in.
std::string figuresOf(const Judgement& judgement) {
  const hearing::Figures& figures = judgement.figures;
  std::string cell =
      bars({{fmt::format("roughness {:.2f}", figures.roughness), figures.roughness, 1},
            {fmt::format("strongest line {:.0f} %", 100 * figures.strongestLine), figures.strongestLine, 1},
            {fmt::format("envelope {:.2f}", figures.envelopeVariation), figures.envelopeVariation, 2},
            {fmt::format("side {:.0f} %", 100 * figures.sideEnergy), figures.sideEnergy, 1},
            {fmt::format("sharpness {:.2f}", figures.sharpness), figures.sharpness, 3}});
  if (judgement.clear) cell += fmt::format("<br>clear by {:.1f} dB", *judgement.clear);
  if (judgement.neighbour) {
    cell += fmt::format("<br>{0:.2f} from <a href=\"#vorn1t{1}\">vorn1t{1}</a> on {2}",
                        judgement.neighbour->distance, judgement.neighbour->cue, judgement.neighbour->track);
  }
  return cell;
}

std::string rowOf(const Sound& sound, const Judgement& judgement) {
  const std::string name(sound.recipe->name);
  const auto ends = sound.recipe->play == Play::kLoop ? synth::Ends::kMeeting : synth::Ends::kOpen;
  double peak = 0;
  for (const synth::Signal& channel : sound.channels) peak = std::max(peak, synth::peakOf(channel));
  return fmt::format(
      "<tr id=\"{0}\"><th>{0}<p>{1}</p><p>{2:.2f} s, {3} Hz<br>{4}<br>peak {5:.1f} dB</p></th>"
      "<td>{6}</td><td>{7}</td><td>{8}</td>{9}</tr>\n",
      name, sound.recipe->what, static_cast<double>(sound.shown().size()) / sound.rate, sound.rate,
      loudnessOf(sound), decibels(peak), waveform(sound.shown()),
      imageOf(spectrogramImage(sound.shown(), sound.rate, ends), "spectrogram of " + name),
      figuresOf(judgement), seamOf(sound));
}

std::string cueName(int cue) {
  return "vorn1t" + std::to_string(cue);
}

/// A square a pair: the redder, the more alike.
std::string cellOf(int one, int other, const hearing::Distances& distances) {
  if (one == other) return "<td></td>";
  const double distance = distances(one, other);
  const int share = static_cast<int>(100 * std::clamp((distance - 0.35) / 0.65, 0.0, 1.0));
  return fmt::format("<td style=\"background:color-mix(in srgb,#fff {}%,#d33)\">{:.2f}</td>", share,
                     distance);
}

std::string distancesOf(const sounds::TrackCues& track, const hearing::Distances& distances) {
  const auto cues = track.cues;
  std::string table = fmt::format("<h3>{}</h3><table class=\"distances\"><tr><th></th>", track.track);
  for (const int cue : cues) table += "<th>" + std::to_string(cue) + "</th>";
  table += "</tr>";
  for (const int one : cues) {
    table += fmt::format("<tr><th><a href=\"#{0}\">{0}</a> {1}</th>", cueName(one),
                         sounds::findRecipe(cueName(one))->what);
    for (const int other : cues) table += cellOf(one, other, distances);
    table += "</tr>";
  }
  return table + "</table>\n";
}

std::string tracksChapter(const std::map<int, hearing::Fingerprint>& prints) {
  std::string chapter =
      "<h2>Distances between the cues of each track</h2>"
      "<p>In shares of the median of all pairs; the redder, the more alike. Cues in the order heard.</p>";
  const hearing::Distances distances(prints);
  for (const sounds::TrackCues& track : sounds::cuesOfTracks()) chapter += distancesOf(track, distances);
  return chapter;
}

bool areAllCuesIn(const std::map<int, hearing::Fingerprint>& prints) {
  return std::ranges::all_of(sounds::cuesOfTracks(), [&](const sounds::TrackCues& track) {
    return std::ranges::all_of(track.cues, [&](int cue) { return prints.contains(cue); });
  });
}

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>The sounds of the game</title><style>
body{font:13px sans-serif;margin:1em} table{border-collapse:collapse} th{font-weight:normal;text-align:left}
td,th{padding:3px 6px;vertical-align:top;border-bottom:1px solid #ddd} p{margin:2px 0}
path{stroke:#246;fill:none} polyline{stroke:#246;fill:none} .seam path{stroke:#d33} svg{background:#f4f4f4} rect{fill:#bcd} text{font-size:11px}
.distances td{text-align:center}
</style></head><body><h1>The sounds of the game</h1>
)";

}  // namespace

void writeReport(std::span<const Recipe* const> recipes, const std::string& folder, const std::string& path) {
  std::vector<Sound> all;
  for (const Recipe* recipe : recipes) all.push_back(readSound(*recipe, folder));
  const auto judgements = judged(all);
  std::string rows;
  std::map<int, hearing::Fingerprint> prints;
  for (const Sound& sound : all) {
    const std::string_view name = sound.recipe->name;
    rows += rowOf(sound, judgements.at(name));
    if (name.starts_with("vorn1t")) {
      prints[std::stoi(std::string(name.substr(6)))] = hearing::fingerprintOf(sound.shown(), sound.rate);
    }
  }
  // The two voices of the pit are no cues.
  prints.erase(72);
  prints.erase(73);
  std::ofstream page(path, std::ios::binary);
  page << kHead
       << "<table><tr><th>sound</th><th>course</th><th>spectrogram, to half the rate</th><th>figures</th>"
       << "<th>seam, 10 ms each side</th></tr>\n"
       << rows << "</table>\n";
  if (areAllCuesIn(prints)) page << tracksChapter(prints);
  page << "</body></html>\n";
  page.close();
  if (!page) throw std::runtime_error("cannot write " + path);
}

}  // namespace vorn::report
