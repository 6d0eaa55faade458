/// How a text is to be said, whoever says it.
#pragma once

namespace vorn {

struct SpeechSettings {
  int voice = 0;     ///< index into the voices of who says it
  int volume = 100;  ///< 0 .. 100
  int rate = 0;      ///< the speed goes by 3^(rate / 10); 0 is the voice's normal speed
};

}  // namespace vorn
