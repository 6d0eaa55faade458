/// A voice of SAPI 5 for tests, of two kinds: says nothing, takes its time for it, and writes down what it
/// was asked.
///
///   VORN_SAPI_LOG  the file that it writes, a line a call:
///                    speak FLAGS RATE VOLUME VOICE|TEXT   (the voice by the last part of its name in the
///                    registry) purge

#include <windows.h>
// After windows.h.
#include <sapi.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <string>
#include <thread>

#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // as COM's interfaces are

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kForALetter = std::chrono::milliseconds(20);

std::string utf8(const std::wstring& text) {
  return std::filesystem::path(text).string();
}

/// What every object of COM can do.
template <typename Interface>
class Counted : public Interface {
 public:
  virtual ~Counted() = default;
  HRESULT WINAPI QueryInterface(REFIID id, void** result) override {
    const bool isOurs = IsEqualGUID(id, __uuidof(IUnknown)) || IsEqualGUID(id, __uuidof(Interface));
    *result = isOurs ? this : nullptr;
    if (!isOurs) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG WINAPI AddRef() override { return ++count_; }
  ULONG WINAPI Release() override {
    const ULONG left = --count_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> count_{1};
};

class Voice : public Counted<ISpVoice> {
 public:
  Voice() : isDone_(::CreateEventW(nullptr, TRUE, TRUE, nullptr)), teller_([this] { tell(); }) {}
  ~Voice() override {
    {
      const std::lock_guard lock(mutex_);
      isEnding_ = true;
    }
    changed_.notify_all();
    teller_.join();
    ::CloseHandle(isDone_);
  }

  HRESULT WINAPI SetVoice(ISpObjectToken* token) override {
    wchar_t* id = nullptr;
    if (FAILED(token->GetId(&id))) return E_FAIL;
    const std::wstring whole = id;
    ::CoTaskMemFree(id);
    voice_ = utf8(whole.substr(whole.rfind(L'\\') + 1));
    return S_OK;
  }
  HRESULT WINAPI SetRate(LONG rate) override {
    rate_ = rate;
    return rate < -10 || rate > 10 ? E_INVALIDARG : S_OK;
  }
  HRESULT WINAPI SetVolume(USHORT volume) override {
    volume_ = volume;
    return volume > 100 ? E_INVALIDARG : S_OK;
  }
  HRESULT WINAPI Speak(LPCWSTR text, DWORD flags, ULONG*) override {
    const std::lock_guard lock(mutex_);
    const Clock::time_point now = Clock::now();
    if ((flags & SPF_PURGEBEFORESPEAK) != 0) {
      write("purge");
      end_ = now;
    }
    if (text != nullptr) {
      const std::wstring words = text;
      write("speak " + std::to_string(flags) + " " + std::to_string(rate_) + " " + std::to_string(volume_) +
            " " + voice_ + "|" + utf8(words));
      end_ = std::max(now, end_) + kForALetter * static_cast<int>(words.size());
      ::ResetEvent(isDone_);
    }
    changed_.notify_all();
    return S_OK;
  }
  HRESULT WINAPI GetStatus(SPVOICESTATUS* status, LPWSTR*) override {
    const std::lock_guard lock(mutex_);
    *status = {};
    status->dwRunningState = Clock::now() < end_ ? SPRS_IS_SPEAKING : SPRS_DONE;
    status->ulInputWordPos = static_cast<ULONG>(++looks_);
    return S_OK;
  }
  HANDLE WINAPI SpeakCompleteEvent() override { return isDone_; }
  HRESULT WINAPI WaitUntilDone(ULONG most) override {
    return ::WaitForSingleObject(isDone_, most) == WAIT_OBJECT_0 ? S_OK : S_FALSE;
  }

  // What the game has no use for.
  HRESULT WINAPI SetNotifySink(ISpNotifySink*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetNotifyWindowMessage(HWND, UINT, WPARAM, LPARAM) override { return E_NOTIMPL; }
  HRESULT WINAPI SetNotifyCallbackFunction(SPNOTIFYCALLBACK*, WPARAM, LPARAM) override { return E_NOTIMPL; }
  HRESULT WINAPI SetNotifyCallbackInterface(ISpNotifyCallback*, WPARAM, LPARAM) override { return E_NOTIMPL; }
  HRESULT WINAPI SetNotifyWin32Event() override { return E_NOTIMPL; }
  HRESULT WINAPI WaitForNotifyEvent(DWORD) override { return E_NOTIMPL; }
  HANDLE WINAPI GetNotifyEventHandle() override { return nullptr; }
  HRESULT WINAPI SetInterest(ULONGLONG, ULONGLONG) override { return E_NOTIMPL; }
  HRESULT WINAPI GetEvents(ULONG, SPEVENT*, ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetInfo(SPEVENTSOURCEINFO*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetOutput(IUnknown*, WINBOOL) override { return E_NOTIMPL; }
  HRESULT WINAPI GetOutputObjectToken(ISpObjectToken**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetOutputStream(ISpStreamFormat**) override { return E_NOTIMPL; }
  HRESULT WINAPI Pause() override { return E_NOTIMPL; }
  HRESULT WINAPI Resume() override { return E_NOTIMPL; }
  HRESULT WINAPI GetVoice(ISpObjectToken**) override { return E_NOTIMPL; }
  HRESULT WINAPI SpeakStream(IStream*, DWORD, ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI Skip(LPCWSTR, LONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetPriority(SPVPRIORITY) override { return E_NOTIMPL; }
  HRESULT WINAPI GetPriority(SPVPRIORITY*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetAlertBoundary(SPEVENTENUM) override { return E_NOTIMPL; }
  HRESULT WINAPI GetAlertBoundary(SPEVENTENUM*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetRate(LONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetVolume(USHORT*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetSyncSpeakTimeout(ULONG) override { return E_NOTIMPL; }
  HRESULT WINAPI GetSyncSpeakTimeout(ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI IsUISupported(LPCWSTR, void*, ULONG, WINBOOL*) override { return E_NOTIMPL; }
  HRESULT WINAPI DisplayUI(HWND, LPCWSTR, LPCWSTR, void*, ULONG) override { return E_NOTIMPL; }

 private:
  static void write(const std::string& line) {
    if (const wchar_t* const file = ::_wgetenv(L"VORN_SAPI_LOG")) {
      std::ofstream(std::filesystem::path(file), std::ios::binary | std::ios::app) << line << '\n';
    }
  }

  /// Says when all has been said.
  void tell() {
    std::unique_lock lock(mutex_);
    while (!isEnding_) {
      if (Clock::now() >= end_) {
        ::SetEvent(isDone_);
        changed_.wait(lock);
      } else {
        changed_.wait_until(lock, Clock::time_point(end_));
      }
    }
  }

  const HANDLE isDone_;
  std::mutex mutex_;
  std::condition_variable changed_;
  Clock::time_point end_;
  bool isEnding_ = false;
  int looks_ = 0;
  LONG rate_ = 0;
  USHORT volume_ = 100;
  std::string voice_ = "none";
  std::thread teller_;
};

struct Kind {
  const wchar_t* id;
  const wchar_t* name;
};
constexpr Kind kKinds[] = {{L"HKEY_LOCAL_MACHINE\\Voices\\Anna", L"Anna"},
                           {L"HKEY_LOCAL_MACHINE\\Voices\\Zofie", L"\u017Dofie"}};
constexpr const Kind& kUsual = kKinds[1];

/// A text as COM hands it over.
HRESULT give(const wchar_t* text, LPWSTR* result) {
  const std::size_t bytes = (std::wcslen(text) + 1) * sizeof *text;
  *result = static_cast<LPWSTR>(::CoTaskMemAlloc(bytes));
  std::memcpy(*result, text, bytes);
  return S_OK;
}

/// What all that stands in the registry can do; here it can do nothing.
template <typename Interface>
class DataKey : public Counted<Interface> {
 public:
  HRESULT WINAPI SetData(LPCWSTR, ULONG, const BYTE*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetData(LPCWSTR, ULONG*, BYTE*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetStringValue(LPCWSTR, LPCWSTR) override { return E_NOTIMPL; }
  HRESULT WINAPI GetStringValue(LPCWSTR, LPWSTR*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetDWORD(LPCWSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI GetDWORD(LPCWSTR, DWORD*) override { return E_NOTIMPL; }
  HRESULT WINAPI OpenKey(LPCWSTR, ISpDataKey**) override { return E_NOTIMPL; }
  HRESULT WINAPI CreateKey(LPCWSTR, ISpDataKey**) override { return E_NOTIMPL; }
  HRESULT WINAPI DeleteKey(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT WINAPI DeleteValue(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT WINAPI EnumKeys(ULONG, LPWSTR*) override { return E_NOTIMPL; }
  HRESULT WINAPI EnumValues(ULONG, LPWSTR*) override { return E_NOTIMPL; }
};

class Token : public DataKey<ISpObjectToken> {
 public:
  explicit Token(const Kind& kind) : kind_(kind) {}
  HRESULT WINAPI GetStringValue(LPCWSTR name, LPWSTR* value) override {
    return name == nullptr ? give(kind_.name, value) : E_INVALIDARG;
  }
  HRESULT WINAPI GetId(LPWSTR* id) override { return give(kind_.id, id); }
  HRESULT WINAPI SetId(LPCWSTR, LPCWSTR, WINBOOL) override { return E_NOTIMPL; }
  HRESULT WINAPI GetCategory(ISpObjectTokenCategory**) override { return E_NOTIMPL; }
  HRESULT WINAPI CreateInstance(IUnknown*, DWORD, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetStorageFileName(REFCLSID, LPCWSTR, LPCWSTR, ULONG, LPWSTR*) override { return E_NOTIMPL; }
  HRESULT WINAPI RemoveStorageFileName(REFCLSID, LPCWSTR, WINBOOL) override { return E_NOTIMPL; }
  HRESULT WINAPI Remove(const CLSID*) override { return E_NOTIMPL; }
  HRESULT WINAPI IsUISupported(LPCWSTR, void*, ULONG, IUnknown*, WINBOOL*) override { return E_NOTIMPL; }
  HRESULT WINAPI DisplayUI(HWND, LPCWSTR, LPCWSTR, void*, ULONG, IUnknown*) override { return E_NOTIMPL; }
  HRESULT WINAPI MatchesAttributes(LPCWSTR, WINBOOL*) override { return E_NOTIMPL; }

 private:
  const Kind& kind_;
};

class Tokens : public Counted<IEnumSpObjectTokens> {
 public:
  HRESULT WINAPI Next(ULONG count, ISpObjectToken** tokens, ULONG*) override {
    if (count != 1 || next_ == std::size(kKinds)) return S_FALSE;
    *tokens = new Token(kKinds[next_++]);
    return S_OK;
  }
  HRESULT WINAPI Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT WINAPI Reset() override { return E_NOTIMPL; }
  HRESULT WINAPI Clone(IEnumSpObjectTokens**) override { return E_NOTIMPL; }
  HRESULT WINAPI Item(ULONG, ISpObjectToken**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetCount(ULONG*) override { return E_NOTIMPL; }

 private:
  std::size_t next_ = 0;
};

class Category : public DataKey<ISpObjectTokenCategory> {
 public:
  HRESULT WINAPI SetId(LPCWSTR id, WINBOOL) override {
    isVoices_ = std::wstring(id) == SPCAT_VOICES;
    return S_OK;
  }
  HRESULT WINAPI EnumTokens(LPCWSTR, LPCWSTR, IEnumSpObjectTokens** tokens) override {
    if (!isVoices_) return E_FAIL;
    *tokens = new Tokens;
    return S_OK;
  }
  HRESULT WINAPI GetDefaultTokenId(LPWSTR* id) override { return give(kUsual.id, id); }
  HRESULT WINAPI GetId(LPWSTR*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetDataKey(SPDATAKEYLOCATION, ISpDataKey**) override { return E_NOTIMPL; }
  HRESULT WINAPI SetDefaultTokenId(LPCWSTR) override { return E_NOTIMPL; }

 private:
  bool isVoices_ = false;
};

/// Makes objects of one class.
template <typename Class>
class Factory : public IClassFactory {
 public:
  HRESULT WINAPI QueryInterface(REFIID id, void** result) override {
    const bool isOurs = IsEqualGUID(id, __uuidof(IUnknown)) || IsEqualGUID(id, __uuidof(IClassFactory));
    *result = isOurs ? this : nullptr;
    return isOurs ? S_OK : E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() override { return 2; }  // there is one, for good
  ULONG WINAPI Release() override { return 1; }
  HRESULT WINAPI CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto* const made = new Class;
    const HRESULT outcome = made->QueryInterface(id, result);
    made->Release();
    return outcome;
  }
  HRESULT WINAPI LockServer(WINBOOL) override { return S_OK; }
};

}  // namespace

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID which, REFIID id, void** result) {
  static Factory<Voice> voices;
  static Factory<Category> categories;
  return IsEqualGUID(which, __uuidof(SpVoice)) ? voices.QueryInterface(id, result)
                                               : categories.QueryInterface(id, result);
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllCanUnloadNow() {
  return S_FALSE;
}
