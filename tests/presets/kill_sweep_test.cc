// A process that ends at its n-th write, flush, rename or unlink, and a disk that is full from the n-th on: for every
// n, on the real store and real files. What is found afterwards is what was or what should be.
#include <dlfcn.h>
#include <sys/stat.h>

#include <cerrno>
#include <set>

#include "catalog/strings.h"
#include "engine/resolve_fixture.h"
#include "platform/api/queues.h"
#include "preset_fixture.h"
#include "presets/preset_library.h"
#include "sqlite/store_fixture.h"

namespace {

/// How many of the calls below may still be made; negative: all of them.
long calls_left = -1;
bool disk_is_full = false;  ///< whether the calls after that fail instead of ending the process

bool MayCall() {
  if (calls_left < 0) return true;
  if (calls_left-- > 0) return true;
  if (!disk_is_full) _exit(99);
  calls_left = 0;
  errno = ENOSPC;
  return false;
}

template <typename Function>
Function Real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// These take the place of the system's in this program, for SQLite too. Only what makes files or lets them grow can
// fail for want of room.
#pragma GCC visibility push(default)
extern "C" {
ssize_t write(int fd, const void* data, size_t size) {
  static const auto real = Real<ssize_t (*)(int, const void*, size_t)>("write");
  return MayCall() ? real(fd, data, size) : -1;
}
ssize_t pwrite64(int fd, const void* data, size_t size, off64_t at) {
  static const auto real = Real<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
  return MayCall() ? real(fd, data, size, at) : -1;
}
ssize_t pwrite(int fd, const void* data, size_t size, off_t at) {
  static const auto real = Real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
  return MayCall() ? real(fd, data, size, at) : -1;
}
int fsync(int fd) {
  static const auto real = Real<int (*)(int)>("fsync");
  struct stat info;
  if (disk_is_full && fstat(fd, &info) == 0 && S_ISDIR(info.st_mode)) return real(fd);
  return MayCall() ? real(fd) : -1;
}
int fdatasync(int fd) {
  static const auto real = Real<int (*)(int)>("fdatasync");
  return MayCall() ? real(fd) : -1;
}
int rename(const char* from, const char* to) {
  static const auto real = Real<int (*)(const char*, const char*)>("rename");
  return MayCall() ? real(from, to) : -1;
}
int unlink(const char* path) {
  static const auto real = Real<int (*)(const char*)>("unlink");
  if (disk_is_full) return real(path);
  return MayCall() ? real(path) : -1;
}
}
#pragma GCC visibility pop

namespace heron::test {
namespace {

namespace fs = std::filesystem;

struct SilentView : engine::ResolveView {
  bool Show(const engine::Report&) override { return true; }
};

/// A queue, its settings and its library in a home that exists.
class Desk {
 public:
  explicit Desk(const fs::path& home) : files_(home / "files"), backend_(InstallAt(home)) {
    platform::Queue queue;
    queue.name = u"P1";
    queue.dataFile = u"/nowhere/varnell.dat";
    if (platform::FindQueue(u"P1", nullptr) != platform::kErrorSuccess) platform::AddQueue(queue);
    printer_ = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    RefreshDriverDirectory(printer_.get());
    resources_.reset(OpenResourceContext(1));
    DriverEnv env;
    BuildDefaultEnv(resources_.get(), &env, u"P1", printer_.get());
    ui = CreateUiState(resources_.get(), env, printer_.get());
    library = SettingsLibraryOpen(view_, *ui, resources_.get(), LibraryLoad::kSettings);
  }

  bool Save(const char16_t* name, uint16_t copies) {
    *FieldsOf(*ui, ParamNamed<u"Copies">()).value = copies;
    return SaveSettingsAs(*library, *ui, files_.u16string(), name, {});
  }
  /// "One=1 Two=2": names with their copies, in order; an entry that can't be read says so.
  std::string Entries() const {
    std::string text;
    for (int place = 0; library != nullptr && place < library->count; ++place) {
      const LibraryEntry& entry = *library->At(place);
      text += platform::ToUtf8(entry.displayName) + '=' +
              std::to_string(*FieldsOf(*entry.state, ParamNamed<u"Copies">()).value) + ' ';
    }
    return text;
  }

  UiStatePtr ui;
  SettingsLibraryPtr library;

 private:
  fs::path files_;
  std::unique_ptr<store::StoreBackend> backend_;
  platform::UniquePrinter printer_;
  std::unique_ptr<ResourceContext, CloseContext> resources_;
  SilentView view_;
};

struct Act {
  const char* name;
  bool (*run)(Desk& desk);
  const char* after;  ///< the entries when it is done
};
constexpr char kBefore[] = "One=1 Two=2 ";
const Act kActs[] = {
    {"save", [](Desk& desk) { return desk.Save(u"Three", 3); }, "One=1 Two=2 Three=3 "},
    {"overwrite",
     [](Desk& desk) {
       LibraryEntry& entry = *desk.library->At(0);
       *FieldsOf(*entry.state, ParamNamed<u"Copies">()).value = 11;
       entry.dirty = EntryState::kChanged;
       return LibrarySaveIndex(*desk.library);
     },
     "One=11 Two=2 "},
    {"rename", [](Desk& desk) { return RenameSettings(*desk.library, 0, u"Eins"); }, "Eins=1 Two=2 "},
    {"move",
     [](Desk& desk) {
       return LibraryMove(*desk.library, 0, LibraryDirection::kDown) && LibrarySaveIndex(*desk.library);
     },
     "Two=2 One=1 "},
    {"remove", [](Desk& desk) { return RemoveSettings(*desk.library, 0); }, "Two=2 "},
};

class KillSweep : public ::testing::TestWithParam<bool> {
 protected:
  KillSweep() {
    fs::create_directories(home_ / "files");
    EXPECT_EQ(RunChild([&] {
                Desk desk(home_);
                return desk.Save(u"One", 1) && desk.Save(u"Two", 2) ? 0 : 1;
              }),
              0);
    fs::copy(home_, before_, fs::copy_options::recursive);
  }
  /// The list names absolute paths, so that every run works in the same place.
  void Reset() {
    fs::remove_all(home_);
    fs::copy(before_, home_, fs::copy_options::recursive);
  }
  std::string Entries() {
    const fs::path answer = folder_.path / "answer";
    const auto write = [&] {
      std::ofstream(answer) << Desk(home_).Entries();
      return 0;
    };
    EXPECT_EQ(RunChild(write), 0);
    std::string entries;
    std::getline(std::ifstream(answer), entries);
    return entries;
  }
  /// Names of the settings files where settings are saved. An unfinished file goes with the next one made there.
  std::set<std::string> Files() {
    std::set<std::string> names;
    for (const auto& file : fs::directory_iterator(home_ / "files"))
      if (file.path().extension() == ".vxs") names.insert(file.path().stem().string());
    return names;
  }
  /// 99: it was killed; 0 and 1: it said that it was done, or failed.
  int RunDisturbed(const Act& act, long calls) {
    return RunChild([&] {
      Desk desk(home_);
      disk_is_full = GetParam();
      calls_left = calls;
      const bool done = act.run(desk);
      calls_left = -1;
      return done ? 0 : 1;
    });
  }

  TempFolder folder_;
  fs::path home_ = folder_.path / "home";
  fs::path before_ = folder_.path / "before";
};

TEST_P(KillSweep, LeavesWhatWasOrWhatShouldBe) {
  for (const Act& act : kActs) {
    long calls = 0;
    for (int code = 1; code != 0; ++calls) {
      ASSERT_LT(calls, 400);
      Reset();
      code = RunDisturbed(act, calls);
      const std::string found = Entries();
      ASSERT_TRUE(found == act.after || (code != 0 && found == kBefore)) << act.name << ' ' << calls << ": " << found;
      // A removed entry's file is the user's.
      for (const std::string& file : std::string_view(act.name) == "remove" ? std::set<std::string>() : Files())
        ASSERT_NE(found.find(file + '='), std::string::npos) << act.name << ' ' << calls << " left " << file;
      ASSERT_TRUE(code != 1 || found == kBefore) << act.name << ' ' << calls << " said that it failed";
    }
    EXPECT_GT(calls, 3) << act.name;
  }
}
INSTANTIATE_TEST_SUITE_P(, KillSweep, ::testing::Values(false, true),
                         [](const auto& full) { return full.param ? "DiskFull" : "Killed"; });

}  // namespace
}  // namespace heron::test
