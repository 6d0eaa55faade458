// Runs a fuzzer over every file of a corpus folder and over mutations of each,
// the same ones every time.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

constexpr int kMutationsAFile = 1000;

void runOn(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// Changes bytes a little, where files tend to be damaged.
class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::string operator()(std::string bytes) {
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) change(bytes);
    return bytes;
  }

 private:
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random_()) % limit; }

  void change(std::string& bytes) {
    static constexpr char kTelling[] = {0,   1,   8,   26,  '\r',   '\n',   ',',   '"',
                                        ' ', '-', '9', 'e', '\x7F', '\x80', '\xFF'};
    const std::size_t at = below(bytes.size() + 1);
    const std::size_t length = below(9);
    switch (below(5)) {
      case 0:
        bytes.insert(at, 1, kTelling[below(std::size(kTelling))]);
        break;
      case 1:
        bytes.erase(at, length);
        break;
      case 2:
        bytes.insert(at, bytes.substr(at, length));
        break;
      case 3:
        bytes.resize(at);
        break;
      default:
        if (at < bytes.size()) bytes[at] = static_cast<char>(below(256));
    }
  }

  std::mt19937 random_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " CORPUS_FOLDER\n";
    return 2;
  }
  int inputs = 0;
  for (const auto& entry : fs::directory_iterator(argv[1])) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    runOn(bytes);
    Mutator mutate(static_cast<unsigned>(bytes.size()));
    for (int i = 0; i < kMutationsAFile; ++i) runOn(mutate(bytes));
    inputs += 1 + kMutationsAFile;
  }
  std::cout << inputs << " inputs\n";
  return inputs > 0 ? 0 : 1;
}
