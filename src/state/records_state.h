/// What `records/` owns: the record of the track and length just raced.
#pragma once

#include <string>

#include "platform/platform.h"

namespace vorn {

/// The best time on one track over one number of laps. As it stands here:
/// nobody has set one yet.
struct TrackRecord {
  double time = 0;  ///< seconds; 0: no record
  Date date{9, 9, 2009};
  std::string holder = "No One";  ///< Windows-1252
};

struct RecordsState {
  std::string recordFileName;  ///< of the race last finished
  TrackRecord record;          ///< as it stood before that race
  std::string recordText;      ///< the comparison, record and holder sentences joined
};

}  // namespace vorn
