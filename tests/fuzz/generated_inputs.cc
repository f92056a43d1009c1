// Runs a fuzz target on the files of a seed folder and on COUNT mutations of them: `target COUNT
// SEED_FOLDER`.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);  // NOLINT

namespace {

void RunOn(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::vector<std::string> ReadSeeds(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  std::vector<std::string> seeds;
  for (const auto& path : files) {
    std::ifstream file(path, std::ios::binary);
    seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return seeds;
}

/// Mutates seeds: inserts, deletes and copies characters and fragments.
class Mutator {
 public:
  explicit Mutator(std::vector<std::string> seeds) : seeds_(std::move(seeds)) {}

  std::string Next() {
    std::string input = seeds_[Below(seeds_.size())];
    for (std::size_t changes = 1 + Below(6); changes > 0; --changes) Change(input);
    return input;
  }

 private:
  std::size_t Below(std::size_t bound) { return generator_() % bound; }
  char AnyCharacter() {
    static constexpr std::string_view kFrequent = "'\"%&=;,./-:\\()<>* 0129\0\r\n\xC3\x80\xFF";
    return Below(2) == 0 ? kFrequent[Below(kFrequent.size())] : static_cast<char>(generator_());
  }

  void Change(std::string& input) {
    const std::size_t at = Below(input.size() + 1);
    switch (Below(5)) {
      case 0:
        input.insert(at, 1, AnyCharacter());
        break;
      case 1:
        input.erase(at, 1 + Below(4));
        break;
      case 2:
        if (at < input.size()) input[at] = AnyCharacter();
        break;
      case 3:
        input.insert(at, input.substr(Below(input.size() + 1), 8));
        break;
      default:
        input.insert(at, seeds_[Below(seeds_.size())]);
    }
  }

  std::vector<std::string> seeds_;
  std::mt19937 generator_{20040315};  // NOLINT(cert-msc51-cpp): every run has the same inputs
};

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) return EXIT_FAILURE;
  const std::vector<std::string> seeds = ReadSeeds(arguments[2]);
  if (seeds.empty()) return EXIT_FAILURE;
  for (const std::string& seed : seeds) RunOn(seed);
  Mutator mutator(seeds);
  const long count = std::strtol(arguments[1], nullptr, 10);
  for (long i = 0; i < count; ++i) RunOn(mutator.Next());
  std::printf("%ld inputs\n", count);
  return EXIT_SUCCESS;
}
