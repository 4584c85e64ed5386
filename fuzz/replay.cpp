// Runs a target without a fuzzer: over the files and folders given, and with --mutate also over
// each file in many damaged forms, the same every time.

#include <algorithm>
#include <random>
#include <vector>

#include "support.hpp"

namespace {

constexpr std::size_t longestTakenApart = 1536;
constexpr std::size_t mostVariants = 400;  // of one kind, of one file
constexpr int randomVariants = 200;

void run(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

// Cut at every byte and with a bit of every byte turned; of a longer file a part, evenly spread.
void runTakenApart(const std::string& bytes) {
  const std::size_t step = bytes.size() / mostVariants + 1;
  for (std::size_t i = 0; i < bytes.size(); i += step) {
    run(bytes.substr(0, i));
    std::string turned = bytes;
    turned[i] = static_cast<char>(turned[i] ^ 1 << i % 8);
    run(turned);
  }
}

// Bytes of special value in some places, and pieces moved, doubled and dropped.
void runShuffled(const std::string& bytes, std::mt19937& random) {
  const auto below = [&random](std::size_t limit) { return random() % (limit + 1); };
  for (int variant = 0; variant < randomVariants; ++variant) {
    std::string shuffled = bytes;
    for (auto changes = below(4) + 1; changes > 0; --changes) {
      const std::size_t place = below(shuffled.size());
      const std::size_t length = below(std::min<std::size_t>(shuffled.size() - place, 32));
      constexpr std::string_view special("\0\x01\x7F\x80\xFE\xFF<>,;", 10);
      if (variant % 2 == 0) {
        shuffled.replace(place, std::min<std::size_t>(length, 1), 1, special[below(9)]);
      } else if (variant % 4 == 1) {
        shuffled.erase(place, length);
      } else {
        shuffled.insert(below(shuffled.size()), shuffled.substr(place, length));
      }
    }
    run(shuffled);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool mutate = !arguments.empty() && arguments.front() == "--mutate";
  std::vector<std::filesystem::path> files;
  for (std::size_t i = mutate ? 1 : 0; i < arguments.size(); ++i) {
    if (std::filesystem::is_directory(arguments[i])) {
      std::copy(std::filesystem::directory_iterator(arguments[i]), {}, std::back_inserter(files));
    } else {
      files.emplace_back(arguments[i]);
    }
  }
  std::sort(files.begin(), files.end());
  larkstone::fuzz::require(!files.empty(), "there are files to run");
  std::mt19937 random(1);
  for (const auto& file : files) {
    const std::string bytes = larkstone::test::bytesOf(file);
    run(bytes);
    if (!mutate || bytes.size() > longestTakenApart) continue;
    runTakenApart(bytes);
    runShuffled(bytes, random);
  }
}
