// Both trees of a user, as the platform's TreeStore over two files.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "platform/api/backend.h"
#include "platform/sqlite/tree_file.h"

namespace heron::store {

class SqliteTrees final : public platform::TreeStore {
 public:
  SqliteTrees(const std::filesystem::path& machine_home, const std::filesystem::path& home, const std::string& user,
              std::chrono::milliseconds busy_limit);
  ~SqliteTrees() override;

  using DWORD = platform::DWORD;
  using Hive = platform::Hive;
  using KeyId = platform::KeyId;

  DWORD Find(Hive hive, std::u16string_view path, KeyId* key) override { return At(hive).Find(path, key); }
  DWORD Create(Hive hive, std::u16string_view path, KeyId* key, bool* created) override {
    return At(hive).Create(path, key, created);
  }
  DWORD Remove(Hive hive, std::u16string_view path) override { return At(hive).Remove(path); }
  DWORD Subkey(Hive hive, KeyId key, uint32_t index, std::u16string* name) override {
    return At(hive).Subkey(key, index, name);
  }
  DWORD Read(Hive hive, KeyId key, std::u16string_view name, DWORD* type, std::span<uint8_t> room,
             DWORD* size) override {
    return At(hive).Read(key, name, type, room, size);
  }
  DWORD ReadAll(Hive hive, KeyId key, const Visitor& visit) override { return At(hive).ReadAll(key, visit); }
  DWORD ReadBelow(Hive hive, KeyId key, const BelowVisitor& visit) override { return At(hive).ReadBelow(key, visit); }
  DWORD Write(Hive hive, KeyId key, std::u16string_view name, DWORD type, std::span<const uint8_t> data) override {
    return At(hive).Write(key, name, type, data);
  }
  DWORD Delete(Hive hive, KeyId key, std::u16string_view name) override { return At(hive).Delete(key, name); }
  DWORD Begin(Hive hive) override { return At(hive).Begin(); }
  DWORD End(Hive hive, bool keep) override { return At(hive).End(keep); }
  bool Writable(Hive hive) override { return At(hive).Writable(); }

  void CloseFiles();

 private:
  TreeFile& At(Hive hive) { return hive == Hive::kMachine ? machine_ : user_; }

  TreeFile machine_;
  TreeFile user_;
};

}  // namespace heron::store
