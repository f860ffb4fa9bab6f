// What a block costs through the console runner, with a handler that counts, against a bare loop of
// reads of the same size over the same tool's output. All sizes, and both ways of each, are
// measured in turn inside each pass, so that the ratios don't follow the machine's moods. Where
// appending cost more the longer the text is, the runner's figures would rise from the first size
// to the last.
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Pairs.h"
#include "media/DOSOutputs.h"
#include "support/Process.h"

namespace {

constexpr std::int64_t kMebibyte = 1 << 20;
constexpr std::size_t kBlockSize = 256;

using namespace kelvane::bench;

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// What one pass has taken, and how much of the tool's output it has seen.
struct Pass {
  double seconds = 0;
  std::int64_t blocks = 0;
  std::int64_t bytes = 0;

  double NanosecondsPerBlock() const { return seconds * 1e9 / static_cast<double>(blocks); }
};

Pass ThroughRunner(std::int64_t bytes) {
  Pass pass;
  kelvane::DOSOutputs outputs;
  outputs.ReceiveOutputs = [&pass](const std::string& block) {
    ++pass.blocks;
    pass.bytes += static_cast<std::int64_t>(block.size());
  };
  const auto start = std::chrono::steady_clock::now();
  const std::string text =
      outputs.ExecuteCommand("/usr/bin/head -c " + std::to_string(bytes) + " /dev/zero");
  pass.seconds = SecondsSince(start);
  Need(text.size() == static_cast<std::size_t>(bytes), "the text isn't kept whole");
  return pass;
}

Pass ThroughBareReads(std::int64_t bytes) {
  Pass pass;
  const auto start = std::chrono::steady_clock::now();
  kelvane::testing::Process tool({"/usr/bin/head", "-c", std::to_string(bytes), "/dev/zero"});
  std::array<char, kBlockSize> block{};
  for (ssize_t got = 0; (got = read(tool.Output(), block.data(), block.size())) > 0;) {
    ++pass.blocks;
    pass.bytes += got;
  }
  pass.seconds = SecondsSince(start);
  return pass;
}

// What a block costs at an output of this many mebibytes, pass by pass, in nanoseconds.
struct Size {
  std::int64_t mebibytes;
  std::vector<double> runner = {};
  std::vector<double> bare = {};
  std::vector<double> ratios = {};

  void Measure() {
    const Pass ours = ThroughRunner(mebibytes * kMebibyte);
    const Pass theirs = ThroughBareReads(mebibytes * kMebibyte);
    Need(ours.bytes == mebibytes * kMebibyte && ours.bytes == theirs.bytes,
         "the tool's output didn't come whole");
    runner.push_back(ours.NanosecondsPerBlock());
    bare.push_back(theirs.NanosecondsPerBlock());
    ratios.push_back(runner.back() / bare.back());
  }

  void Print() const {
    std::printf("%d MiB of a tool's output, %d passes: min, median, max\n",
                static_cast<int>(mebibytes), static_cast<int>(runner.size()));
    PrintRow("runner, ns to a block", runner);
    PrintRow("bare reads, ns to a block", bare);
    PrintRow("ratio", ratios);
    PrintFigure("runner: a block of " + std::to_string(mebibytes) + " MiB against bare reads",
                At(ratios, 0.5));
  }
};

void Run() {
  constexpr int kPasses = 5;
  constexpr double kFlat = 1.25;
  std::array sizes = {Size{1}, Size{16}, Size{256}};
  std::vector<double> growth;
  for (int pass = 0; pass < kPasses; ++pass) {
    for (Size& size : sizes) size.Measure();
    growth.push_back(sizes.back().runner.back() / sizes.front().runner.back());
  }
  kelvane::DOSOutputs::ReapEndedChildren();
  for (const Size& size : sizes) size.Print();
  PrintVerdict("runner: a block of 256 MiB against one of 1 MiB", At(growth, 0.5), kFlat);
}

}  // namespace

int main() { return ToEnd(Run); }
