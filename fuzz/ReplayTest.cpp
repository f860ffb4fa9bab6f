// Every target once more without a fuzzer: over the inputs that were kept, and over new ones made
// of them, the same in every run.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "Target.h"

namespace kelvane::fuzz {
namespace {

// By their names.
std::map<std::string, std::string> Corpus(const Target& target) {
  std::map<std::string, std::string> inputs;
  const std::filesystem::path folder = std::filesystem::path(KELVANE_FUZZ_CORPUS) / target.name;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path(), std::ios::binary);
    inputs[entry.path().filename()].assign(std::istreambuf_iterator<char>(file), {});
  }
  return inputs;
}

// Inputs that are parts of kept ones, with a few bytes changed.
class Generator {
 public:
  explicit Generator(const Target& target) {
    for (const auto& [name, bytes] : Corpus(target)) kept_.push_back(bytes);
  }

  std::string Next() {
    std::string input = Part() + Part();
    for (std::size_t change = Below(6); change > 0 && !input.empty(); --change) {
      const std::size_t place = Below(input.size());
      switch (Below(3)) {
        case 0:
          input[place] = static_cast<char>(Below(256));
          break;
        case 1:
          input.insert(place, 1, static_cast<char>(Below(256)));
          break;
        default:
          input.erase(place, 1 + Below(4));
      }
    }
    return input;
  }

 private:
  std::size_t Below(std::size_t limit) { return random_() % limit; }
  std::string Part() {
    const std::string& bytes = kept_[Below(kept_.size())];
    const std::size_t from = Below(2) == 0 ? 0 : Below(bytes.size() + 1);
    return bytes.substr(from, Below(bytes.size() + 1));
  }

  std::vector<std::string> kept_;
  std::mt19937 random_{20240229};
};

void Try(const Target& target, const std::string& name, const std::string& bytes) {
  try {
    target.run(bytes);
  } catch (const std::exception& disagreement) {
    ADD_FAILURE() << name << ": " << disagreement.what() << "\n  input: " << Readable(bytes);
  }
}

class Replay : public ::testing::TestWithParam<const Target*> {};

TEST_P(Replay, TheKeptInputsAgreeWithTheModel) {
  const auto kept = Corpus(*GetParam());
  ASSERT_GE(kept.size(), 5U);
  for (const auto& [name, bytes] : kept) Try(*GetParam(), name, bytes);
}

TEST_P(Replay, InputsMadeOfTheKeptOnesAgreeWithTheModel) {
  constexpr int kInputs = 400;
  Generator generator(*GetParam());
  for (int number = 0; number < kInputs && !HasFailure(); ++number) {
    Try(*GetParam(), "input " + std::to_string(number), generator.Next());
  }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay,
                         ::testing::Values(&kCommandLine, &kJobWindow, &kJoiner, &kMainWindow,
                                           &kNumbersAndTimes, &kShortPaths),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
}  // namespace kelvane::fuzz
