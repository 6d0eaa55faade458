#include "platform/mixing/wav_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/errors.h"

namespace vorn {
namespace {

std::string number(std::uint32_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) {
    out += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return out;
}

std::string chunk(const std::string& name, const std::string& content) {
  return name + number(static_cast<std::uint32_t>(content.size()), 4) + content +
         std::string(content.size() % 2, '\0');
}

struct Format {
  int tag = 1, channels = 1, rate = 22050, bits = 16;
};

std::string fmtChunk(const Format& format) {
  const int frame = format.channels * format.bits / 8;
  return chunk("fmt ", number(format.tag, 2) + number(format.channels, 2) + number(format.rate, 4) +
                           number(format.rate * frame, 4) + number(frame, 2) + number(format.bits, 2));
}

std::string riff(const std::string& chunks) {
  return chunk("RIFF", "WAVE" + chunks);
}

std::string wav(const Format& format, const std::string& data) {
  return riff(fmtChunk(format) + chunk("data", data));
}

std::string sixteenBit(const std::vector<int>& samples) {
  std::string out;
  for (const int sample : samples) {
    out += number(static_cast<std::uint32_t>(sample), 2);
  }
  return out;
}

std::string reasonFor(const std::string& bytes) {
  try {
    readWav("vorn9.wav", bytes);
  } catch (const PlatformError& error) {
    return error.what();
  }
  return "";
}

TEST(WavFile, ReadsSixteenBitMono) {
  const Recording recording = readWav("a.wav", wav({}, sixteenBit({0, 16384, -32768, 32767})));
  EXPECT_EQ(recording.rate, 22050);
  EXPECT_EQ(recording.channels, 1);
  EXPECT_EQ(recording.frames(), 4);
  EXPECT_EQ(recording.bytesPerFrame, 2);
  EXPECT_EQ(recording.dataBytes(), 8);
  EXPECT_EQ(recording.planes[0], (std::vector<float>{0, 0.5F, -1, 32767 / 32768.0F}));
  EXPECT_TRUE(recording.planes[1].empty());
}

TEST(WavFile, ReadsEightBitUnsigned) {
  const Recording recording = readWav("a.wav", wav({1, 1, 16000, 8}, std::string("\x80\xFF\x00\x40", 4)));
  EXPECT_EQ(recording.rate, 16000);
  EXPECT_EQ(recording.bytesPerFrame, 1);
  EXPECT_EQ(recording.planes[0], (std::vector<float>{0, 127 / 128.0F, -1, -0.5F}));
}

TEST(WavFile, ReadsStereoAsTwoPlanes) {
  const Recording recording =
      readWav("a.wav", wav({1, 2, 22050, 16}, sixteenBit({8192, -8192, 16384, -16384})));
  EXPECT_EQ(recording.channels, 2);
  EXPECT_EQ(recording.frames(), 2);
  EXPECT_EQ(recording.bytesPerFrame, 4);
  EXPECT_EQ(recording.planes[0], (std::vector<float>{0.25F, 0.5F}));
  EXPECT_EQ(recording.planes[1], (std::vector<float>{-0.25F, -0.5F}));
}

TEST(WavFile, WalksOverChunksBeforeAndAfterTheSound) {
  const std::string text = "1,2,3,\x1A" + std::string(2780, ',');
  const std::string data = chunk("data", sixteenBit({100, 200, 300}));
  const auto expected = readWav("plain.wav", wav({}, sixteenBit({100, 200, 300}))).planes[0];
  EXPECT_EQ(readWav("a.wav", riff(chunk("JUNK", text) + fmtChunk({}) + data)).planes[0], expected);
  EXPECT_EQ(readWav("a.wav", riff(fmtChunk({}) + chunk("JUNK", text) + data)).planes[0], expected);
  EXPECT_EQ(readWav("a.wav", riff(fmtChunk({}) + data + chunk("LIST", "odd"))).planes[0], expected);
}

TEST(WavFile, GivesWhatIsThereOfATruncatedFile) {
  std::string bytes = wav({}, sixteenBit({100, 200, 300, 400}));
  bytes.resize(bytes.size() - 3);
  EXPECT_EQ(readWav("a.wav", bytes).frames(), 2);
}

TEST(WavFile, SaysWhichFileCannotBeReadAndWhy) {
  EXPECT_THAT(reasonFor(""), testing::HasSubstr("vorn9.wav"));
  EXPECT_THAT(reasonFor("no sound at all, but long enough for a header of forty-four bytes"),
              testing::HasSubstr("vorn9.wav"));
  EXPECT_THAT(reasonFor(wav({}, "")), testing::HasSubstr("holds no sound"));
  EXPECT_THAT(reasonFor(wav({1, 1, 22050, 24}, "abcdef")), testing::HasSubstr("not a WAV file of 8-bit"));
  EXPECT_THAT(reasonFor(wav({3, 1, 22050, 32}, "abcdefgh")), testing::HasSubstr("not a WAV file of 8-bit"));
  EXPECT_THAT(reasonFor(wav({1, 1, 99, 16}, "abcd")), testing::HasSubstr("99 hertz"));
  EXPECT_THAT(reasonFor(wav({1, 1, 100001, 16}, "abcd")), testing::HasSubstr("100001 hertz"));
  EXPECT_THAT(reasonFor(wav({1, 3, 22050, 16}, sixteenBit({1, 2, 3}))),
              testing::HasSubstr("neither mono nor stereo"));
}

TEST(WavFile, NoHeaderIsTakenOnTrust) {
  // Every cut and every single changed byte of a header is read or refused, never worse.
  const std::string good =
      riff(chunk("JUNK", "1,2") + fmtChunk({}) + chunk("data", sixteenBit({1, 2, 3, 4})));
  for (std::size_t length = 0; length < good.size(); ++length) {
    reasonFor(good.substr(0, length));
  }
  for (std::size_t i = 0; i < good.size(); ++i) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      std::string bad = good;
      bad[i] = static_cast<char>(value);
      try {
        const Recording recording = readWav("bad.wav", bad);
        EXPECT_LE(recording.dataBytes(), static_cast<std::int64_t>(bad.size()));
        EXPECT_GE(recording.frames(), 1);
      } catch (const PlatformError&) {
      }
    }
  }
}

}  // namespace
}  // namespace vorn
