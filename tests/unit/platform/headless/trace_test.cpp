#include "platform/headless/trace.h"

#include <limits>

#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using HeadlessTrace = HeadlessTest;

TEST_F(HeadlessTrace, WindowBoxAndProgram) {
  run("end", [](HeadlessPlatform& p) {
    p.setCaption(" Vorn \"1\" ");
    EXPECT_EQ(p.messageBox("one\rtwo \x80"), 1);
    p.startProgram("arcadehub.exe", 3);
  });
  EXPECT_EQ(trace.text(),
            "{\"ms\":0,\"ev\":\"window\",\"caption\":\" Vorn \\\"1\\\" \"}\n"
            "{\"ms\":0,\"ev\":\"box\",\"text\":\"one\\rtwo \u20AC\"}\n"
            "{\"ms\":0,\"ev\":\"program\",\"name\":\"arcadehub.exe\",\"style\":3}\n"
            "{\"ms\":0,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTrace, ATickHasEveryField) {
  run("end", [](HeadlessPlatform& p) {
    TickReport report{};
    report.raceTicks = 0.7;
    report.speed = 25;
    report.gear = 1;
    report.engineRpm = 100.0 / 3;
    report.soundRpm = 5;
    report.fuel = 22;
    report.lapPosition = 1234.5;
    report.lateralPosition = 50;
    report.lapsCompleted = 2;
    report.segment = 3;
    report.poleDistance = 10;
    report.joySteering = -3000;
    report.joyGasBrake = -10000;
    report.steerKeyTicks = 4;
    report.marblesTicks = 5;
    report.wallTicks = 6;
    report.pit = 1;
    p.carTicked(report);
  });
  EXPECT_EQ(traceText(trace.lines().front()),
            "{\"ms\":0,\"ev\":\"tick\",\"raceTicks\":0.7,\"speed\":25.0,\"gear\":1,"
            "\"engineRpm\":33.333333333333336,\"soundRpm\":5.0,\"fuel\":22.0,\"lapPosition\":1234.5,"
            "\"lateralPosition\":50.0,\"lapsCompleted\":2,\"segment\":3,\"poleDistance\":10.0,"
            "\"joySteering\":-3000,\"joyGasBrake\":-10000,\"steerKeyTicks\":4,\"marblesTicks\":5,"
            "\"wallTicks\":6,\"pit\":1}");
}

TEST_F(HeadlessTrace, RealsReadBackAsTheSameNumber) {
  const double reals[] = {0.1,
                          1.0 / 3,
                          1e-300,
                          61.999 - 60,
                          205 * 0.1,
                          12345678.9,
                          -0.0,
                          std::numeric_limits<double>::denorm_min(),
                          std::numeric_limits<double>::max()};
  for (const double real : reals) {
    fields["speed"] = real;
    run("get speed\nend");
    const TraceLine line = TraceLine::parse(traceText(trace.lines().front()));
    EXPECT_EQ(line.at("value").get<double>(), real);
  }
}

TEST_F(HeadlessTrace, FieldsAreAskedByName) {
  fields = {{"gear", std::int64_t{4}},
            {"speed", 99.5},
            {"lastKeyChar", std::string("\xE9")},
            {"speedMarkSaid[3]", std::int64_t{1}}};
  run("get gear\nget speed\nget lastKeyChar\nget speedMarkSaid[3]\nend");
  EXPECT_EQ(trace.text(),
            "{\"ms\":1,\"ev\":\"value\",\"name\":\"gear\",\"value\":4}\n"
            "{\"ms\":1,\"ev\":\"value\",\"name\":\"speed\",\"value\":99.5}\n"
            "{\"ms\":1,\"ev\":\"value\",\"name\":\"lastKeyChar\",\"value\":\"\u00E9\"}\n"
            "{\"ms\":1,\"ev\":\"value\",\"name\":\"speedMarkSaid[3]\",\"value\":1}\n"
            "{\"ms\":1,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTrace, FieldsAreSetByName) {
  fields["speed"] = 0.0;
  run("set speed 12.5\nget speed\nset speed -1e2\nget speed\nend");
  EXPECT_THAT(trace.values("speed"), ElementsAre(12.5, -100.0));
}

TEST_F(HeadlessTrace, AnUnknownFieldEndsTheSession) {
  fields["lastKeyCode"] = std::string("13");
  EXPECT_EQ(run("wait 1\nget sped"), 2);
  EXPECT_EQ(diagnostics.str(), "test.script:2: there is no such field: sped\n");
  EXPECT_EQ(run("set sped 1"), 2);
  EXPECT_EQ(diagnostics.str(),
            "test.script:1: there is no such numeric field, or it cannot hold the value: sped\n");
  EXPECT_EQ(run("set lastKeyCode 1"), 2);
}

TEST_F(HeadlessTrace, EchoKeepsItsTextAsItIs) {
  run("echo  caf\u00E9 \necho\necho \xFF\nend");
  EXPECT_EQ(trace.text(),
            "{\"ms\":1,\"ev\":\"echo\",\"text\":\" caf\u00E9 \"}\n"
            "{\"ms\":1,\"ev\":\"echo\",\"text\":\"\"}\n"
            "{\"ms\":1,\"ev\":\"echo\",\"text\":\"\uFFFD\"}\n"
            "{\"ms\":1,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessTrace, FilesThatAreOpenedAreTraced) {
  folder.write("VORN1VOC.CFG", "1");
  run("end", [](HeadlessPlatform& p) {
    Files& files = p.files();
    files.find("vorn1voc.cfg");
    files.size("vorn1voc.cfg");
    files.readSound("vorn1voc.cfg");
    files.list("vorn1", "cfg");
    EXPECT_EQ(files.read("vorn1voc.cfg"), "1");
    files.write("a.rec", "record");
    files.append("vorn1log.txt", "line\r\n");
    files.remove("a.rec");
    EXPECT_THROW(files.read("a.rec"), PlatformError);
  });
  EXPECT_EQ(trace.text(),
            "{\"ms\":0,\"ev\":\"file\",\"op\":\"read\",\"name\":\"VORN1VOC.CFG\"}\n"
            "{\"ms\":0,\"ev\":\"file\",\"op\":\"write\",\"name\":\"a.rec\"}\n"
            "{\"ms\":0,\"ev\":\"file\",\"op\":\"append\",\"name\":\"vorn1log.txt\"}\n"
            "{\"ms\":0,\"ev\":\"file\",\"op\":\"delete\",\"name\":\"a.rec\"}\n"
            "{\"ms\":0,\"ev\":\"end\",\"exit\":0}\n");
  EXPECT_EQ(folder.read("vorn1log.txt"), "line\r\n");
}

TEST_F(HeadlessTrace, ASessionRunsWithoutATrace) {
  HeadlessPlatform platform(options, {nullptr, nullptr, nullptr, &diagnostics, nullptr});
  EXPECT_EQ(platform.run([&] {
    platform.setCaption("a");
    return 5;
  }),
            5);
}

TEST_F(HeadlessTrace, AStreamThatCannotBeWrittenIsAFailedCall) {
  std::ostringstream stream;
  StreamTraceSink sink(stream);
  sink.write({{"ms", 0}, {"ev", "end"}});
  EXPECT_EQ(stream.str(), "{\"ms\":0,\"ev\":\"end\"}\n");
  EXPECT_NO_THROW(sink.flush());
  stream.setstate(std::ios::badbit);
  EXPECT_THROW(sink.flush(), PlatformError);
}

TEST_F(HeadlessTrace, ChanceBelongsToTheSeed) {
  const auto draw = [&](std::uint64_t seed) {
    std::vector<double> numbers;
    options.seed = seed;
    run("end", [&](HeadlessPlatform& p) {
      numbers.push_back(p.randomFraction());
      p.reseedRandom();
      numbers.push_back(p.randomFraction());
    });
    return numbers;
  };
  const auto first = draw(1);
  EXPECT_NE(first[0], first[1]);
  EXPECT_EQ(draw(1), first);
  EXPECT_NE(draw(2), first);
}

TEST_F(HeadlessTrace, TheSameSessionGivesTheSameTrace) {
  options.controller = true;
  folder.write("a.wav", makeWav(5000));
  fields["speed"] = 0.0;
  const std::string script =
      "type Ab 1\naxis X -5\nwait say abc\nwait 30\nset speed 0.1\nget speed\nfocus off\nwait tick\nclose";
  const auto session = [&] {
    run(script, [&](HeadlessPlatform& p) {
      const auto voice = p.createVoice();
      const auto device = p.createSoundDevice();
      const auto buffer = device->CreateSoundBufferFromFile("a", "a.wav", 0);
      EXPECT_THROW(
          for (;;) {
            buffer->SetPan(static_cast<int>(p.randomFraction() * 1000));
            buffer->Play(0);
            voice->Speak("abc", speak_flags::kPurge);
            for (int i = 0; i < 99; ++i) p.yield();
            p.carTicked({});
          },
          WindowClosed);
    });
    return trace.text();
  };
  const std::string first = session();
  EXPECT_GT(first.size(), 1000U);
  EXPECT_EQ(session(), first);
}

}  // namespace
}  // namespace vorn
