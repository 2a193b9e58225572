// Reads the templates of resources/dialogs once and looks names up in them.
#include "control_names.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace heron::test {
namespace {

struct Names {
  std::map<uint16_t, platform::DialogTemplate> templates;
  std::map<std::string, uint16_t, std::less<>> dialogs;
  std::map<std::string, platform::ControlId, std::less<>> controls;

  Names() {
    for (const auto& file : std::filesystem::directory_iterator(HERON_RESOURCES "/dialogs")) {
      if (file.path().extension() == ".dialog") Read(file.path());
    }
  }

 private:
  void Read(const std::filesystem::path& path) {
    std::ifstream stream(path);
    std::ostringstream source;
    source << stream.rdbuf();
    std::string error;
    auto read = platform::ParseDialogTemplate(source.str(), &error);
    if (!read) {
      ADD_FAILURE() << path << ": " << error;
      return;
    }
    const std::string stem = path.stem();
    EXPECT_TRUE(stem.starts_with(std::to_string(read->number) + "-")) << path;
    dialogs[stem.substr(stem.find('-') + 1)] = read->number;
    for (const platform::ControlTemplate& control : read->controls) {
      const std::string& name = platform::NameOf(control);
      if (!name.empty()) controls[name] = control.id;
    }
    templates[read->number] = std::move(*read);
  }
};

const Names& All() {
  static const Names names;
  return names;
}

/// Allocates nothing, so that a test without memory may use names.
uint16_t Find(const std::map<std::string, uint16_t, std::less<>>& numbers, std::string_view name, const char* what) {
  const auto found = numbers.find(name);
  if (found != numbers.end()) return found->second;
  ADD_FAILURE() << "no " << what << " has the name " << name;
  return 0;
}

}  // namespace

const std::map<uint16_t, platform::DialogTemplate>& Templates() {
  return All().templates;
}

DialogName::DialogName(const char* name) : number_(Find(All().dialogs, name, "dialog")) {}

ControlName::ControlName(const char* name) : id_(Find(All().controls, name, "control")) {}

std::string NameOfControl(platform::ControlId id) {
  if (id == 0) return "none";
  for (const auto& [name, number] : All().controls) {
    if (number == id) return name;
  }
  return std::to_string(id);
}

}  // namespace heron::test
