// What a block costs through the console runner, with a handler that counts, against a bare loop of
// reads of the same size over the same tool's output. Both are measured in turn inside each pass,
// so that the ratio doesn't follow the machine's moods. Where appending cost more the longer the
// text is, the runner's figures would rise from the first size to the last.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "media/DOSOutputs.h"

namespace {

constexpr std::int64_t kMebibyte = 1 << 20;
constexpr std::size_t kBlockSize = 256;

struct Measure {
  double seconds = 0;
  std::int64_t blocks = 0;
  std::int64_t bytes = 0;
};

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void MeasureRunner(std::int64_t bytes, Measure& measure) {
  kelvane::DOSOutputs outputs;
  outputs.ReceiveOutputs = [&measure](const std::string& block) {
    ++measure.blocks;
    measure.bytes += static_cast<std::int64_t>(block.size());
  };
  const auto start = std::chrono::steady_clock::now();
  const std::string text =
      outputs.ExecuteCommand("/usr/bin/head -c " + std::to_string(bytes) + " /dev/zero");
  benchmark::DoNotOptimize(text.data());
  measure.seconds += SecondsSince(start);
}

void MeasureBareRead(std::int64_t bytes, Measure& measure) {
  const auto start = std::chrono::steady_clock::now();
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
  std::string count = std::to_string(bytes);
  std::array<std::string, 4> arguments = {"/usr/bin/head", "-c", count, "/dev/zero"};
  std::array<char*, 5> pointers{};
  std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                 [](std::string& argument) { return argument.data(); });
  pid_t child = 0;
  const int failure =
      posix_spawn(&child, pointers.front(), &files, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  close(ends[1]);
  std::array<char, kBlockSize> block{};
  for (ssize_t got = 1; failure == 0 && got > 0;) {
    got = read(ends[0], block.data(), block.size());
    benchmark::DoNotOptimize(block.data());
    ++measure.blocks;
    measure.bytes += got;
  }
  close(ends[0]);
  measure.seconds += SecondsSince(start);
  if (failure == 0) waitpid(child, nullptr, 0);
}

// The number of mebibytes is the argument.
void BM_RunnerAgainstBareRead(benchmark::State& state) {
  const std::int64_t bytes = state.range(0) * kMebibyte;
  Measure runner;
  Measure bare;
  for ([[maybe_unused]] auto pass : state) {
    MeasureRunner(bytes, runner);
    MeasureBareRead(bytes, bare);
  }
  kelvane::DOSOutputs::ReapEndedChildren();
  if (runner.bytes != bytes * state.iterations() || bare.bytes != runner.bytes) {
    state.SkipWithError("the tool's output didn't come whole");
    return;
  }
  constexpr double kNanoseconds = 1e9;
  const auto nanosecondsPerBlock = [](const Measure& measure) {
    return measure.seconds / static_cast<double>(measure.blocks) * kNanoseconds;
  };
  state.counters["runner_ns/block"] = nanosecondsPerBlock(runner);
  state.counters["bare_ns/block"] = nanosecondsPerBlock(bare);
  state.counters["ratio"] = nanosecondsPerBlock(runner) / nanosecondsPerBlock(bare);
}

double Least(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

double Most(const std::vector<double>& values) {
  return *std::max_element(values.begin(), values.end());
}

BENCHMARK(BM_RunnerAgainstBareRead)
    ->ArgName("MiB")
    ->Arg(1)
    ->Arg(16)
    ->Arg(256)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(5)
    ->ComputeStatistics("min", Least)
    ->ComputeStatistics("max", Most)
    ->ReportAggregatesOnly();

}  // namespace

BENCHMARK_MAIN();
