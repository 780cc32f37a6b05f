// A process of a test's own, to be killed at any point.
#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

// A child process and a pipe from it. The child never returns from the action and runs none of the
// parent's destructors.
class Child {
 public:
  template <typename Action>
  explicit Child(const Action& action) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    pid_ = fork();
    if (pid_ == 0) {
      close(ends[0]);
      int result = 0;
      try {
        action(ends[1]);
      } catch (const std::exception&) {
        result = 1;
      }
      _exit(result);
    }
    close(ends[1]);
    in_ = ends[0];
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    kill(pid_, SIGKILL);
    finish();
    close(in_);
  }

  // False when the child has closed its end.
  bool receive(unsigned& number) const {
    return read(in_, &number, sizeof number) == sizeof number;
  }
  void killNow() const { kill(pid_, SIGKILL); }
  // The child's exit status, -1 when it was killed.
  int finish() {
    if (!finished_) waitpid(pid_, &status_, 0);
    finished_ = true;
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
  }

 private:
  pid_t pid_ = 0;
  int in_ = -1;
  int status_ = 0;
  bool finished_ = false;
};

inline void send(int pipe, unsigned number) {
  if (write(pipe, &number, sizeof number) != sizeof number) _exit(2);
}
