// Runs the targets without a fuzzer: on the kept inputs, and on others made of them, which are the
// same in every run.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "Target.h"

namespace kelvane::fuzz {
namespace {

class Replay : public ::testing::TestWithParam<const Target*> {
 protected:
  Replay() {
    const auto folder = std::filesystem::path(KELVANE_FUZZ_CORPUS) / GetParam()->name;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      std::ifstream file(entry.path(), std::ios::binary);
      kept_[entry.path().filename()].assign(std::istreambuf_iterator<char>(file), {});
    }
  }

  static void Try(const std::string& bytes) {
    try {
      GetParam()->run(bytes);
    } catch (const Disagreement& disagreement) {
      ADD_FAILURE() << disagreement.what() << "\n  input: " << Readable(bytes);
    }
  }

  std::map<std::string, std::string> kept_;  // by file name
};

TEST_P(Replay, AgreesWithTheModelForTheKeptInputs) {
  ASSERT_GE(kept_.size(), 5U);
  for (const auto& [name, bytes] : kept_) {
    SCOPED_TRACE(name);
    Try(bytes);
  }
}

TEST_P(Replay, AgreesWithTheModelForMixturesOfTheKeptInputs) {
  std::mt19937 random(20240229);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  const auto part = [&] {
    auto kept = kept_.begin();
    std::advance(kept, static_cast<int>(below(kept_.size())));
    const std::string& bytes = kept->second;
    return bytes.substr(below(2) * below(bytes.size() + 1), below(bytes.size() + 1));
  };
  for (int count = 0; count < 400 && !HasFailure(); ++count) {
    std::string input = part() + part();
    for (std::size_t change = below(6); change > 0 && !input.empty(); --change) {
      input.replace(below(input.size()), below(4), below(2), static_cast<char>(below(256)));
    }
    Try(input);
  }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay,
                         ::testing::Values(&kJoiner, &kMainWindow, &kNumbersAndTimes, &kShortPaths),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
}  // namespace kelvane::fuzz
