/// UI Automation for tests: nobody reads, but all that the game asks of it is written down.
///
///   VORN_UIA_LOG       the file that it writes, a line a call:
///                        raise KIND PROCESSING ACTIVITY|TEXT
///                        provider OPTIONS CONTROL-TYPE NAME   (as the provider says of itself)
///                        gone                                 (the window has a provider no more)
///   VORN_UIA_LISTENER  whether anybody listens: "no" where not

#include <windows.h>
// After windows.h.
#include <oleauto.h>
#include <uiautomationclient.h>

#include <cwchar>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string utf8(const wchar_t* text) {
  return std::filesystem::path(text).string();
}

void write(const std::string& line) {
  if (const wchar_t* const file = ::_wgetenv(L"VORN_UIA_LOG")) {
    std::ofstream(std::filesystem::path(file), std::ios::binary | std::ios::app) << line << '\n';
  }
}

std::string selfDescription(IRawElementProviderSimple& provider) {
  ProviderOptions options{};
  VARIANT type, name, other;
  provider.get_ProviderOptions(&options);
  provider.GetPropertyValue(UIA_ControlTypePropertyId, &type);
  provider.GetPropertyValue(UIA_NamePropertyId, &name);
  provider.GetPropertyValue(UIA_IsControlElementPropertyId, &other);
  if (V_VT(&type) != VT_I4 || V_VT(&name) != VT_BSTR || V_VT(&other) != VT_EMPTY) return "unfit";
  const std::string text =
      std::to_string(options) + " " + std::to_string(V_I4(&type)) + " " + utf8(V_BSTR(&name));
  ::VariantClear(&name);
  return text;
}

}  // namespace

extern "C" __declspec(dllexport) BOOL WINAPI UiaClientsAreListening() {
  const wchar_t* const listener = ::_wgetenv(L"VORN_UIA_LISTENER");
  return listener == nullptr || std::wcscmp(listener, L"no") != 0;
}

extern "C" __declspec(dllexport) HRESULT WINAPI
    UiaHostProviderFromHwnd(HWND window, IRawElementProviderSimple** provider) {
  *provider = nullptr;
  return ::IsWindow(window) != 0 ? S_OK : E_INVALIDARG;
}

extern "C" __declspec(dllexport) LRESULT WINAPI
    UiaReturnRawElementProvider(HWND, WPARAM, LPARAM, IRawElementProviderSimple* provider) {
  constexpr LRESULT kAnswered = 42;
  if (provider == nullptr) {
    write("gone");
    return 0;
  }
  IRawElementProviderSimple* host = nullptr;
  const bool hasHost = provider->get_HostRawElementProvider(&host) == S_OK;
  write("provider " + selfDescription(*provider) + (hasHost ? "" : " without a window"));
  return kAnswered;
}

extern "C" __declspec(dllexport) HRESULT WINAPI
    UiaRaiseNotificationEvent(IRawElementProviderSimple* provider, int kind, int processing, BSTR text,
                              BSTR activity) {
  if (provider == nullptr) return E_INVALIDARG;
  write("raise " + std::to_string(kind) + " " + std::to_string(processing) + " " + utf8(activity) + "|" +
        utf8(text));
  return S_OK;
}
