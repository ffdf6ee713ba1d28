// Settings in files, where there is no registry: one file per key below a folder,
// "Software\Brindlework\Declarium 3.0" in software/brindlework/declarium 3.0.values.
//
// A file holds a line per value, in the order of their first writing: the type's number, the bytes
// in hexadecimal ("-" for none) and the name in UTF-8, separated by single blanks.
//
//   4 0000ff00 KeywordColor
//   1 41000000 LastDatabaseName
//
// Lines of any other form are passed over, and dropped at the next writing. A key with an empty
// level, with "." or ".." for a level or with a "/", and a key or name with a control character or
// half a surrogate pair, cannot be stored.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

#include "shell/settings_store.h"

namespace declarium {

class FileStore : public SettingsStore {
 public:
  // The folder need not exist.
  explicit FileStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

  bool CreateKey(std::u16string_view key) override;

 private:
  struct NamedValue {
    std::u16string name;
    RegistryValue value;
  };

  [[nodiscard]] std::optional<RegistryValue> Read(std::u16string_view key,
                                                  std::u16string_view name) const override;
  bool Write(std::u16string_view key, std::u16string_view name,
             const RegistryValue& value) override;

  [[nodiscard]] static std::vector<NamedValue> Load(const std::filesystem::path& file);
  [[nodiscard]] static bool Save(const std::filesystem::path& file,
                                 const std::vector<NamedValue>& values);
  [[nodiscard]] static std::optional<NamedValue> ParseLine(std::string_view line);
  // nullopt for a key that cannot be stored.
  [[nodiscard]] std::optional<std::filesystem::path> FileOf(std::u16string_view key) const;

  std::filesystem::path folder_;
};

}  // namespace declarium
