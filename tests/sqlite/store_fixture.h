// A home in a temporary folder for the real backend, and children that do something to it and report by exit code.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "platform/api/backend.h"
#include "platform/sqlite/store.h"

namespace heron::test {

class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "heron-test-XXXXXX").native();
    path = mkdtemp(name.data());
    chmod(path.c_str(), 0755);  // children of another user must get in
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::filesystem::path path;
};

inline std::unique_ptr<store::StoreBackend> InstallAt(const std::filesystem::path& home, int busy_limit = 10000) {
  store::StoreOptions options;
  options.home = home;
  options.user = "user";
  options.process = u"/bin/test";
  options.busy_limit = std::chrono::milliseconds(busy_limit);
  return store::InstallStoreBackend(std::move(options));
}

/// Runs `work` in a child, which ends without any clean-up with what it returns; starts and doesn't wait.
inline pid_t StartChild(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  return child;
}
inline int WaitForChild(pid_t child) {
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
inline int RunChild(const std::function<int()>& work) {
  return WaitForChild(StartChild(work));
}

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace heron::test
