#include "tracks/catalogue.h"

#include "state/track_names.h"
#include "tracks/special_rules.h"

namespace vorn {
namespace {

constexpr Push kStraight{};

constexpr Push left(double fixed, double divisor) {
  return {Turn::kLeft, fixed, divisor};
}

constexpr Push right(double fixed, double divisor) {
  return {Turn::kRight, fixed, divisor};
}

constexpr Push bankedLeft() {
  return {.turn = Turn::kLeft, .rule = driveBankedTurn};
}

// A row a segment. Lengths in units of lapPosition, pans negative to the left,
// pushes as fixed part and speed divisor. docs/tracks.md draws these tables.

// clang-format off

constexpr Segment kMapleSegments[] = {
    // length, cue, scale, pan, push (, length of the cue, what happens at the end)
    {30000,  1, 30, -3000, kStraight},
    { 9000,  2, 15, -2000, left(0.48, 125)},
    { 9000,  3, 15, -2000, left(0.48, 125)},
    {30000,  4, 30, -3000, kStraight},
    { 9000,  5, 15, -2000, left(1.0, 84)},
    { 4800, 10, 20, -3000, kStraight},
    { 9000,  6, 15, -2000, left(1.3, 69)},
};

constexpr Segment kPainsvilleSegments[] = {
    {33000, 1, 30, -3000, kStraight},
    { 9000, 2, 20, -2000, left(0.8, 84)},
    { 6000, 3, 15, -2000, left(2.0, 42)},
    {31250, 4, 30, -3000, kStraight},
    { 6000, 5, 15, -2000, left(2.0, 42)},
    { 9000, 6, 20, -2000, left(0.8, 84)},
};

constexpr Segment kChagrinSegments[] = {
    {24000,  7, 30,  3000, kStraight},
    {13000, 16, 10,  3000, right(0.8, 84)},
    { 6500, 17, 10, -3000, left(0.8, 84)},
    {13000, 18, 10,  3000, right(0.8, 84)},
    {13000, 19, 10, -3000, left(0.8, 84)},
    {13000, 20, 10,  3000, right(0.8, 84)},
    { 6500, 21, 10, -3000, left(0.8, 84)},
    {13000, 22, 10,  3000, right(0.8, 84)},
};

constexpr Segment kOhioSegments[] = {
    {25000,  1, 30,  3000, kStraight},
    { 8000,  2, 15,  2000, right(0.8, 84)},
    { 6800,  7, 15, -3000, kStraight},
    { 6000,  8, 15, -2000, left(2.0, 42)},
    { 4200,  4, 20,  3000, kStraight},
    {15000,  5, 25,  2000, right(0.7, 84)},
    {26000, 10, 25,  2000, kStraight},
    { 8000, 11, 10,  2000, right(1.0, 57)},
    { 7200,  9, 30, -3000, kStraight},
    { 3000, 12, 20, -2000, left(2.0, 42)},
    { 3000, 13, 20,  2000, right(2.0, 42)},
    { 9000, 14, 30,  4000, kStraight},
    { 8000, 15, 20,  2000, right(0.8, 84)},
};

constexpr Segment kChardonSegments[] = {
    {30000, 23, 30,  3000, kStraight},
    { 8500, 24, 10,  2000, right(1.0, 113)},
    {16500, 25, 20,  3000, kStraight},
    { 8500, 26, 10,  2000, right(1.0, 113)},
    {11000, 27, 10,  2000, kStraight},
    { 8500, 28, 10,  2000, right(1.0, 113)},
    {10000, 29, 15, -2000, kStraight},
    { 8500, 30, 10, -2000, left(0.5, 84)},
    {10000,  4, 20, -2000, kStraight},
    { 8500,  5, 10, -2000, left(0.5, 84)},
    {10000,  1, 15,  2000, kStraight},
    { 8500,  2, 10,  2000, right(0.5, 84)},
    {11000, 31, 15,  2000, kStraight},
    { 8500,  3, 10,  2000, right(0.5, 84)},
    {16500, 10, 20,  2000, kStraight},
    { 8500, 32, 10,  2000, right(0.5, 84)},
};

constexpr Segment kErieSegments[] = {
    {33000,  4, 30, -3000, kStraight},
    { 9000,  5, 15, -2000, left(2.0, 35)},
    { 9000,  6, 15, -2000, left(1.0, 84)},
    {12000, 33, 20,  2000, kStraight},
    { 9000, 35, 15,  2000, right(1.0, 42)},
    {20000, 39, 20, -3000, kStraight},
    { 9000, 37, 15, -2000, left(2.0, 35)},
    { 9000, 38, 15, -2000, left(1.0, 84)},
    {20000, 36, 20,  3000, kStraight},
    { 9000, 34, 15,  2000, right(1.0, 42)},
    {12000,  1, 20, -3000, kStraight},
    { 9000,  2, 15, -2000, left(2.0, 35)},
    { 9000,  3, 15, -2000, left(1.0, 84)},
};

constexpr Segment kMentorSegments[] = {
    {17000, 40, 25,  2000, kStraight},
    { 5000, 41, 15,  2000, right(0.1, 17)},
    {14000, 42, 25, -3000, kStraight},
    { 5000, 43, 15, -2000, left(0.1, 17)},
    {14000, 44, 25,  2000, kStraight},
    { 5000, 45, 15,  2000, right(0.1, 17)},
    {17000, 46, 25,  2000, kStraight},
    { 5000, 47, 15,  2000, right(0.1, 17)},
    { 7200, 48, 25, -2000, kStraight},
    { 3000, 51, 15, -2000, left(2.0, 42)},
    { 3000, 52, 15,  2000, right(2.0, 42)},
    { 9000, 49, 25,  2000, kStraight},
    { 5000, 50, 15,  2000, right(0.1, 17)},
};

/// The first cue rises over more than its segment and never becomes quite loud.
constexpr Segment kKirtlandSegments[] = {
    {10000, 53, 25, -2000, kStraight, 12000},
    { 6000, 54, 18, -2000, left(0.2, 350)},
    { 6000, 55, 18, -2000, left(0.2, 100)},
    {10000, 56, 30, -2000, kStraight},
    { 6000, 57, 18, -2000, left(0.2, 350)},
    { 6000, 58, 18, -2000, left(0.2, 100)},
};

/// The third cue stands on the right although its turn is a left one.
constexpr Segment kChesterlandSegments[] = {
    { 5000, 57, 30, -3000, kStraight},
    { 3000, 65, 20, -2000, left(1.0, 5)},
    { 7000, 66, 20,  2000, left(1.0, 8)},
    {10000, 36, 20,     0, kStraight, 0, jumpSwimmingHole},
    { 5000, 67, 20,  3000, kStraight},
    { 6000, 68, 20,  2000, right(2.0, 42)},
    {10000, 69, 30,  3000, kStraight},
    { 6000, 70, 15,  2000, right(2.0, 350)},
    { 6000, 71, 20,  2000, right(0.8, 350)},
};

constexpr Segment kGenevaSegments[] = {
    {20000, 59, 30, -3000, kStraight},
    { 9000, 60, 20, -2000, bankedLeft()},
    { 9000, 61, 20, -2000, bankedLeft()},
    {20000, 62, 30, -3000, kStraight},
    { 9000, 63, 20, -2000, bankedLeft()},
    { 9000, 64, 20, -2000, bankedLeft()},
};

// clang-format on

}  // namespace

constexpr Track kMaple{kTrackNames[0].spoken, " Welcome to the Maple Leaf Try Oval Track ", 1.84,
                       kMapleSegments};
constexpr Track kPainsville{kTrackNames[1].spoken, " Welcome to the Painsville oval track ", 1.84,
                            kPainsvilleSegments};
constexpr Track kChagrin{kTrackNames[2].spoken, " Welcome to the Chagrin River Speedway ", 1.84,
                         kChagrinSegments};
constexpr Track kOhio{kTrackNames[3].spoken, " Welcome to the Ohio Motor Speedway ", 1.84, kOhioSegments};
constexpr Track kChardon{kTrackNames[4].spoken, " Welcome to the Shardon Hill Top Race way ", 1,
                         kChardonSegments, unlimitTopGear};
constexpr Track kErie{kTrackNames[5].spoken, " Welcome to the Erie Lake Front Motor Speedway ", 1.84,
                      kErieSegments};
constexpr Track kMentor{kTrackNames[6].spoken, " Welcome to the Mentor road race track ", 1.84,
                        kMentorSegments};
constexpr Track kKirtland{kTrackNames[7].spoken, " Welcome to the Kirtland dirt mile oval track ", 0.5,
                          kKirtlandSegments};
constexpr Track kChesterland{kTrackNames[8].spoken, " Welcome to the Chesterland dirt road race track ", 1.42,
                             kChesterlandSegments};
constexpr Track kGeneva{kTrackNames[9].spoken, " Welcome to the Geneva oval track ", 1.44, kGenevaSegments};

std::span<const Track* const> allTracks() {
  static constexpr const Track* kAll[] = {&kMaple, &kPainsville, &kChagrin,  &kOhio,        &kChardon,
                                          &kErie,  &kMentor,     &kKirtland, &kChesterland, &kGeneva};
  return kAll;
}

}  // namespace vorn
