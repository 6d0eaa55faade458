#include "pack.h"

#include <sndfile.hh>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "layout.h"

namespace vorn::sounds {
namespace {

/// A file in memory, written through libsndfile's callbacks.
struct MemoryFile {
  std::string bytes;
  std::size_t position = 0;
};

MemoryFile& fileOf(void* user) {
  return *static_cast<MemoryFile*>(user);
}

SF_VIRTUAL_IO memoryCallbacks() {
  SF_VIRTUAL_IO callbacks{};
  callbacks.get_filelen = [](void* user) { return static_cast<sf_count_t>(fileOf(user).bytes.size()); };
  callbacks.seek = [](sf_count_t offset, int whence, void* user) {
    MemoryFile& file = fileOf(user);
    const auto base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.position : file.bytes.size();
    file.position = base + static_cast<std::size_t>(offset);
    return static_cast<sf_count_t>(file.position);
  };
  callbacks.read = [](void*, sf_count_t, void*) -> sf_count_t { return 0; };
  callbacks.write = [](const void* source, sf_count_t count, void* user) {
    MemoryFile& file = fileOf(user);
    const auto size = static_cast<std::size_t>(count);
    file.bytes.resize(std::max(file.bytes.size(), file.position + size));
    std::memcpy(file.bytes.data() + file.position, source, size);
    file.position += size;
    return count;
  };
  callbacks.tell = [](void* user) { return static_cast<sf_count_t>(fileOf(user).position); };
  return callbacks;
}

/// The samples as 16 bits, those of 8 bits in their upper half.
std::vector<std::int16_t> samplesOf(const std::string& data, const Format& format) {
  std::vector<std::int16_t> samples;
  for (std::size_t i = 0; i < data.size(); i += static_cast<std::size_t>(format.bits) / 8) {
    const auto low = static_cast<unsigned char>(data[i]);
    const int value =
        format.bits == 8 ? (low - 128) * 256 : low | static_cast<signed char>(data[i + 1]) * 256;
    samples.push_back(static_cast<std::int16_t>(value));
  }
  return samples;
}

std::string asFlac(const std::vector<std::int16_t>& samples, const Format& format) {
  constexpr double kSmallest = 1;
  MemoryFile memory;
  SF_VIRTUAL_IO callbacks = memoryCallbacks();
  {
    SndfileHandle flac(callbacks, &memory, SFM_WRITE, SF_FORMAT_FLAC | SF_FORMAT_PCM_16, format.channels,
                       format.rate);
    double compression = kSmallest;
    flac.command(SFC_SET_COMPRESSION_LEVEL, &compression, sizeof compression);
    const auto count = static_cast<sf_count_t>(samples.size());
    if (flac.write(samples.data(), count) != count) throw std::runtime_error(flac.strError());
  }
  return memory.bytes;
}

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw std::runtime_error(path + " cannot be read");
  return bytes;
}

}  // namespace

void writePack(const std::string& folder, const std::string& file) {
  std::string index, blobs;
  for (const CatalogueEntry& entry : soundCatalogue()) {
    const Layout layout = layoutOf(entry.name);
    const std::string name = soundFileName(entry.name);
    const std::string bytes = contentOf(folder + "/" + name);
    const std::size_t header = layout.header.size(),
                      end = header + static_cast<std::size_t>(layout.dataBytes);
    if (bytes.size() < end) throw std::runtime_error(name + " is too short");
    const std::string flac =
        asFlac(samplesOf(bytes.substr(header, end - header), layout.format), layout.format);
    const auto number = [](const char* what, std::size_t value) {
      return std::string(",\"") + what + "\":" + std::to_string(value);
    };
    index += (index.empty() ? "[" : ",") + std::string("{\"name\":\"") + name + "\"" +
             number("rate", static_cast<std::size_t>(layout.format.rate)) +
             number("channels", static_cast<std::size_t>(layout.format.channels)) +
             number("bits", static_cast<std::size_t>(layout.format.bits)) + number("before", header) +
             number("flac", flac.size()) + number("after", bytes.size() - end) + "}";
    blobs += bytes.substr(0, header) + flac + bytes.substr(end);
  }
  index += "]";
  std::ofstream out(file, std::ios::binary);
  for (int shift = 0; shift < 32; shift += 8) out.put(static_cast<char>(index.size() >> shift & 0xFF));
  out << index << blobs;
  if (!out.flush()) throw std::runtime_error(file + " cannot be written");
}

}  // namespace vorn::sounds
