#include "checks.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <sndfile.hh>

namespace vorn::sounds {
namespace {

struct PositionPlayed {
  std::string_view name;
  int largest;
};
/// Engines: step x 108 + jitter, since revolutions may overshoot to just under
/// 108. Brake: its clamp. Walls: where the right copy starts.
constexpr std::array kPositionsPlayed{
    PositionPlayed{"vorn1", 216633}, PositionPlayed{"vorn30", 218361}, PositionPlayed{"vorn31", 109322},
    PositionPlayed{"vorn32", 91158}, PositionPlayed{"vorn33", 181125}, PositionPlayed{"vorn34", 264477},
    PositionPlayed{"vorn8", 114848}, PositionPlayed{"vorn16", 44159},  PositionPlayed{"vorn23", 44159},
    PositionPlayed{"vorn24", 44159},
};

std::string fault(std::string_view what, long long found, long long wanted) {
  return std::string(what) + " is " + std::to_string(found) + ", must be " + std::to_string(wanted);
}

void expectEqual(std::vector<std::string>& faults, std::string_view what, long long found, long long wanted) {
  if (found != wanted) faults.push_back(fault(what, found, wanted));
}

void checkFigures(const CatalogueEntry& entry, std::string_view bytes, std::vector<std::string>& faults) {
  const ItemFigures figures = readItems(bytes);
  expectEqual(faults, "size in bytes", static_cast<long long>(bytes.size()), entry.bytes);
  expectEqual(faults, "number of items", figures.items, entry.items);
  expectEqual(faults, "length of the last item", figures.lastItemLength, entry.lastItemLength);
}

void checkFormat(const Layout& layout, const std::string& path, std::vector<std::string>& faults) {
  SndfileHandle file(path);
  if (file.error() != SF_ERR_NO_ERROR) {
    faults.push_back(std::string("not a sound file: ") + file.strError());
    return;
  }
  const int subtype = layout.format.bits == 8 ? SF_FORMAT_PCM_U8 : SF_FORMAT_PCM_16;
  expectEqual(faults, "format", file.format(), SF_FORMAT_WAV | subtype);
  expectEqual(faults, "sampling rate", file.samplerate(), layout.format.rate);
  expectEqual(faults, "number of channels", file.channels(), layout.format.channels);
  expectEqual(faults, "number of frames", file.frames(), layout.frames());
  const long long dataBytes = file.frames() * layout.format.blockBytes();
  const int largest = largestPositionPlayed(layout.entry.name);
  if (largest >= dataBytes) {
    faults.push_back("the game plays from byte " + std::to_string(largest) + ", the recording has only " +
                     std::to_string(dataBytes));
  }
}

}  // namespace

int largestPositionPlayed(std::string_view name) {
  const auto found = std::find_if(kPositionsPlayed.begin(), kPositionsPlayed.end(),
                                  [name](const PositionPlayed& row) { return row.name == name; });
  return found == kPositionsPlayed.end() ? -1 : found->largest;
}

std::vector<std::string> faultsOfFile(const Layout& layout, const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return {"cannot be opened"};
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) return {"cannot be read"};
  std::vector<std::string> faults;
  checkFigures(layout.entry, bytes, faults);
  checkFormat(layout, path, faults);
  return faults;
}

}  // namespace vorn::sounds
