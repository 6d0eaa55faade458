#include "platform/desktop/dispatcher_voices.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr char kVariantSign = '+';
constexpr const char* kOwnChoice = "Speech Dispatcher's default voice";

// Eighty to 449 words a minute, normally 170: what the common synthesisers make of -100, 100 and 0.
constexpr double kSlowestSpeed = 80 / 170.0, kFastestSpeed = 449 / 170.0;

double speedOf(int dispatcherRate) {
  return dispatcherRate < 0 ? 1 + dispatcherRate / 100.0 * (1 - kSlowestSpeed)
                            : 1 + dispatcherRate / 100.0 * (kFastestSpeed - 1);
}

int rateOf(double speed) {
  const double rate = speed < 1 ? (speed - 1) / (1 - kSlowestSpeed) : (speed - 1) / (kFastestSpeed - 1);
  return static_cast<int>(std::lround(100 * std::clamp(rate, -1.0, 1.0)));
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string_view withoutRegion(std::string_view language) {
  return language.substr(0, language.find_first_of("-_"));
}

int rankOf(const DispatcherVoice& voice, const std::string& userLanguage) {
  const std::string language = lowerCase(voice.language);
  if (language == userLanguage) {
    return 0;
  }
  if (withoutRegion(language) == withoutRegion(userLanguage)) {
    return 1;
  }
  return language == "en-us" ? 2 : withoutRegion(language) == "en" ? 3 : 4;
}

}  // namespace

std::vector<DispatcherVoice> listedVoices(const std::string& module, const std::vector<std::string>& lines) {
  std::vector<DispatcherVoice> voices;
  for (const std::string& line : lines) {
    std::istringstream fields(line);
    DispatcherVoice voice{module, "", ""};
    std::getline(fields, voice.name, '\t');
    std::getline(fields, voice.language, '\t');
    if (!voice.name.empty() && voice.name.find(kVariantSign) == std::string::npos) {
      voices.push_back(voice);
    }
  }
  return voices;
}

std::vector<DispatcherVoice> offeredVoices(std::vector<DispatcherVoice> voices, const std::string& language) {
  const std::string wanted = lowerCase(language);
  std::stable_sort(voices.begin(), voices.end(),
                   [&](const DispatcherVoice& one, const DispatcherVoice& other) {
                     return rankOf(one, wanted) < rankOf(other, wanted);
                   });
  voices.insert(voices.begin(), DispatcherVoice{});
  return voices;
}

std::string nameOf(const DispatcherVoice& voice) {
  return voice.name.empty() ? kOwnChoice : voice.name;
}

std::vector<DispatcherVoice> readVoices(const fs::path& file) {
  std::vector<DispatcherVoice> voices;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    std::istringstream fields(line);
    DispatcherVoice voice;
    std::getline(fields, voice.module, '\t');
    std::getline(fields, voice.name, '\t');
    std::getline(fields, voice.language, '\t');
    voices.push_back(voice);
  }
  return voices;
}

void writeVoices(const fs::path& file, const std::vector<DispatcherVoice>& voices) {
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  const fs::path fresh = file.string() + ".new";
  {
    std::ofstream out(fresh);
    for (const DispatcherVoice& voice : voices) {
      out << voice.module << '\t' << voice.name << '\t' << voice.language << '\n';
    }
    if (!out.flush()) {
      return;
    }
  }
  fs::rename(fresh, file, error);
}

int dispatcherRate(int rate, int usual) {
  return rateOf(speedOf(usual) * std::pow(3.0, rate / 10.0));
}

int dispatcherVolume(int volume, int usual) {
  return static_cast<int>(std::lround(-100 + (usual + 100) * volume / 100.0));
}

std::chrono::milliseconds longestReading(const std::string& text, int dispatcherRate) {
  constexpr double kLetterMs = 100, kOtherMs = 600;  // a digit may be two words, a sign its name
  double ms = 0;
  for (const unsigned char c : text) {
    ms += std::isalpha(c) || c == ' ' ? kLetterMs : kOtherMs;
  }
  return std::chrono::milliseconds(std::llround(ms / speedOf(dispatcherRate)));
}

}  // namespace vorn
