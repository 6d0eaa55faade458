#include "platform/common/system_clock.h"

#include <chrono>
#include <ctime>

namespace vorn {
namespace {

using std::chrono::system_clock;

std::tm localTime(system_clock::time_point moment) {
  const std::time_t seconds = system_clock::to_time_t(moment);
  std::tm local{};
  localtime_r(&seconds, &local);
  return local;
}

}  // namespace

std::chrono::milliseconds wholeMilliseconds(std::chrono::steady_clock::time_point at) {
  return std::chrono::floor<std::chrono::milliseconds>(at.time_since_epoch());
}

std::int32_t steadyTickCount(std::chrono::steady_clock::time_point at) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(wholeMilliseconds(at).count()));
}

double localSecondsSinceMidnight() {
  const auto now = system_clock::now();
  const std::tm local = localTime(now);
  const auto fraction = now - std::chrono::floor<std::chrono::seconds>(now);
  return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec +
         std::chrono::duration<double>(fraction).count();
}

Date localDate() {
  const std::tm local = localTime(system_clock::now());
  return {local.tm_mon + 1, local.tm_mday, local.tm_year + 1900};
}

std::uint64_t clockSeed() {
  return static_cast<std::uint64_t>(system_clock::now().time_since_epoch().count());
}

}  // namespace vorn
