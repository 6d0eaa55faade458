#include "codriver/preview.h"

#include <algorithm>
#include <limits>

#include "codriver/entries.h"
#include "codriver/preview_words.h"
#include "codriver/teaching.h"
#include "demo/wheel_driver.h"
#include "race/race_clock.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "state/track_names.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kVirtualEscape = 27;
constexpr double kSaidAhead = 4;       // seconds of race time before a segment
constexpr double kOneTickOfGas = 2.7;  // mph at most
constexpr const char* kBridge = " At this pace you do not jump: there is a bridge over the swimming hole. ";
constexpr CarPlace kRolling{.lapPosition = 0, .lateralPosition = 50, .speed = 30, .gear = 1};

struct Pace {
  const char* name;
  double topSpeed;  ///< mph
};
constexpr Pace kPaces[] = {
    {" gently, at no more than 60 miles an hour ", 60},
    {" briskly, at no more than 100 miles an hour ", 100},
    {" flat out ", std::numeric_limits<double>::infinity()},
};

/// The player's keys and buttons all mean that he has heard enough.
class AnyKeyStops : public GameEvents {
 public:
  AnyKeyStops(GameState& g, const Seat& seat) : GameEvents(g), seat_(seat) {}
  void Form_KeyDown(int, int shiftState) override { GameEvents::Form_KeyDown(kVirtualEscape, shiftState); }
  void DirectXEvent8_DXCallback(int) override {
    JoystickState state;
    if (seat_.controller != nullptr) carryOn([&] { state = seat_.controller->GetDeviceStateJoystick(); });
    const bool isPressed = std::any_of(state.buttons.begin(), state.buttons.end(),
                                       [](std::uint8_t button) { return button != 0; });
    if (isPressed) Form_KeyDown(kVirtualEscape, 0);
  }

 private:
  const Seat& seat_;
};

/// The built-in driver in the place of the player's devices, and what is said of the road ahead.
class Guide {
 public:
  Guide(GameState& g, const Track& track, double topSpeed)
      : g_(g), track_(track), paces_(paceOf(track, topSpeed)), driver_(track, topSpeed - kOneTickOfGas) {
    tellOf(0);
  }

  void drive(const TickReport& tick) {
    const WheelControls hands = driver_.after(tick);
    g_.joySteering = hands.steering;
    g_.joyGasBrake = hands.pedals;
    g_.btnUpShift = hands.isUpShiftHeld ? 1 : 0;
    g_.btnDownShift = hands.isDownShiftHeld ? 1 : 0;
    const auto next = static_cast<std::size_t>(tick.segment);  // counts from 0, `segment` from 1
    const double left = track_.segments[next - 1].length - tick.lapPosition;
    const bool isNear = left < kSaidAhead * kTicksPerSecond * tick.speed;
    if (isNear && next < track_.segments.size() && next > told_) tellOf(next);
  }

 private:
  void tellOf(std::size_t segment) {
    told_ = segment;
    say2(g_, segmentWords(track_.segments[segment], paces_[segment]));
  }

  GameState& g_;
  const Track& track_;
  std::vector<SegmentPace> paces_;
  WheelDriver driver_;
  std::size_t told_ = 0;
};

/// A track whose swimming hole can be crossed at any speed.
class BridgedTrack {
 public:
  explicit BridgedTrack(const Track& track)
      : segments_(track.segments.begin(), track.segments.end()), track_(track) {
    for (Segment& segment : segments_) segment.atEnd = nullptr;
    track_.segments = segments_;
  }
  BridgedTrack(const BridgedTrack&) = delete;
  BridgedTrack& operator=(const BridgedTrack&) = delete;

  const Track& track() const { return track_; }

 private:
  std::vector<Segment> segments_;
  Track track_;
};

bool hasJump(const Track& track) {
  return std::any_of(track.segments.begin(), track.segments.end(),
                     [](const Segment& segment) { return segment.atEnd != nullptr; });
}

void preview(Cabin& cabin, int track, double topSpeed) {
  const Track& real = *allTracks()[static_cast<std::size_t>(track - 1)];
  const BridgedTrack bridged(real);
  const bool isBridged = hasJump(real) && topSpeed < kWheelSkill.jumpSpeed;
  TaughtPlatform platform(cabin.game.platform, cabin.seat);
  GuestGame guest(platform, cabin.seat);
  GameState& g = guest.state;
  AnyKeyStops events(g, cabin.seat);
  platform.setEventReceiver(&events);
  openSounds(g);
  g.inputDevice = kJoystick;
  g.joystickDevice.reset();
  g.autoSpeedometer = kOff;
  g.autoGearAnnounce = kOff;
  if (isBridged) say2(g, kBridge);
  Guide guide(g, real, topSpeed);
  platform.onTick = [&](const TickReport& tick) { guide.drive(tick); };
  const bool isCompleted = driveLap(g, track, isBridged ? bridged.track() : real, kRolling);
  stopspeech(g);
  say2(g, isCompleted ? " That was the lap. " : " The lap was stopped. ");
  releaseSounds(g);
}

}  // namespace

void previewTracks(Cabin& cabin) {
  GameState& g = cabin.game;
  std::vector<std::string> tracks;
  for (const TrackName& track : kTrackNames) tracks.emplace_back(track.spoken);
  offerEntries(g, " Preview a track. ", tracks, [&](std::size_t track) {
    std::vector<std::string> paces;
    for (const Pace& pace : kPaces) paces.emplace_back(pace.name);
    offerEntries(g, "", paces, [&](std::size_t pace) {
      preview(cabin, static_cast<int>(track) + 1, kPaces[pace].topSpeed);
    });
    say2(g, tracks[track]);
  });
}

}  // namespace vorn
