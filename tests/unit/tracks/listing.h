/// The ten tracks written down a second time, number by number, apart from the
/// tables that the game drives on. Never copy one from the other.
#pragma once

#include <span>

#include "tracks/track.h"

namespace vorn::listing {

using enum Turn;

struct Row {
  double length;
  double cueLength;
  int cue;
  double scale;
  int pan;
  Turn turn;
  double fixed, divisor;      ///< 0 where no formula pushes
  double at45, at137, at225;  ///< lateral units a tick at so many mph, toward 100
};

// clang-format off
inline constexpr Row kMapleRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {30000, 30000,  1, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  2, 15, -2000, kLeft,  0.48, 125,  0.840000,   1.576000,   2.280000},
    { 9000,  9000,  3, 15, -2000, kLeft,  0.48, 125,  0.840000,   1.576000,   2.280000},
    {30000, 30000,  4, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  5, 15, -2000, kLeft,   1.0,  84,  1.535714,   2.630952,   3.678571},
    { 4800,  4800, 10, 20, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  6, 15, -2000, kLeft,   1.3,  69,  1.952174,   3.285507,   4.560870},
};

inline constexpr Row kPainsvilleRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {33000, 33000,  1, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  2, 20, -2000, kLeft,   0.8,  84,  1.335714,   2.430952,   3.478571},
    { 6000,  6000,  3, 15, -2000, kLeft,   2.0,  42,  3.071429,   5.261905,   7.357143},
    {31250, 31250,  4, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000,  5, 15, -2000, kLeft,   2.0,  42,  3.071429,   5.261905,   7.357143},
    { 9000,  9000,  6, 20, -2000, kLeft,   0.8,  84,  1.335714,   2.430952,   3.478571},
};

inline constexpr Row kChagrinRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {24000, 24000,  7, 30,  3000, kNone,     0,   0,         0,          0,          0},
    {13000, 13000, 16, 10,  3000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
    { 6500,  6500, 17, 10, -3000, kLeft,   0.8,  84,  1.335714,   2.430952,   3.478571},
    {13000, 13000, 18, 10,  3000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
    {13000, 13000, 19, 10, -3000, kLeft,   0.8,  84,  1.335714,   2.430952,   3.478571},
    {13000, 13000, 20, 10,  3000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
    { 6500,  6500, 21, 10, -3000, kLeft,   0.8,  84,  1.335714,   2.430952,   3.478571},
    {13000, 13000, 22, 10,  3000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
};

inline constexpr Row kOhioRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {25000, 25000,  1, 30,  3000, kNone,     0,   0,         0,          0,          0},
    { 8000,  8000,  2, 15,  2000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
    { 6800,  6800,  7, 15, -3000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000,  8, 15, -2000, kLeft,   2.0,  42,  3.071429,   5.261905,   7.357143},
    { 4200,  4200,  4, 20,  3000, kNone,     0,   0,         0,          0,          0},
    {15000, 15000,  5, 25,  2000, kRight,  0.7,  84, -1.235714,  -2.330952,  -3.378571},
    {26000, 26000, 10, 25,  2000, kNone,     0,   0,         0,          0,          0},
    { 8000,  8000, 11, 10,  2000, kRight,  1.0,  57, -1.789474,  -3.403509,  -4.947368},
    { 7200,  7200,  9, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 3000,  3000, 12, 20, -2000, kLeft,   2.0,  42,  3.071429,   5.261905,   7.357143},
    { 3000,  3000, 13, 20,  2000, kRight,  2.0,  42, -3.071429,  -5.261905,  -7.357143},
    { 9000,  9000, 14, 30,  4000, kNone,     0,   0,         0,          0,          0},
    { 8000,  8000, 15, 20,  2000, kRight,  0.8,  84, -1.335714,  -2.430952,  -3.478571},
};

inline constexpr Row kChardonRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {30000, 30000, 23, 30,  3000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500, 24, 10,  2000, kRight,  1.0, 113, -1.398230,  -2.212389,  -2.991150},
    {16500, 16500, 25, 20,  3000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500, 26, 10,  2000, kRight,  1.0, 113, -1.398230,  -2.212389,  -2.991150},
    {11000, 11000, 27, 10,  2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500, 28, 10,  2000, kRight,  1.0, 113, -1.398230,  -2.212389,  -2.991150},
    {10000, 10000, 29, 15, -2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500, 30, 10, -2000, kLeft,   0.5,  84,  1.035714,   2.130952,   3.178571},
    {10000, 10000,  4, 20, -2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500,  5, 10, -2000, kLeft,   0.5,  84,  1.035714,   2.130952,   3.178571},
    {10000, 10000,  1, 15,  2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500,  2, 10,  2000, kRight,  0.5,  84, -1.035714,  -2.130952,  -3.178571},
    {11000, 11000, 31, 15,  2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500,  3, 10,  2000, kRight,  0.5,  84, -1.035714,  -2.130952,  -3.178571},
    {16500, 16500, 10, 20,  2000, kNone,     0,   0,         0,          0,          0},
    { 8500,  8500, 32, 10,  2000, kRight,  0.5,  84, -1.035714,  -2.130952,  -3.178571},
};

inline constexpr Row kErieRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {33000, 33000,  4, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  5, 15, -2000, kLeft,   2.0,  35,  3.285714,   5.914286,   8.428571},
    { 9000,  9000,  6, 15, -2000, kLeft,   1.0,  84,  1.535714,   2.630952,   3.678571},
    {12000, 12000, 33, 20,  2000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000, 35, 15,  2000, kRight,  1.0,  42, -2.071429,  -4.261905,  -6.357143},
    {20000, 20000, 39, 20, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000, 37, 15, -2000, kLeft,   2.0,  35,  3.285714,   5.914286,   8.428571},
    { 9000,  9000, 38, 15, -2000, kLeft,   1.0,  84,  1.535714,   2.630952,   3.678571},
    {20000, 20000, 36, 20,  3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000, 34, 15,  2000, kRight,  1.0,  42, -2.071429,  -4.261905,  -6.357143},
    {12000, 12000,  1, 20, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000,  2, 15, -2000, kLeft,   2.0,  35,  3.285714,   5.914286,   8.428571},
    { 9000,  9000,  3, 15, -2000, kLeft,   1.0,  84,  1.535714,   2.630952,   3.678571},
};

inline constexpr Row kMentorRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {17000, 17000, 40, 25,  2000, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 41, 15,  2000, kRight,  0.1,  17, -2.747059,  -8.158824, -13.335294},
    {14000, 14000, 42, 25, -3000, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 43, 15, -2000, kLeft,   0.1,  17,  2.747059,   8.158824,  13.335294},
    {14000, 14000, 44, 25,  2000, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 45, 15,  2000, kRight,  0.1,  17, -2.747059,  -8.158824, -13.335294},
    {17000, 17000, 46, 25,  2000, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 47, 15,  2000, kRight,  0.1,  17, -2.747059,  -8.158824, -13.335294},
    { 7200,  7200, 48, 25, -2000, kNone,     0,   0,         0,          0,          0},
    { 3000,  3000, 51, 15, -2000, kLeft,   2.0,  42,  3.071429,   5.261905,   7.357143},
    { 3000,  3000, 52, 15,  2000, kRight,  2.0,  42, -3.071429,  -5.261905,  -7.357143},
    { 9000,  9000, 49, 25,  2000, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 50, 15,  2000, kRight,  0.1,  17, -2.747059,  -8.158824, -13.335294},
};

inline constexpr Row kKirtlandRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {10000, 12000, 53, 25, -2000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000, 54, 18, -2000, kLeft,   0.2, 350,  0.328571,   0.591429,   0.842857},
    { 6000,  6000, 55, 18, -2000, kLeft,   0.2, 100,  0.650000,   1.570000,   2.450000},
    {10000, 10000, 56, 30, -2000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000, 57, 18, -2000, kLeft,   0.2, 350,  0.328571,   0.591429,   0.842857},
    { 6000,  6000, 58, 18, -2000, kLeft,   0.2, 100,  0.650000,   1.570000,   2.450000},
};

inline constexpr Row kChesterlandRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    { 5000,  5000, 57, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 3000,  3000, 65, 20, -2000, kLeft,   1.0,   5, 10.000000,  28.400000,  46.000000},
    { 7000,  7000, 66, 20,  2000, kLeft,   1.0,   8,  6.625000,  18.125000,  29.125000},
    {10000, 10000, 36, 20,     0, kNone,     0,   0,         0,          0,          0},
    { 5000,  5000, 67, 20,  3000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000, 68, 20,  2000, kRight,  2.0,  42, -3.071429,  -5.261905,  -7.357143},
    {10000, 10000, 69, 30,  3000, kNone,     0,   0,         0,          0,          0},
    { 6000,  6000, 70, 15,  2000, kRight,  2.0, 350, -2.128571,  -2.391429,  -2.642857},
    { 6000,  6000, 71, 20,  2000, kRight,  0.8, 350, -0.928571,  -1.191429,  -1.442857},
};

inline constexpr Row kGenevaRows[] = {
    // length, cue length, cue, scale, pan, turn, fixed, divisor, push at 45, 137 and 225 mph
    {20000, 20000, 59, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000, 60, 20, -2000, kLeft,     0,   0,         0,          0,          0},
    { 9000,  9000, 61, 20, -2000, kLeft,     0,   0,         0,          0,          0},
    {20000, 20000, 62, 30, -3000, kNone,     0,   0,         0,          0,          0},
    { 9000,  9000, 63, 20, -2000, kLeft,     0,   0,         0,          0,          0},
    { 9000,  9000, 64, 20, -2000, kLeft,     0,   0,         0,          0,          0},
};

// clang-format on

struct Listed {
  const char* welcome;
  double steerDrag;
  std::size_t segments;
  double lapLength;
  double finish;  ///< where in the last segment the line lies
  std::span<const Row> rows;
};

inline constexpr Listed kTracks[] = {
    {" Welcome to the Maple Leaf Try Oval Track ", 1.84, 7, 100800, 9000, kMapleRows},
    {" Welcome to the Painsville oval track ", 1.84, 6, 94250, 9000, kPainsvilleRows},
    {" Welcome to the Chagrin River Speedway ", 1.84, 8, 102000, 13000, kChagrinRows},
    {" Welcome to the Ohio Motor Speedway ", 1.84, 13, 129200, 8000, kOhioRows},
    {" Welcome to the Shardon Hill Top Race way ", 1, 16, 183000, 8500, kChardonRows},
    {" Welcome to the Erie Lake Front Motor Speedway ", 1.84, 13, 169000, 9000, kErieRows},
    {" Welcome to the Mentor road race track ", 1.84, 13, 109200, 5000, kMentorRows},
    {" Welcome to the Kirtland dirt mile oval track ", 0.5, 6, 44000, 6000, kKirtlandRows},
    {" Welcome to the Chesterland dirt road race track ", 1.42, 9, 58000, 6000, kChesterlandRows},
    {" Welcome to the Geneva oval track ", 1.44, 6, 76000, 9000, kGenevaRows},
};

}  // namespace vorn::listing
