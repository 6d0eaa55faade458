/// A controller in words: what each of its controls is taken for. Pure.
#pragma once

#include <string>
#include <vector>

#include "platform/common/controller_layout.h"

namespace vorn {

/// A line about each of `connected`, and below it one for each of its axes and buttons. The game
/// drives with the first that a car can be driven with; the first pedals join it where it is a wheel.
std::vector<std::string> controllerInfo(const std::vector<ControllerFacts>& connected);

}  // namespace vorn
