#include "platform/headless/speech.h"

#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(SilentSpeech, TakesItsTimeForEachCharacterThatIsNoBlank) {
  EXPECT_EQ(silentSpeechMs(" Exit Game. ", 0), 9 * 60);
  EXPECT_EQ(silentSpeechMs("abc", 0), 180);
  EXPECT_EQ(silentSpeechMs("\xE9\t", 0), 120);
}

TEST(SilentSpeech, TakesAtLeastAMillisecond) {
  EXPECT_EQ(silentSpeechMs("", 0), 1);
  EXPECT_EQ(silentSpeechMs("   ", 0), 1);
}

TEST(SilentSpeech, TheRateIsAPowerOfThree) {
  EXPECT_EQ(silentSpeechMs("abcdefghij", 10), 200);
  EXPECT_EQ(silentSpeechMs("abcdefghij", -10), 1800);
  // 600 * 3^-0.5 = 346.4; 600 * 3^0.1 = 669.7; 60 * 3^-0.7 = 27.8
  EXPECT_EQ(silentSpeechMs("abcdefghij", 5), 346);
  EXPECT_EQ(silentSpeechMs("abcdefghij", -1), 670);
  EXPECT_EQ(silentSpeechMs("a", 7), 28);
}

TEST(SilentSpeech, RatesBeyondTheEndsCountAsTheEnds) {
  EXPECT_EQ(silentSpeechMs("abcdefghij", 15), 115);  // 600 * 3^-1.5 = 115.47
  EXPECT_EQ(silentSpeechMs("abcdefghij", 16), 115);
  EXPECT_EQ(silentSpeechMs("abcdefghij", 1000), 115);
  EXPECT_EQ(silentSpeechMs("abcdefghij", -11), 1800);
}

class HeadlessVoice : public HeadlessTest {
 protected:
  /// Yields until the voice is idle. Returns how many yields that took.
  static int yieldsUntilIdle(HeadlessPlatform& p, Voice& voice) {
    int yields = 0;
    for (; voice.RunningState() == Voice::kSpeaking; ++yields) p.yield();
    return yields;
  }
};

TEST_F(HeadlessVoice, AQueuedTextReturnsAtOnceAndIsSpokenInItsTime) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    EXPECT_EQ(voice->RunningState(), 1);
    voice->Speak("abc", speak_flags::kQueue);
    EXPECT_EQ(now(), 0);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 180);
  });
}

TEST_F(HeadlessVoice, TextsQueueOneBehindTheOther) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("abc", speak_flags::kQueue);
    yield(p, 100);
    voice->Speak("ab", speak_flags::kQueue);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 80 + 120);
    yield(p, 50);
    voice->Speak("a", speak_flags::kQueue);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 60);
  });
}

TEST_F(HeadlessVoice, ASynchronousTextWaitsForAllThatIsQueued) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("abc", speak_flags::kQueue);
    yield(p, 30);
    voice->Speak("ab", speak_flags::kSynchronous);
    EXPECT_EQ(now(), 180 + 120);
    EXPECT_EQ(voice->RunningState(), 1);
    voice->Speak(" ", speak_flags::kSynchronous);
    EXPECT_EQ(now(), 301);
  });
}

TEST_F(HeadlessVoice, NoEventIsDeliveredDuringASynchronousText) {
  run("wait 5\ntap A\nend", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    p.yield();
    voice->Speak("abcd", speak_flags::kSynchronous);
    EXPECT_EQ(now(), 241);
    EXPECT_THAT(keysDown, IsEmpty());
    yieldForever(p);
  });
  EXPECT_THAT(keysDown, ElementsAre(KeyDown{242, 65, 0}));
}

TEST_F(HeadlessVoice, APurgeEmptiesTheQueueAtOnce) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("abc", speak_flags::kQueue);
    voice->Speak("def", speak_flags::kQueue);
    yield(p, 10);
    voice->Speak("", speak_flags::kPurge);
    EXPECT_EQ(voice->RunningState(), 1);
    EXPECT_EQ(now(), 10);
    voice->Speak("abc", speak_flags::kQueue);
    voice->Speak("ab", speak_flags::kPurge);
    EXPECT_EQ(now(), 10);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 120);
  });
}

TEST_F(HeadlessVoice, AnEmptyTextThatIsNoPurgeTakesAMillisecond) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("", speak_flags::kQueue);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 1);
  });
}

TEST_F(HeadlessVoice, SettingsCountFromTheRequestOn) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->setRate(10);
    voice->Speak("abc", speak_flags::kQueue);
    voice->setRate(0);
    EXPECT_EQ(yieldsUntilIdle(p, *voice), 60);
  });
}

TEST_F(HeadlessVoice, EveryRequestAndSettingIsTraced) {
  run("end", [&](HeadlessPlatform& p) {
    auto voice = p.createVoice();
    voice->setVoice(2);
    voice->setVolume(90);
    voice->setRate(99);
    voice->Speak(" caf\xE9 ", speak_flags::kQueue);
    voice->Speak("", speak_flags::kPurge);
    voice.reset();
  });
  EXPECT_EQ(trace.text(),
            "{\"ms\":0,\"ev\":\"voice\",\"op\":\"create\",\"value\":null}\n"
            "{\"ms\":0,\"ev\":\"voice\",\"op\":\"Voice\",\"value\":2}\n"
            "{\"ms\":0,\"ev\":\"voice\",\"op\":\"Volume\",\"value\":90}\n"
            "{\"ms\":0,\"ev\":\"voice\",\"op\":\"Rate\",\"value\":99}\n"
            "{\"ms\":0,\"ev\":\"speak\",\"text\":\" caf\u00E9 "
            "\",\"flags\":1,\"rate\":99,\"volume\":90,\"voice\":2}\n"
            "{\"ms\":0,\"ev\":\"speak\",\"text\":\"\",\"flags\":2,\"rate\":99,\"volume\":90,\"voice\":2}\n"
            "{\"ms\":0,\"ev\":\"voice\",\"op\":\"release\",\"value\":null}\n"
            "{\"ms\":0,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessVoice, AFreshVoiceIsTheFirstAtNormalRateAndFullVolume) {
  run("end", [&](HeadlessPlatform& p) { p.createVoice()->Speak("a", speak_flags::kQueue); });
  const TraceLine line = trace.of("speak").at(0);
  EXPECT_EQ(line.at("rate"), 0);
  EXPECT_EQ(line.at("volume"), 100);
  EXPECT_EQ(line.at("voice"), 0);
}

TEST_F(HeadlessVoice, ASynchronousTextIsTracedAtItsRequest) {
  run("end", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("ab", speak_flags::kSynchronous);
    voice->Speak("c", speak_flags::kSynchronous);
  });
  EXPECT_THAT(trace.timesOf("speak", "text", "ab"), ElementsAre(0));
  EXPECT_THAT(trace.timesOf("speak", "text", "c"), ElementsAre(120));
}

TEST_F(HeadlessVoice, WhatIsOutOfRangeIsAFailedCall) {
  options.voices = 2;
  run("end", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    EXPECT_THAT(voice->GetVoices(), SizeIs(2));
    EXPECT_THROW(voice->setVoice(2), PlatformError);
    EXPECT_THROW(voice->setVoice(-1), PlatformError);
    EXPECT_THROW(voice->setVolume(101), PlatformError);
    EXPECT_THROW(voice->setVolume(-1), PlatformError);
    EXPECT_NO_THROW(voice->setRate(-1000));
    EXPECT_THROW(voice->Speak("a", 3), PlatformError);
    EXPECT_THROW(voice->Speak("a", -1), PlatformError);
  });
}

TEST_F(HeadlessVoice, WithoutAnInstalledVoiceSpeakingFails) {
  options.voices = 0;
  run("end", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    EXPECT_THAT(voice->GetVoices(), IsEmpty());
    EXPECT_THROW(voice->Speak("a", speak_flags::kSynchronous), PlatformError);
    EXPECT_EQ(voice->RunningState(), 1);
    EXPECT_EQ(now(), 0);
  });
}

TEST_F(HeadlessVoice, AVoiceThatIsReleasedFallsSilent) {
  run("wait quiet\necho quiet\nend", [&](HeadlessPlatform& p) {
    auto voice = p.createVoice();
    voice->Speak("a long text", speak_flags::kQueue);
    yield(p, 20);
    voice.reset();
    yieldForever(p);
  });
  EXPECT_THAT(echoes("quiet"), ElementsAre(21));
}

/// Says a text every 100 ms from the beginning on.
void talk(HeadlessPlatform& p, const std::vector<std::string>& texts) {
  const auto voice = p.createVoice();
  for (const std::string& text : texts) {
    voice->Speak(text, speak_flags::kQueue);
    for (int ms = 0; ms < 100; ++ms) p.yield();
  }
  for (;;) p.yield();
}

TEST_F(HeadlessVoice, WaitsForATextThatIsOrHasBeenRequested) {
  run("wait say beta\necho beta\nwait say gamma\necho gamma\nend", [](HeadlessPlatform& p) {
    talk(p, {" alpha ", " beta ", " gamma "});
  });
  EXPECT_THAT(echoes("beta"), ElementsAre(101));
  EXPECT_THAT(echoes("gamma"), ElementsAre(201));

  run("wait 150\nwait say alpha\necho alpha\nwait say beta\necho beta\nend", [](HeadlessPlatform& p) {
    talk(p, {" alpha ", " beta "});
  });
  EXPECT_THAT(echoes("alpha"), ElementsAre(151));
  EXPECT_THAT(echoes("beta"), ElementsAre(151));
}

TEST_F(HeadlessVoice, NoTextIsMatchedTwice) {
  run("wait say no\necho first\nwait say no\necho second\nend", [](HeadlessPlatform& p) {
    talk(p, {" no ", " yes ", " no "});
  });
  EXPECT_THAT(echoes("first"), ElementsAre(1));
  EXPECT_THAT(echoes("second"), ElementsAre(201));
}

TEST_F(HeadlessVoice, AMatchPassesTheTextsBeforeIt) {
  options.limitMs = 500;
  EXPECT_EQ(run("wait say gamma\nwait say alpha",
                [](HeadlessPlatform& p) {
                  talk(p, {"alpha", "beta", "gamma"});
                }),
            4);
  EXPECT_THAT(diagnostics.str(), HasSubstr("test.script:2:"));
}

TEST_F(HeadlessVoice, BlanksInAnAwaitedTextCount) {
  run("wait say 1 \necho one\nend", [](HeadlessPlatform& p) { talk(p, {" 10 ", " 1 "}); });
  EXPECT_THAT(echoes("one"), ElementsAre(101));
  run("wait say  1\necho ten\nend", [](HeadlessPlatform& p) { talk(p, {" 10 ", " 1 "}); });
  EXPECT_THAT(echoes("ten"), ElementsAre(1));
}

TEST_F(HeadlessVoice, AwaitedTextsAreComparedAsTheTraceWritesThem) {
  run("wait say caf\u00E9\necho found\nend", [](HeadlessPlatform& p) { talk(p, {"tea", "caf\xE9"}); });
  EXPECT_THAT(echoes("found"), ElementsAre(101));
}

TEST_F(HeadlessVoice, WaitsForQuiet) {
  run("wait quiet\necho now\nwait 10\nwait quiet\necho then\nend", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    p.yield();
    voice->Speak("abc", speak_flags::kQueue);
    yieldForever(p);
  });
  EXPECT_THAT(echoes("now"), ElementsAre(1));
  EXPECT_THAT(echoes("then"), ElementsAre(181));
}

}  // namespace
}  // namespace vorn
