// The cues of the Ohio Motor Speedway.

#include <array>

#include "groups.h"
#include "levels.h"
#include "synth/metals.h"
#include "synth/pipes.h"
#include "synth/space.h"
#include "synth/throat.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using synth::Canvas;
using synth::Contour;
using synth::Noise;

/// One croak: a slow rattle of the throat blown through a sac.
Signal croak(double rate, double seconds, double size, double rise) {
  const Contour loudness{{0, 0}, {0.02, 0.7}, {0.7 * seconds, 1}, {seconds, 0}};
  const Signal rattle = synth::pulses(rate, seconds, 55 * size, 0.05, loudness);
  const auto gliding = [&](double hertz) { return synth::glide({{0, hertz}, {seconds, rise * hertz}}); };
  Signal sound = synth::bandpass(rattle, rate, gliding(1320 * size), 7);
  synth::scale(sound, 0.7);
  synth::mixInto(sound, synth::bandpass(rattle, rate, gliding(2550 * size), 9), 2.6);
  synth::mixInto(sound, synth::bandpass(rattle, rate, gliding(640 * size), 4), 0.1);
  synth::mixInto(sound, synth::bandpass(rattle, rate, gliding(4300 * size), 7), 3);
  synth::fadeOut(sound, synth::framesOf(rate, 0.012));
  return sound;
}

/// A big frog says it and a small one says it back.
Audio frogs(const Recording& recording) {
  Canvas canvas = recording.canvas();
  const double rate = canvas.rate();
  const auto ribbit = [&](double at, double size, double gain) {
    canvas.add(at, croak(rate, 0.10, size, 1.05), 0.75 * gain);
    canvas.add(at + 0.13, croak(rate, 0.15, size, 1.22), gain);
  };
  ribbit(0.03, 0.94, 1);
  ribbit(0.03 + 0.5 * canvas.seconds(), 1.16, 0.9);
  return synth::brightened(canvas.signal(), rate, 14, canvas.ends());
}

/// The smith's stroke and the hammer's own bounce.
Audio anvil(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("sparks");
  const double rate = canvas.rate();
  struct Stroke {
    double at, pitch, gain;
  };
  for (const Stroke& stroke : {Stroke{0.04, 2520, 1}, Stroke{0.52, 2610, 0.45}}) {
    canvas.add(stroke.at, synth::strike(rate, 0.8, synth::anvil(stroke.pitch)), stroke.gain);
    canvas.add(stroke.at, synth::burst(noise, rate, 4200, 0.8, 0.001, 0.05), 1.2 * stroke.gain);
    canvas.add(stroke.at, synth::thump(rate, 420, 260, 0.06), 0.5 * stroke.gain);
  }
  return canvas.signal();
}

/// Four beats of the cylinders, hard and soft, and the whistle on the last.
Audio locomotive(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("steam");
  const double rate = canvas.rate();
  constexpr std::array kBeats{1.0, 0.6, 0.8, 0.55};
  for (std::size_t i = 0; i < kBeats.size(); ++i) {
    const double at = 0.03 + static_cast<double>(i) * canvas.seconds() / kBeats.size();
    const Signal air = synth::white(noise, synth::framesOf(rate, 0.34));
    Signal chuff = synth::bandpass(air, rate, synth::glide({{0, 1900}, {0.3, 900}}), 0.7);
    synth::mixInto(chuff, synth::bandpass(air, rate, 420, 1.5), 0.7);
    synth::mixInto(chuff, synth::highpass(air, rate, 2600), 0.22);
    canvas.add(at,
               synth::shaped(std::move(chuff), rate,
                             Contour{{0, 0}, {0.014, 1}, {0.09, 0.5}, {0.2, 0.1}, {0.33, 0}}),
               kBeats[i]);
  }
  constexpr double kBlast = 0.46;
  for (const double hertz : {698.0, 831.0, 1047.0}) {
    const Contour pitch =
        synth::glide({{0, 0.93 * hertz}, {0.08, hertz}, {0.36, hertz}, {kBlast, 0.9 * hertz}});
    canvas.add(0.62 * canvas.seconds(),
               synth::pipe(noise, rate,
                           {.seconds = kBlast,
                            .hertz = pitch,
                            .partials = {1, 0.7, 0.45, 0.25, 0.12},
                            .chiff = 0.2,
                            .breath = 0.12,
                            .attack = 0.05,
                            .release = 0.1}),
               0.09);
  }
  return synth::inRoom(canvas, 0.5, 0.08);
}

Audio rooster(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const synth::Mouth shut = synth::muzzle(900, 1700, 2700, 3900);
  const synth::Mouth open = synth::muzzle(1250, 2300, 3300, 4400, 3, 1, -6);
  struct Syllable {
    double at, seconds, from, top, to, gain;
  };
  constexpr std::array kCrow{
      Syllable{0.04, 0.15, 500, 690, 640, 0.7}, Syllable{0.22, 0.12, 700, 860, 820, 0.75},
      Syllable{0.38, 0.24, 780, 980, 900, 0.9}, Syllable{0.66, 1.05, 860, 1090, 600, 1}};
  for (const Syllable& s : kCrow) {
    synth::Cry crow{
        .seconds = s.seconds,
        .hertz = synth::glide(
            {{0, s.from}, {0.22 * s.seconds, s.top}, {0.6 * s.seconds, 0.96 * s.top}, {s.seconds, s.to}})};
    crow.loudness = Contour{{0, 0}, {0.03, 1}, {0.65 * s.seconds, 0.85}, {s.seconds, 0}};
    crow.mouths = {{0, shut}, {0.25 * s.seconds, open}, {0.7 * s.seconds, open}, {s.seconds, shut}};
    crow.air = 0.05;
    // The last note breaks.
    crow.growl = Contour{{0, 0.1}, {0.55 * s.seconds, 0.15}, {0.8 * s.seconds, 0.6}, {s.seconds, 0.7}};
    crow.tremble = 0.012;
    crow.tilt = -3;
    canvas.add(s.at, synth::cry(noise, canvas.rate(), crow), s.gain);
  }
  return synth::withEchoes(canvas, 0.17, -22, 1);
}

Audio slideWhistle(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("breath");
  constexpr double kSlide = 0.98;
  const Contour pitch = synth::glide({{0, 700}, {0.08, 720}, {0.85, 2500}, {kSlide, 2750}});
  const synth::Pipe whistle{.seconds = kSlide,
                            .hertz = pitch,
                            .partials = {1, 0.22, 0.14, 0.06},
                            .chiff = 0.4,
                            .breath = 0.06,
                            .attack = 0.03,
                            .release = 0.08,
                            .vibrato = 0.012,
                            .vibratoHertz = 6.5};
  canvas.add(0.04, synth::pipe(noise, canvas.rate(), whistle));
  return synth::inRoom(canvas, 0.3, 0.08);
}

/// A reed in a rubber belly: pressed, and drawing breath again.
Audio rubberDuck(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("reed");
  const double rate = canvas.rate();
  const auto squeak = [&](double seconds, const Contour& pitch) {
    // The rubber gives way in jerks.
    const Contour jerky = [&](double now) {
      return pitch(now) * (1 + 0.05 * std::sin(synth::kTwoPi * 68 * now));
    };
    const Contour loudness{{0, 0}, {0.012, 1}, {0.7 * seconds, 0.8}, {seconds, 0}};
    Signal sound = synth::harmonics(rate, seconds, jerky, {0.8, 1, 0.5, 0.25, 0.12}, loudness);
    const Signal air = synth::white(noise, static_cast<int>(sound.size()));
    synth::mixInto(sound, synth::shaped(synth::bandpass(air, rate, 3800, 1), rate, loudness), 0.15);
    return sound;
  };
  canvas.add(0.03, squeak(0.2, synth::glide({{0, 1310}, {0.05, 1950}, {0.2, 1690}})));
  canvas.add(0.03 + 0.5 * canvas.seconds(),
             squeak(0.16, synth::glide({{0, 1500}, {0.06, 1390}, {0.16, 1760}})), 0.7);
  return canvas.signal();
}

Signal snareStroke(Noise& noise, double rate, double force) {
  const double decay = 0.12 + 0.08 * force;
  Signal air = synth::white(noise, synth::framesOf(rate, decay));
  air = synth::peaking(synth::highpass(air, rate, 1200), rate, 3200, 1, 6);
  Signal sound = synth::shaped(synth::lowpass(air, rate, 3000 + 4000 * force), rate,
                               synth::ringing(0.0015, 1.3 * decay));
  synth::mixInto(
      sound, synth::strike(rate, 0.12, {{190, 1, 0.09}, {331, 0.7, 0.07}, {470, 0.4, 0.05}}, 0.001), 0.33);
  synth::fadeOut(sound, synth::framesOf(rate, 0.03));
  return sound;
}

/// Two bars of a march: accents, a drag before the last beat.
Audio snareMarch(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("sticks");
  constexpr std::array kStrokes{1.0, 0.28, 0.42, 0.28, 0.8, 0.3, 0.85, 0.0};
  const double step = canvas.seconds() / kStrokes.size();
  for (std::size_t i = 0; i < kStrokes.size(); ++i) {
    if (kStrokes[i] == 0) continue;
    const double at = 0.035 + static_cast<double>(i) * step + 0.003 * noise.next();
    canvas.add(at, snareStroke(noise, canvas.rate(), kStrokes[i]), kStrokes[i]);
  }
  const double last = 0.035 + 6 * step;
  for (const double before : {0.042, 0.021})
    canvas.add(last - before, snareStroke(noise, canvas.rate(), 0.3), 0.3);
  return synth::inRoom(canvas, 0.3, 0.07);
}

Audio cow(const Recording& recording) {
  Canvas canvas = recording.canvas();
  Noise noise = recording.noise("throat");
  const double rate = canvas.rate();
  constexpr double kMoo = 0.98;
  const synth::Mouth shut = synth::muzzle(280, 900, 2200, 3100, -14, -20, -26);
  const synth::Mouth open = synth::muzzle(620, 1450, 2500, 3400, 0, -3, -8);
  const synth::Cry moo{.seconds = kMoo,
                       .hertz = synth::glide({{0, 118}, {0.25, 146}, {0.7, 140}, {kMoo, 98}}),
                       .loudness = Contour{{0, 0}, {0.12, 0.6}, {0.3, 1}, {0.75, 0.9}, {kMoo, 0}},
                       .mouths = {{0, shut}, {0.14, shut}, {0.34, open}, {0.8, open}, {kMoo, shut}},
                       .air = 0.04,
                       .growl = 0.15,
                       .tremble = 0.012,
                       .tilt = -3};
  canvas.add(0.03, synth::cry(noise, rate, moo));
  canvas.add(0.05, synth::strike(rate, 0.4, synth::cowBell(1075)), 0.3);
  canvas.add(0.44, synth::strike(rate, 0.4, synth::cowBell(1060)), 0.16);
  canvas.add(0.9, synth::strike(rate, 0.4, synth::cowBell(1075)), 0.24);
  return synth::brightened(canvas.signal(), rate, 2, canvas.ends());
}

constexpr std::array kRecipes{
    Recipe{"vorn1t7", "frogs ribbit-ribbit", Play::kLoop, kStraightCue, {}, &frogs},
    Recipe{"vorn1t8",
           "hammer on anvil, heavy stroke and lighter rebound",
           Play::kLoop,
           kEightBitCue,
           {},
           &anvil},
    Recipe{
        "vorn1t9", "steam locomotive chuff, whistle at the end", Play::kLoop, kStraightCue, {}, &locomotive},
    Recipe{"vorn1t11", "rooster crows", Play::kLoop, kTurnCue, {}, &rooster},
    Recipe{"vorn1t12", "slide whistle going up", Play::kLoop, kTurnCue, {}, &slideWhistle},
    Recipe{"vorn1t13", "rubber duck squeak-squeak", Play::kLoop, kTurnCue, {}, &rubberDuck},
    Recipe{"vorn1t14", "snare-drum march", Play::kLoop, kStraightCue, {}, &snareMarch},
    Recipe{"vorn1t15", "cow moo with cowbell", Play::kLoop, kTurnCue, {}, &cow},
};

}  // namespace

std::span<const Recipe> ohioCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
