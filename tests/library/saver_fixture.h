// A folder with a history beside it, over files that can be made to fail.
#pragma once

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "library/file_saver.h"
#include "support/faulty_files.h"
#include "support/temporary_folder.h"

namespace declarium {

class SaverTest : public testing::Test {
 protected:
  SaverTest() { std::filesystem::create_directory(folder_ / "work"); }

  [[nodiscard]] std::filesystem::path Work(const std::filesystem::path& name) const {
    return folder_ / "work" / name;
  }
  std::filesystem::path Put(const std::filesystem::path& name, std::string_view bytes) const {
    return folder_.Put(std::filesystem::path("work") / name, bytes);
  }
  // A file that was written so long ago.
  std::filesystem::path PutOld(const std::filesystem::path& name, std::string_view bytes,
                               std::chrono::seconds age = std::chrono::seconds(65)) const {
    const auto path = Put(name, bytes);
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
    return path;
  }
  [[nodiscard]] std::size_t FilesInWork() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder_ / "work"), {}));
  }
  [[nodiscard]] FileSaver Saver(HistoryLimits limits = {}) {
    return {files_, History(files_, folder_ / "history", limits)};
  }
  [[nodiscard]] FileSaver SaverWithoutHistory() { return {files_, History(files_, {})}; }
  // What the history holds of a file, the newest first, as "reason content".
  [[nodiscard]] std::vector<std::string> Kept(const std::filesystem::path& path) {
    History history(files_, folder_ / "history");
    std::vector<std::string> kept;
    for (const auto& version : history.Versions(path)) {
      kept.push_back(std::string(ReasonWord(version.reason)) + " " +
                     history.Read(version).value_or("?"));
    }
    return kept;
  }

  TemporaryFolder folder_;
  FaultyFiles files_;
};

}  // namespace declarium
