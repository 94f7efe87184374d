#include "benchmarks/Memory.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace ktrv::benchmarks {

Memory MemoryInUse() {
  Memory memory;
  std::ifstream status("/proc/self/status");
  for (std::string name; status >> name;) {
    double kibibytes = 0;
    if (name == "VmRSS:" && status >> kibibytes) memory.Now = kibibytes * 1024;
    if (name == "VmHWM:" && status >> kibibytes) memory.Peak = kibibytes * 1024;
  }
  return memory;
}

std::vector<double> InOwnProcess(const std::function<std::vector<double>()>& measure) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    close(ends[0]);
    int code = 1;
    try {
      const std::vector<double> numbers = measure();
      const auto bytes = static_cast<ssize_t>(numbers.size() * sizeof(double));
      code = write(ends[1], numbers.data(), static_cast<std::size_t>(bytes)) == bytes ? 0 : 1;
    } catch (...) {
    }
    _exit(code);
  }
  close(ends[1]);
  std::vector<double> numbers;
  for (double number = 0; read(ends[0], &number, sizeof number) == sizeof number;) {
    numbers.push_back(number);
  }
  close(ends[0]);
  int state = 0;
  waitpid(child, &state, 0);
  if (state != 0) throw std::runtime_error("a measurement failed in its process");
  return numbers;
}

}  // namespace ktrv::benchmarks
