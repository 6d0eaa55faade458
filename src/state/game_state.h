/// The one record of everything the program knows. Every field stands in the
/// header of the folder that owns it; procedures take the record and call each other by name.
#pragma once

#include "platform/platform.h"
#include "state/input_state.h"
#include "state/options_state.h"
#include "state/pit_state.h"
#include "state/race_state.h"
#include "state/records_state.h"
#include "state/shell_state.h"
#include "state/sound_state.h"
#include "state/speech_state.h"
#include "state/tracks_state.h"

namespace vorn {

struct GameState : ShellState,
                   SpeechState,
                   SoundState,
                   InputState,
                   RaceState,
                   PitState,
                   TracksState,
                   RecordsState,
                   OptionsState {
  explicit GameState(Platform& p) : platform(p) {}

  Platform& platform;  ///< the only way to the outside world
};

}  // namespace vorn
