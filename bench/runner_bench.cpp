// The cost of a block of a tool's output through the console runner, against a bare loop that reads
// blocks of the same size, for three sizes of the output.
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "Pairs.h"
#include "media/DOSOutputs.h"
#include "support/Process.h"

namespace {

using namespace kelvane::bench;

constexpr std::size_t kBlockSize = 256;

// These two return nanoseconds for a block.
double ThroughRunner(std::size_t bytes) {
  int blocks = 0;
  kelvane::DOSOutputs outputs;
  outputs.ReceiveOutputs = [&blocks](const std::string& /*block*/) { ++blocks; };
  const double begin = Now();
  const std::string text =
      outputs.ExecuteCommand("/usr/bin/head -c " + std::to_string(bytes) + " /dev/zero");
  const double seconds = Now() - begin;
  Need(text.size() == bytes, "the text isn't whole");
  return seconds * 1e9 / blocks;
}

double ThroughBareReads(std::size_t bytes) {
  int blocks = 0;
  std::size_t all = 0;
  const double begin = Now();
  const kelvane::testing::Process tool({"/usr/bin/head", "-c", std::to_string(bytes), "/dev/zero"});
  std::array<char, kBlockSize> block{};
  for (ssize_t got = 0; (got = read(tool.Output(), block.data(), block.size())) > 0; ++blocks) {
    all += static_cast<std::size_t>(got);
  }
  const double seconds = Now() - begin;
  Need(all == bytes, "the tool's output isn't whole");
  return seconds * 1e9 / blocks;
}

struct Size {
  std::size_t mebibytes;
  std::vector<double> runner = {};
  std::vector<double> bare = {};
  std::vector<double> ratios = {};
};

void Run() {
  constexpr int kPasses = 5;
  constexpr double kFlat = 1.25;
  std::array sizes = {Size{1}, Size{16}, Size{256}};
  std::vector<double> growth;
  for (int pass = 0; pass < kPasses; ++pass) {
    for (auto& [mebibytes, runner, bare, ratios] : sizes) {
      runner.push_back(ThroughRunner(mebibytes << 20U));
      bare.push_back(ThroughBareReads(mebibytes << 20U));
      ratios.push_back(runner.back() / bare.back());
    }
    growth.push_back(sizes.back().runner.back() / sizes.front().runner.back());
  }
  for (const auto& [mebibytes, runner, bare, ratios] : sizes) {
    const std::string size = std::to_string(mebibytes) + " MiB";
    std::printf("%s of a tool's output, %d passes: min, median, max\n", size.c_str(), kPasses);
    PrintRow("runner, ns for a block", runner);
    PrintRow("bare reads, ns for a block", bare);
    PrintRow("ratio", ratios);
    ReportFigure("runner: a block of " + size + " against bare reads", Quantile(ratios, 0.5));
  }
  ReportVerdict("runner: a block of 256 MiB against one of 1 MiB", Quantile(growth, 0.5), kFlat);
}

}  // namespace

int main() { return ToEnd(Run); }
