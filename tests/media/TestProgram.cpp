// Uses the media room in a process of its own, in ways that a test can't be put to itself. The
// first argument says how; what it finds goes to standard output, or to a file where there is none.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "media/DOSOutputs.h"
#include "media/Descriptor.h"
#include "media/Module1.h"

namespace kelvane {
namespace {

using Arguments = std::vector<std::string>;

std::string RunAndTell(DOSOutputs& outputs, const std::string& commandLine) {
  int events = 0;
  outputs.ReceiveOutputs = [&events](const std::string&) { ++events; };
  const std::string result = outputs.ExecuteCommand(commandLine);
  std::ostringstream told;
  told << "events " << events << ", result [" << result << "], held [" << outputs.Outputs() << "]";
  return told.str();
}

int LowestFreeDescriptor() {
  return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC)).number();
}

// Descriptors to close, one digit each; file to write to; command line.
int RunWithoutDescriptors(const Arguments& arguments) {
  for (const char digit : arguments.at(0)) ::close(digit - '0');
  const int lowestBefore = LowestFreeDescriptor();
  DOSOutputs outputs;
  const std::string result = outputs.ExecuteCommand(arguments.at(2));
  const bool same = LowestFreeDescriptor() == lowestBefore;
  std::ofstream file(arguments.at(1));
  file << result << (same ? "and no descriptor lost" : "and a descriptor lost");
  return EXIT_SUCCESS;
}

// How many descriptors to leave free; command line for before, amid and after the shortage.
int RunWithFreeDescriptors(const Arguments& arguments) {
  DOSOutputs outputs;
  std::cout << RunAndTell(outputs, arguments.at(1) + " before") << '\n';
  {
    constexpr rlim_t kFew = 64;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return EXIT_FAILURE;
    limit.rlim_cur = kFew;
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return EXIT_FAILURE;
    std::vector<Descriptor> taken;
    while (Descriptor one{::open("/dev/null", O_RDONLY | O_CLOEXEC)})
      taken.push_back(std::move(one));
    taken.resize(taken.size() - std::stoul(arguments.at(0)));
    std::cout << RunAndTell(outputs, arguments.at(1) + " amid") << '\n';
  }
  std::cout << RunAndTell(outputs, arguments.at(1) + " after") << '\n';
  return EXIT_SUCCESS;
}

// How many KiB a tool prints, all of them before the first block is taken; tells by how many KiB
// the program's memory has grown at most.
int Flood(const Arguments& arguments) {
  const auto mostMemory = [] {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
  };
  const long before = mostMemory();
  DOSOutputs outputs;
  outputs.ReceiveOutputs = [first = true](const std::string&) mutable {
    siginfo_t ended{};
    if (std::exchange(first, false)) ::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
  };
  outputs.ExecuteCommand("/usr/bin/head -c " + arguments.at(0) + "K /dev/zero");
  std::cout << mostMemory() - before << std::endl;
  return EXIT_SUCCESS;
}

// Folder of the links; way to end; paths.
int ShortPaths(const Arguments& arguments) {
  for (std::size_t place = 2; place < arguments.size(); ++place) {
    std::cout << GetShortFileName(arguments[place], {}, arguments[0]) << std::endl;
  }
  const std::string& end = arguments.at(1);
  if (end == "exit") std::exit(EXIT_SUCCESS);
  if (end == "crash") return std::raise(SIGKILL);
  if (end == "wait") std::cin.get();
  if (end == "crash beside another program") {
    pid_t other = 0;
    std::vector<std::string> line = {"/bin/sleep", "60"};
    std::vector<char*> pointers = {line[0].data(), line[1].data(), nullptr};
    if (::posix_spawn(&other, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0) {
      return EXIT_FAILURE;
    }
    std::cout << other << std::endl;
    return std::raise(SIGKILL);
  }
  if (end == "fork") {
    // The copy of the program ends in the ordinary way, and the program after it.
    const pid_t copy = ::fork();
    if (copy == 0) return EXIT_SUCCESS;
    ::waitpid(copy, nullptr, 0);
    std::cout << "copy ended" << std::endl;
    std::cin.get();
  }
  return EXIT_SUCCESS;
}

// Folder of the links; "crash" or "wait".
int ListFiles(const Arguments& arguments) {
  const std::string path = PrivateListFile(arguments.at(0));
  std::ofstream(path) << "the list";
  std::cout << path << std::endl;
  if (arguments.at(1) == "crash") return std::raise(SIGKILL);
  std::cin.get();
  return EXIT_SUCCESS;
}

// Folders of programs.
int ToolsFolders(const Arguments& arguments) {
  for (const std::string& folder : arguments) std::cout << ToolsFolder(folder) << std::endl;
  std::cin.get();
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace kelvane

int main(int count, char** values) {
  using kelvane::Arguments;
  static const std::map<std::string, int (*)(const Arguments&)> kWays = {
      {"run-without-descriptors", kelvane::RunWithoutDescriptors},
      {"run-with-free-descriptors", kelvane::RunWithFreeDescriptors},
      {"flood", kelvane::Flood},
      {"short-paths", kelvane::ShortPaths},
      {"list-files", kelvane::ListFiles},
      {"tools-folders", kelvane::ToolsFolders},
  };
  const Arguments all(values + 1, values + count);
  return kWays.at(all.at(0))(Arguments(all.begin() + 1, all.end()));
}
