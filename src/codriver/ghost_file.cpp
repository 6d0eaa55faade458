#include "codriver/ghost_file.h"

#include <cmath>
#include <cstdint>
#include <string_view>

#include "records/records.h"
#include "state/track_names.h"

namespace vorn {
namespace {

constexpr std::string_view kMark = "VORNGHOST";
constexpr char kVersion = 1;
constexpr std::size_t kChecksumBytes = 4;
constexpr std::size_t kMostLaps = 4;  // by wheel and by keys, standing and flying

constexpr double kTicksUnit = 0.001;
constexpr double kWayUnit = 0.1;

constexpr std::uint64_t kByKeys = 1;
constexpr std::uint64_t kFlying = 2;

/// CRC-32 as many formats have it.
std::uint32_t checksum(std::string_view bytes) {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
  }
  return ~sum;
}

std::string checksumBytes(std::string_view bytes) {
  const std::uint32_t sum = checksum(bytes);
  std::string text;
  for (unsigned i = 0; i < kChecksumBytes; ++i) text += static_cast<char>(sum >> (8 * i) & 0xFF);
  return text;
}

/// Seven bits a byte, the lowest first; the eighth says that there is more.
void put(std::string& bytes, std::uint64_t value) {
  for (; value > 0x7F; value >>= 7) bytes += static_cast<char>((value & 0x7F) | 0x80);
  bytes += static_cast<char>(value);
}

/// Small numbers stay small whatever their sign.
void putSigned(std::string& bytes, std::int64_t value) {
  put(bytes, static_cast<std::uint64_t>(value) << 1 ^ static_cast<std::uint64_t>(value >> 63));
}

/// Numbers one after the other; once one is missing, they all are.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : left_(bytes) {}

  std::uint64_t take() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
      if (left_.empty()) break;
      const auto byte = static_cast<unsigned char>(left_.front());
      left_.remove_prefix(1);
      value |= std::uint64_t{byte & 0x7FU} << shift;
      if (byte <= 0x7F) return value;
    }
    isGood_ = false;
    return 0;
  }
  std::int64_t takeSigned() {
    const std::uint64_t value = take();
    return static_cast<std::int64_t>(value >> 1) ^ -static_cast<std::int64_t>(value & 1);
  }
  bool isGood() const { return isGood_; }
  bool isAtEnd() const { return left_.empty(); }

 private:
  std::string_view left_;
  bool isGood_ = true;
};

/// A place in whole units of the file.
struct Steps {
  std::int64_t ticks = 0, distance = 0, lateral = 0;
};

Steps stepsOf(const GhostPlace& place) {
  return {std::llround(place.ticks / kTicksUnit), std::llround(place.distance / kWayUnit),
          std::llround(place.lateral / kWayUnit)};
}

GhostPlace placeAt(const Steps& steps) {
  return {static_cast<double>(steps.ticks) * kTicksUnit, static_cast<double>(steps.distance) * kWayUnit,
          static_cast<double>(steps.lateral) * kWayUnit};
}

void putLap(std::string& bytes, const GhostLap& lap) {
  put(bytes, (lap.kind.isByKeys ? kByKeys : 0) | (lap.kind.isFlying ? kFlying : 0));
  put(bytes, static_cast<std::uint64_t>(std::llround(lap.ticks / kTicksUnit)));
  put(bytes, lap.places.size());
  Steps before;
  for (const GhostPlace& place : lap.places) {
    const Steps now = stepsOf(place);
    // A tick more than the last is the rule: it shall need one byte.
    putSigned(bytes, now.ticks - before.ticks - std::llround(1 / kTicksUnit));
    putSigned(bytes, now.distance - before.distance);
    putSigned(bytes, now.lateral - before.lateral);
    before = now;
  }
}

/// A number of the file that a lap can have.
bool isSensible(std::int64_t steps) {
  constexpr std::int64_t kMost = std::int64_t{1} << 40;
  return steps > -kMost && steps < kMost;
}

std::optional<GhostLap> takeLap(Reader& reader) {
  GhostLap lap;
  const std::uint64_t kind = reader.take();
  lap.kind = {.isByKeys = (kind & kByKeys) != 0, .isFlying = (kind & kFlying) != 0};
  const auto ticks = static_cast<std::int64_t>(reader.take());
  const std::uint64_t places = reader.take();
  if (!isSensible(ticks) || places == 0 || places > kMostGhostPlaces) return std::nullopt;
  lap.ticks = static_cast<double>(ticks) * kTicksUnit;
  Steps at;
  for (std::uint64_t i = 0; i < places && reader.isGood(); ++i) {
    const Steps step{reader.takeSigned() + std::llround(1 / kTicksUnit), reader.takeSigned(),
                     reader.takeSigned()};
    at = {at.ticks + step.ticks, at.distance + step.distance, at.lateral + step.lateral};
    const bool isLater = lap.places.empty() || step.ticks > 0;
    if (!isLater || !isSensible(at.ticks) || !isSensible(at.distance) || !isSensible(at.lateral)) {
      return std::nullopt;
    }
    lap.places.push_back(placeAt(at));
  }
  return reader.isGood() ? std::optional(lap) : std::nullopt;
}

std::optional<GhostFile> takeFile(Reader& reader) {
  GhostFile file;
  const std::uint64_t track = reader.take();
  const std::uint64_t laps = reader.take();
  if (track < 1 || track > kTracks || laps > kMostLaps) return std::nullopt;
  file.track = static_cast<int>(track);
  for (std::uint64_t i = 0; i < laps; ++i) {
    auto lap = takeLap(reader);
    if (!lap) return std::nullopt;
    file.ghosts.push_back(std::move(*lap));
  }
  return reader.isAtEnd() ? std::optional(file) : std::nullopt;
}

}  // namespace

std::string ghostFileName(int track) {
  return recordPrefix(track) + kGhostSuffix;
}

std::string encodeGhosts(const GhostFile& file) {
  std::string bytes(kMark);
  bytes += kVersion;
  put(bytes, static_cast<std::uint64_t>(file.track));
  put(bytes, file.ghosts.size());
  for (const GhostLap& lap : file.ghosts) putLap(bytes, lap);
  return withChecksum(bytes);
}

std::string withChecksum(const std::string& content) {
  return content + checksumBytes(content);
}

GhostReading decodeGhosts(const std::string& bytes) {
  const std::size_t head = kMark.size() + 1;
  if (bytes.size() < head + kChecksumBytes || !bytes.starts_with(kMark)) {
    return {.fault = GhostFault::kDamaged, .file = {}};
  }
  const std::string_view content = std::string_view(bytes).substr(0, bytes.size() - kChecksumBytes);
  if (bytes[kMark.size()] != kVersion) return {.fault = GhostFault::kOtherVersion, .file = {}};
  Reader reader(content.substr(head));
  const bool isWhole = bytes.ends_with(checksumBytes(content));
  auto file = isWhole ? takeFile(reader) : std::nullopt;
  if (!file) return {.fault = GhostFault::kDamaged, .file = {}};
  return {.fault = GhostFault::kNone, .file = std::move(*file)};
}

}  // namespace vorn
