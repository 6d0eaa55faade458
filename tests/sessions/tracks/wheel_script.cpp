#include "sessions/tracks/wheel_script.h"

#include <utility>

namespace vorn {
namespace {

std::string move(const std::string& button, bool wasHeld, bool isHeld) {
  if (wasHeld == isHeld) return "";
  return "button " + button + (isHeld ? " down\n" : " up\n");
}

}  // namespace

std::string WheelScript::after(const TickReport& tick) {
  const WheelControls before = std::exchange(held_, driver_.after(tick));
  return "axis X " + std::to_string(held_.steering) + "\naxis Y " + std::to_string(held_.pedals) + "\n" +
         move("8", before.isUpShiftHeld, held_.isUpShiftHeld) +
         move("9", before.isDownShiftHeld, held_.isDownShiftHeld);
}

}  // namespace vorn
