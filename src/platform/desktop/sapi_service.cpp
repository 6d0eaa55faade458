#include "platform/desktop/sapi_service.h"

#include <windows.h>
// After windows.h.
#include <sapi.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <sstream>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr int kSlowest = -10, kFastest = 10;  ///< of SAPI, whose speed goes by 3^(rate / 10) as well
constexpr auto kLongestListing = 5s;
constexpr auto kLongestFarewell = 1s;

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using Com = std::unique_ptr<Interface, Releaser>;

template <typename Interface, typename Class>
Com<Interface> create(HRESULT* result = nullptr) {
  void* made = nullptr;
  const HRESULT outcome =
      ::CoCreateInstance(__uuidof(Class), nullptr, CLSCTX_ALL, __uuidof(Interface), &made);
  if (result != nullptr) *result = outcome;
  return Com<Interface>(static_cast<Interface*>(made));
}

/// This thread's way to COM for as long as it lives.
class Apartment {
 public:
  Apartment() { ::CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ~Apartment() { ::CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// Takes over a text that COM has made.
std::wstring taken(wchar_t* text) {
  std::wstring copy = text == nullptr ? L"" : text;
  ::CoTaskMemFree(text);
  return copy;
}

/// Empty for a voice without one.
std::wstring nameOf(ISpObjectToken& kind) {
  wchar_t* text = nullptr;
  return SUCCEEDED(kind.GetStringValue(nullptr, &text)) ? taken(text) : L"";
}

std::wstring wideFromWindows1252(const std::string& text) {
  constexpr UINT kWindows1252 = 1252;
  std::wstring wide(text.size(), L'\0');
  const auto size = static_cast<int>(text.size());
  wide.resize(
      static_cast<std::size_t>(::MultiByteToWideChar(kWindows1252, 0, text.data(), size, wide.data(), size)));
  return wide;
}

std::string complaint(const char* call, HRESULT result) {
  std::ostringstream text;
  text << call << " fails with 0x" << std::hex << static_cast<unsigned long>(result);
  return text.str();
}

}  // namespace

/// What the game's thread and the voice's share.
struct SapiService::Line {
  Line() : bell(::CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
  ~Line() { ::CloseHandle(bell); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  template <typename Change>
  void tell(Change&& change) {
    {
      const std::lock_guard lock(mutex);
      change();
    }
    ::SetEvent(bell);
  }

  const HANDLE bell;                       ///< rings when something has been told
  std::atomic<std::uint64_t> progress{0};  ///< of the voice in its text

  std::mutex mutex;                 ///< over what follows
  std::condition_variable changed;  ///< `names` and `hasLeft`
  std::deque<Utterance> queue;
  bool isUttering = false, isToBeSilent = false, isEnding = false, hasLeft = false;
  std::optional<std::vector<std::string>> names;
};

/// The thread's own: SAPI's voice and the kinds that it can take.
class SapiService::Speaker {
 public:
  explicit Speaker(Line& line) : line_(line), voice_(create<ISpVoice, SpVoice>(&made_)) { list(); }

  std::vector<std::string> names() const;
  void utter(const Utterance& utterance);

 private:
  void list();
  bool isToBeSilent() {
    const std::lock_guard lock(line_.mutex);
    return line_.isToBeSilent || line_.isEnding;
  }
  void complain(const std::string& text) {
    if (!std::exchange(hasComplained_, true)) std::cerr << "The voice: " << text << '.' << std::endl;
  }

  Line& line_;
  HRESULT made_ = S_OK;
  Com<ISpVoice> voice_;
  std::vector<Com<ISpObjectToken>> kinds_;
  bool hasComplained_ = false;
};

/// The one that the player has chosen in the system's settings comes first.
void SapiService::Speaker::list() {
  const auto category = create<ISpObjectTokenCategory, SpObjectTokenCategory>();
  if (!category || FAILED(category->SetId(SPCAT_VOICES, FALSE))) return;
  IEnumSpObjectTokens* found = nullptr;
  if (FAILED(category->EnumTokens(nullptr, nullptr, &found))) return;
  const Com<IEnumSpObjectTokens> tokens(found);
  ISpObjectToken* token = nullptr;
  while (tokens->Next(1, &token, nullptr) == S_OK) kinds_.emplace_back(token);
  wchar_t* id = nullptr;
  if (FAILED(category->GetDefaultTokenId(&id))) return;
  const std::wstring usual = taken(id);
  std::stable_partition(kinds_.begin(), kinds_.end(), [&](const Com<ISpObjectToken>& kind) {
    wchar_t* own = nullptr;
    return SUCCEEDED(kind->GetId(&own)) && taken(own) == usual;
  });
}

std::vector<std::string> SapiService::Speaker::names() const {
  std::vector<std::string> names;
  for (const auto& kind : kinds_) {
    const std::wstring name = nameOf(*kind);
    names.push_back(name.empty() ? "Voice " + std::to_string(names.size() + 1)
                                 : std::filesystem::path(name).string());
  }
  return names;
}

void SapiService::Speaker::utter(const Utterance& utterance) {
  constexpr DWORD kNextLook = 100;  // milliseconds
  if (!voice_) return complain(complaint("CoCreateInstance", made_));
  const auto kind = static_cast<std::size_t>(utterance.settings.voice);
  if (kind < kinds_.size()) voice_->SetVoice(kinds_[kind].get());
  voice_->SetRate(std::clamp(utterance.settings.rate, kSlowest, kFastest));
  voice_->SetVolume(static_cast<USHORT>(utterance.settings.volume));
  const std::wstring text = wideFromWindows1252(utterance.text);
  const HRESULT result = voice_->Speak(text.c_str(), SPF_ASYNC | SPF_IS_NOT_XML, nullptr);
  if (FAILED(result)) return complain(complaint("Speak", result));
  const HANDLE either[] = {voice_->SpeakCompleteEvent(), line_.bell};
  while (::WaitForMultipleObjects(2, either, FALSE, kNextLook) != WAIT_OBJECT_0) {
    if (isToBeSilent()) {
      voice_->Speak(nullptr, SPF_ASYNC | SPF_PURGEBEFORESPEAK, nullptr);
      return;
    }
    SPVOICESTATUS status{};
    if (SUCCEEDED(voice_->GetStatus(&status, nullptr))) line_.progress = status.ulInputWordPos;
  }
}

SapiService::SapiService(std::chrono::milliseconds patience)
    : patience_(patience), line_(std::make_shared<Line>()) {
  std::thread(serve, line_).detach();
}

SapiService::~SapiService() {
  line_->tell([this] { line_->isEnding = true; });
  std::unique_lock lock(line_->mutex);
  line_->changed.wait_for(lock, kLongestFarewell, [this] { return line_->hasLeft; });
}

std::string SapiService::problem() {
  const Apartment apartment;
  HRESULT result = S_OK;
  if (create<ISpVoice, SpVoice>(&result)) return "";
  return "Windows cannot speak on this machine: SAPI 5 is not to be had (" +
         complaint("CoCreateInstance", result) + ").";
}

void SapiService::serve(const std::shared_ptr<Line>& line) {
  const Apartment apartment;
  {
    Speaker speaker(*line);
    std::unique_lock lock(line->mutex);
    line->names = speaker.names();
    line->changed.notify_all();
    while (!line->isEnding) {
      line->isToBeSilent = false;
      line->isUttering = !line->queue.empty();
      if (line->isUttering) {
        const Utterance utterance = std::move(line->queue.front());
        line->queue.pop_front();
        lock.unlock();
        ++line->progress;
        speaker.utter(utterance);
      } else {
        lock.unlock();
        ::WaitForSingleObject(line->bell, INFINITE);
      }
      lock.lock();
    }
  }
  const std::lock_guard lock(line->mutex);
  line->hasLeft = true;
  line->changed.notify_all();
}

std::vector<std::string> SapiService::voices() {
  std::unique_lock lock(line_->mutex);
  line_->changed.wait_for(lock, kLongestListing, [this] { return line_->names.has_value(); });
  if (!line_->names) line_->names.emplace();  // and so they stay
  return *line_->names;
}

void SapiService::say(const std::string& text, const SpeechSettings& settings) {
  line_->tell([&] { line_->queue.push_back({text, settings}); });
}

void SapiService::purge() {
  line_->tell([this] {
    line_->queue.clear();
    line_->isToBeSilent = line_->isUttering;
  });
  watchdog_.rest();
}

bool SapiService::isSpeaking() {
  {
    const std::lock_guard lock(line_->mutex);
    if (line_->queue.empty() && (!line_->isUttering || line_->isToBeSilent)) {
      watchdog_.rest();
      return false;
    }
  }
  if (watchdog_.idleFor(line_->progress, std::chrono::steady_clock::now()) >= patience_) {
    std::cerr << "The voice has fallen silent: it gets no further in its text." << std::endl;
    purge();
    return false;
  }
  return true;
}

}  // namespace vorn
