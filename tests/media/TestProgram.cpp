// Does what would disturb the test process. The first argument names a function in the table of
// main(); the others are that function's arguments.

#include <fcntl.h>
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

std::string RunAndDescribe(DOSOutputs& outputs, const std::string& commandLine) {
  int events = 0;
  outputs.ReceiveOutputs = [&events](const std::string&) { ++events; };
  const std::string result = outputs.ExecuteCommand(commandLine);
  std::ostringstream text;
  text << "events " << events << ", result [" << result << "], Outputs [" << outputs.Outputs()
       << "]";
  return text.str();
}

int LowestFreeDescriptor() {
  return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC)).number();
}

// Closes standard descriptors, runs a tool, and writes to a file its text and whether a descriptor
// leaked. Arguments: the descriptors, a digit each; the file; the command line.
int RunWithoutDescriptors(const Arguments& arguments) {
  for (const char digit : arguments.at(0)) ::close(digit - '0');
  const int lowestBefore = LowestFreeDescriptor();
  DOSOutputs outputs;
  const std::string result = outputs.ExecuteCommand(arguments.at(2));
  const bool same = LowestFreeDescriptor() == lowestBefore;
  std::ofstream file(arguments.at(1));
  file << result << (same ? "and no descriptor leaked" : "and a descriptor lost");
  return EXIT_SUCCESS;
}

// Runs a tool "before", "during" and "after" a shortage of descriptors. Arguments: how many remain
// free; the command line, to which each of these words is added in turn.
int RunWithFreeDescriptors(const Arguments& arguments) {
  DOSOutputs outputs;
  std::cout << RunAndDescribe(outputs, arguments.at(1) + " before") << '\n';
  {
    constexpr rlim_t kFew = 64;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return EXIT_FAILURE;
    limit.rlim_cur = kFew;
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) return EXIT_FAILURE;
    std::vector<Descriptor> taken;
    while (Descriptor one{::open("/dev/null", O_RDONLY | O_CLOEXEC)}) {
      taken.push_back(std::move(one));
    }
    taken.resize(taken.size() - std::stoul(arguments.at(0)));
    std::cout << RunAndDescribe(outputs, arguments.at(1) + " during") << '\n';
  }
  std::cout << RunAndDescribe(outputs, arguments.at(1) + " after") << '\n';
  return EXIT_SUCCESS;
}

// Runs a tool that prints as many KiB as the argument says, and takes the first block only when the
// tool has ended. Prints the growth of the program's peak memory in KiB.
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

// Makes a join's list, a working file and a file's short path in a private folder, prints the short
// path, and ends. Arguments: the folder's parent; how to end; the file.
int UsePrivateFolder(const Arguments& arguments) {
  const std::string& links = arguments.at(0);
  const std::string& end = arguments.at(1);
  std::ofstream(PrivateListFile(links)) << "the list";
  std::ofstream(PrivateWorkFile("sample.mp4", {links})) << "the sample";
  std::cout << GetShortFileName(arguments.at(2), {}, links) << std::endl;
  if (end == "crash after starting a child" && std::system("/bin/sleep 60 & echo $!") != 0) {
    return EXIT_FAILURE;
  }
  if (end.starts_with("crash")) return std::raise(SIGKILL);
  if (end == "fork") {
    const pid_t copy = ::fork();
    if (copy == 0) return EXIT_SUCCESS;
    ::waitpid(copy, nullptr, 0);
    std::cout << "copy ended" << std::endl;
  }
  if (end != "return") std::cin.get();
  return EXIT_SUCCESS;
}

// Prints the tools' folder for a program in the given folder, and waits for input.
int PrintToolsFolder(const Arguments& arguments) {
  std::cout << ToolsFolder(arguments.at(0)) << std::endl;
  std::cin.get();
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace kelvane

int main(int count, char** values) {
  using kelvane::Arguments;
  static const std::map<std::string, int (*)(const Arguments&)> kFunctions = {
      {"run-without-descriptors", kelvane::RunWithoutDescriptors},
      {"run-with-free-descriptors", kelvane::RunWithFreeDescriptors},
      {"flood", kelvane::Flood},
      {"private-folder", kelvane::UsePrivateFolder},
      {"tools-folder", kelvane::PrintToolsFolder},
  };
  const Arguments all(values + 1, values + count);
  return kFunctions.at(all.at(0))(Arguments(all.begin() + 1, all.end()));
}
