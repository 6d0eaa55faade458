/// The tracks. Pure data.
#pragma once

#include "tracks/track.h"

namespace vorn {

extern const Track kMaple;

}  // namespace vorn
