/// The window's key codes that menus and prompts look at, as `lastKeyCode` holds them.
#pragma once

namespace vorn::key {

inline constexpr const char* kBackspace = "8";
inline constexpr const char* kEnter = "13";
inline constexpr const char* kShift = "16";
inline constexpr const char* kEscape = "27";
inline constexpr const char* kUp = "38";
inline constexpr const char* kDown = "40";
inline constexpr const char* kF1 = "112";

}  // namespace vorn::key
