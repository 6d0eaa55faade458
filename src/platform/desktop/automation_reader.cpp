#include "platform/desktop/automation_reader.h"

#include <windows.h>
// After windows.h.
#include <oleauto.h>
#include <uiautomationclient.h>

#include <atomic>
#include <utility>

#include "platform/common/utf8_path.h"

#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // as COM's interfaces are

namespace vorn {
namespace {

constexpr const wchar_t* kName = L"Vorn 1 TTS";
constexpr const wchar_t* kProperty = L"VornAutomation";  ///< of the window: who provides for it

// What this compiler's headers do not know yet.
constexpr LONG kRootObject = -25;
constexpr LONG kWindowControlType = 50032;
enum class Kind { kOther = 4 };
enum class Processing { kImportantMostRecent = 1, kAll = 2 };

/// A text as COM wants it.
class ComText {
 public:
  explicit ComText(const std::wstring& text) : text_(::SysAllocString(text.c_str())) {}
  ~ComText() { ::SysFreeString(text_); }
  ComText(const ComText&) = delete;
  ComText& operator=(const ComText&) = delete;
  BSTR get() const { return text_; }

 private:
  const BSTR text_;
};

}  // namespace

/// What is used of UI Automation, each null where it is missing.
struct AutomationReader::Library {
  explicit Library(const std::filesystem::path& path)
      : module(::LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    find(areClientsListening, "UiaClientsAreListening");
    find(hostProvider, "UiaHostProviderFromHwnd");
    find(returnProvider, "UiaReturnRawElementProvider");
    find(raiseNotification, "UiaRaiseNotificationEvent");
  }
  ~Library() {
    if (module != nullptr) ::FreeLibrary(module);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  std::string problem() const {
    if (module == nullptr) return "UI Automation is not to be had on this machine";
    const bool isWhole = areClientsListening != nullptr && hostProvider != nullptr &&
                         returnProvider != nullptr && raiseNotification != nullptr;
    return isWhole ? ""
                   : "this Windows knows no notifications: version 1709 of Windows 10 is the first that does";
  }

  const HMODULE module;
  BOOL(WINAPI* areClientsListening)() = nullptr;
  HRESULT(WINAPI* hostProvider)(HWND window, IRawElementProviderSimple** provider) = nullptr;
  LRESULT(WINAPI* returnProvider)
  (HWND window, WPARAM wParam, LPARAM lParam, IRawElementProviderSimple* provider) = nullptr;
  HRESULT(WINAPI* raiseNotification)
  (IRawElementProviderSimple* provider, Kind kind, Processing processing, BSTR text, BSTR activity) = nullptr;

 private:
  template <typename Function>
  void find(Function& function, const char* name) const {
    if (module == nullptr) return;
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
  }
};

/// The game's window for UI Automation, which may hold on to it longer than the game does.
class AutomationReader::Provider : public IRawElementProviderSimple {
 public:
  Provider(HWND window, std::shared_ptr<const Library> library)
      : window_(window), library_(std::move(library)) {
    ::SetPropW(window_, kProperty, this);
    former_ = setProcedure(answer);
  }
  virtual ~Provider() = default;

  /// The window is an ordinary one again.
  void leave() {
    setProcedure(former_);
    ::RemovePropW(window_, kProperty);
    library_->returnProvider(window_, 0, 0, nullptr);
    Release();
  }

  HRESULT WINAPI QueryInterface(REFIID id, void** result) override {
    const bool isOurs =
        IsEqualGUID(id, __uuidof(IUnknown)) || IsEqualGUID(id, __uuidof(IRawElementProviderSimple));
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

  HRESULT WINAPI get_ProviderOptions(ProviderOptions* result) override {
    *result = ProviderOptions_ServerSideProvider;
    return S_OK;
  }
  HRESULT WINAPI GetPatternProvider(PATTERNID, IUnknown** result) override {
    *result = nullptr;
    return S_OK;
  }
  /// What is not said here Windows knows of every window.
  HRESULT WINAPI GetPropertyValue(PROPERTYID property, VARIANT* result) override {
    ::VariantInit(result);
    if (property == UIA_NamePropertyId) {
      V_VT(result) = VT_BSTR;
      V_BSTR(result) = ::SysAllocString(kName);
    } else if (property == UIA_ControlTypePropertyId) {
      V_VT(result) = VT_I4;
      V_I4(result) = kWindowControlType;
    }
    return S_OK;
  }
  HRESULT WINAPI get_HostRawElementProvider(IRawElementProviderSimple** result) override {
    return library_->hostProvider(window_, result);
  }

 private:
  static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = static_cast<Provider*>(::GetPropW(window, kProperty));
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == kRootObject) {
      return self->library_->returnProvider(window, wParam, lParam, self);
    }
    return ::CallWindowProcW(self->former_, window, message, wParam, lParam);
  }
  /// Returns the one there was.
  WNDPROC setProcedure(WNDPROC procedure) const {
    return reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
  }

  const HWND window_;
  const std::shared_ptr<const Library> library_;
  WNDPROC former_ = nullptr;
  std::atomic<ULONG> count_{1};
};

AutomationReader::AutomationReader(HWND__* window, const std::filesystem::path& library)
    : library_(std::make_shared<const Library>(library)),
      provider_(nullptr, [](Provider* provider) { provider->leave(); }) {
  problem_ = library_->problem();
  if (problem_.empty()) provider_.reset(new Provider(window, library_));
}

AutomationReader::~AutomationReader() = default;

/// Some readers listen in ways of their own, but say so.
bool AutomationReader::isListening() {
  BOOL isThere = FALSE;
  return library_->areClientsListening() != 0 ||
         (::SystemParametersInfoW(SPI_GETSCREENREADER, 0, &isThere, 0) != 0 && isThere != 0);
}

void AutomationReader::tell(const std::string& text, bool interrupts) {
  const ComText words(utf8Path(text).wstring()), activity(kName);
  library_->raiseNotification(provider_.get(), Kind::kOther,
                              interrupts ? Processing::kImportantMostRecent : Processing::kAll, words.get(),
                              activity.get());
}

}  // namespace vorn
