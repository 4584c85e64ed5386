// Runs a target without a fuzzer: over the files given as they are, and over the files of folders
// also in damaged forms, the same every time.

#include <random>
#include <vector>

#include "support.hpp"

namespace {

// Damaged at every byte; a larger file in so many places.
constexpr std::size_t smallFile = 1536;
constexpr std::size_t places = 60;

void run(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

// Cut, with a bit turned, and at times with a piece replaced by another.
void runDamaged(const std::string& bytes) {
  std::mt19937 random(1);
  const std::size_t step = bytes.size() <= smallFile ? 1 : bytes.size() / places;
  for (std::size_t i = 0; i < bytes.size(); i += step) {
    run(bytes.substr(0, i));
    std::string damaged = bytes;
    damaged[i] = static_cast<char>(damaged[i] ^ 1 << i % 8);
    run(damaged);
    if (random() % 4 == 0)
      run(damaged.replace(i, random() % 8, bytes, random() % bytes.size(), random() % 32));
  }
}

}  // namespace

int main(int, char** argv) {
  while (*++argv != nullptr) {
    std::error_code isFile;
    if (!std::filesystem::is_directory(*argv)) run(larkstone::test::bytesOf(*argv));
    for (const auto& file : std::filesystem::directory_iterator(*argv, isFile)) {
      const std::string bytes = larkstone::test::bytesOf(file.path());
      run(bytes);
      runDamaged(bytes);
    }
  }
}
