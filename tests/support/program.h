#pragma once

#include <array>
#include <csignal>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orlune::testing {

/// The program as a child process, which ends with the object.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ORLUNE_PROGRAM);
    std::array<int, 2> ends;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) Become(arguments, ends[1]);
    close(ends[1]);
    output_ = ends[0];
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    if (!exitCode_) {
      kill(process_, SIGKILL);
      ExitCode();
    }
    close(output_);
  }

  void Signal(int signal) const { kill(process_, signal); }
  /// The next line of standard output and error; "" at the end.
  std::string ReadLine() const {
    std::string line;
    for (char c = 0; c != '\n' && read(output_, &c, 1) == 1;) line += c;
    return line;
  }
  std::string ReadAll() const {
    std::string all;
    for (std::string line = ReadLine(); !line.empty(); line = ReadLine()) all += line;
    return all;
  }
  int ExitCode() {
    int status = 0;
    if (!exitCode_ && waitpid(process_, &status, 0) == process_)
      exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return *exitCode_;
  }

 private:
  [[noreturn]] static void Become(const std::vector<std::string>& arguments, int output) {
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(127);
  }

  pid_t process_;
  int output_;
  std::optional<int> exitCode_;
};

}  // namespace orlune::testing
