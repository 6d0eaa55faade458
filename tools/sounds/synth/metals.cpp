#include "metals.h"

namespace vorn::synth {
namespace {

std::vector<Mode> from(double hertz, std::vector<Mode> ratios) {
  return retuned(std::move(ratios), hertz);
}

}  // namespace

std::vector<Mode> churchBell(double hertz) {
  return from(hertz, {{0.5, 0.35, 3.5},
                      {1, 0.8, 2.2},
                      {1.002, 0.3, 2.0},
                      {1.2, 0.75, 2.0},
                      {1.5, 0.4, 1.4},
                      {2, 1, 1.5},
                      {2.004, 0.35, 1.3},
                      {2.6, 0.4, 0.8},
                      {3.01, 0.6, 0.8},
                      {4.17, 0.4, 0.5},
                      {5.43, 0.28, 0.35}});
}

std::vector<Mode> handBell(double hertz) {
  return from(hertz, {{1, 1, 1.6},
                      {1.0015, 0.35, 1.5},
                      {3, 0.6, 0.7},
                      {3.008, 0.2, 0.6},
                      {5.3, 0.2, 0.25},
                      {6.1, 0.12, 0.15}});
}

std::vector<Mode> shimmeringBell(double hertz) {
  return from(hertz, {{1, 1, 0.5},
                      {1.012, 0.7, 0.45},
                      {1.72, 0.7, 0.35},
                      {1.735, 0.4, 0.3},
                      {2.43, 0.45, 0.22},
                      {2.46, 0.25, 0.2},
                      {3.1, 0.2, 0.12}});
}

std::vector<Mode> gong(double hertz) {
  return from(hertz, {{1, 1, 0.9},
                      {1.006, 0.5, 0.8},
                      {2.42, 0.8, 0.6},
                      {2.44, 0.35, 0.5},
                      {3.9, 0.35, 0.3},
                      {5.2, 0.15, 0.15}});
}

std::vector<Mode> anvil(double hertz) {
  return from(hertz, {{1, 1, 0.55}, {1.37, 0.8, 0.4}, {1.83, 0.9, 0.5}, {2.31, 0.5, 0.3}, {2.76, 0.4, 0.22}});
}

std::vector<Mode> steelPlate(double hertz) {
  return from(hertz, {{1, 0.8, 0.16},
                      {1.61, 1, 0.22},
                      {2.28, 0.8, 0.18},
                      {2.92, 0.7, 0.15},
                      {3.74, 0.6, 0.12},
                      {4.6, 0.35, 0.08}});
}

std::vector<Mode> tinCan(double hertz) {
  return from(hertz, {{1, 1, 0.28},
                      {1.47, 0.8, 0.22},
                      {2.09, 0.7, 0.18},
                      {2.56, 0.6, 0.2},
                      {3.34, 0.35, 0.1},
                      {4.4, 0.2, 0.06}});
}

std::vector<Mode> triangle(double hertz) {
  return from(hertz, {{1, 0.5, 0.9},
                      {1.46, 0.6, 0.8},
                      {2.1, 0.9, 0.8},
                      {2.13, 0.5, 0.7},
                      {2.94, 0.9, 0.6},
                      {3.9, 0.8, 0.5},
                      {5.1, 0.5, 0.3}});
}

std::vector<Mode> cowBell(double hertz) {
  return from(hertz, {{1, 0.7, 0.3}, {1.5, 1, 0.35}, {2.3, 0.5, 0.18}, {3.1, 0.4, 0.12}, {4.3, 0.2, 0.06}});
}

std::vector<Mode> coin(double hertz) {
  return from(hertz, {{1, 1, 0.22}, {1.52, 0.7, 0.15}, {1.94, 0.5, 0.1}});
}

std::vector<Mode> woodBlock(double hertz) {
  return from(hertz, {{1, 1, 0.06}, {1.63, 0.6, 0.04}, {2.41, 0.4, 0.03}, {3.3, 0.2, 0.02}});
}

std::vector<Mode> hollowWood(double hertz) {
  return from(hertz, {{1, 1, 0.07}, {1.9, 0.7, 0.05}, {2.75, 0.45, 0.035}, {4.1, 0.2, 0.02}});
}

std::vector<Mode> xylophoneBar(double hertz) {
  return from(hertz, {{1, 1, 0.4}, {3, 0.5, 0.16}, {6.1, 0.22, 0.07}, {9.6, 0.08, 0.03}});
}

std::vector<Mode> combTooth(double hertz) {
  return from(hertz, {{1, 1, 1.1}, {2, 0.42, 0.8}, {3.01, 0.16, 0.5}, {6.27, 0.14, 0.12}, {8.4, 0.06, 0.05}});
}

}  // namespace vorn::synth
