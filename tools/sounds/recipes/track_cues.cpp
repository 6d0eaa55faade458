#include "recipes/track_cues.h"

namespace vorn::sounds {
namespace {

constexpr int kMaple[] = {1, 2, 3, 4, 5, 10, 6};
constexpr int kPainsville[] = {1, 2, 3, 4, 5, 6};
constexpr int kChagrin[] = {7, 16, 17, 18, 19, 20, 21, 22};
constexpr int kOhio[] = {1, 2, 7, 8, 4, 5, 10, 11, 9, 12, 13, 14, 15};
constexpr int kChardon[] = {23, 24, 25, 26, 27, 28, 29, 30, 4, 5, 1, 2, 31, 3, 10, 32};
constexpr int kErie[] = {4, 5, 6, 33, 35, 39, 37, 38, 36, 34, 1, 2, 3};
constexpr int kMentor[] = {40, 41, 42, 43, 44, 45, 46, 47, 48, 51, 52, 49, 50};
constexpr int kKirtland[] = {53, 54, 55, 56, 57, 58};
constexpr int kChesterland[] = {57, 65, 66, 36, 67, 68, 69, 70, 71};
constexpr int kGeneva[] = {59, 60, 61, 62, 63, 64};

constexpr TrackCues kTracks[] = {
    {"Maple Leaf Tri Oval Track", kMaple},
    {"Painsville Oval Track", kPainsville},
    {"Chagrin River Speedway", kChagrin},
    {"Ohio Motor Speedway", kOhio},
    {"Chardon Hill Top Raceway", kChardon},
    {"Erie Lake Front Motor Speedway", kErie},
    {"Mentor Road Race Track", kMentor},
    {"Kirtland Dirt Mile Oval Track", kKirtland},
    {"Chesterland Dirt Road Race Track", kChesterland},
    {"Geneva Oval Track", kGeneva},
};

}  // namespace

std::span<const TrackCues> cuesOfTracks() {
  return kTracks;
}

}  // namespace vorn::sounds
