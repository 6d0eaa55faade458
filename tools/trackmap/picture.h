/// The picture of a track: a strip along the lap, a bar a segment, left turns
/// above the line and right turns below, as high as they are sharp. Pure.
#pragma once

#include <string>

#include "tracks/track.h"

namespace vorn::trackmap {

/// The picture as an SVG document.
std::string pictureOf(const Track& track);
/// The same for a reader of text: a table, a row a segment, in Markdown.
std::string tableOf(const Track& track);
/// One line of figures: lap length, segments, steering drag.
std::string summaryOf(const Track& track);

}  // namespace vorn::trackmap
