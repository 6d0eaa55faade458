/// Voices as vorn1voc.cfg has them.
#pragma once

namespace vorn {

/// The quickest one: no test waits long for it.
inline constexpr const char* kQuickVoice = "0\r\n15\r\n90\r\n0\r\n";
/// The slowest one: the farewell alone takes it eight seconds.
inline constexpr const char* kSlowVoice = "0\r\n-10\r\n90\r\n0\r\n";

}  // namespace vorn
