// Which of the bundled libraries a row belongs to, by where it is declared.
#pragma once

#include <expected>
#include <limits>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// What a list says of a header, or of an area of the metadata ("metadata/AREA").
struct Home {
  std::size_t library = 0;
  bool needed_only = false;  // of the constants only those go there that a row needs
  // The constants from here on do not go along with a parameter of another library.
  long limit = std::numeric_limits<long>::max();
};

struct Areas {
  struct Title {
    std::string file;   // "Win32_Network"
    std::string title;  // "Win32 Network"
  };
  std::vector<Title> titles;          // the first library is the everyday one
  std::map<std::string, Home> homes;  // an area stands for those below it too
};

// Reads a list as described at the beginning of areas.txt. The reason in words when a line is not
// of that form, stands before the first library, or is there twice.
[[nodiscard]] std::expected<Areas, std::string> ReadAreas(const std::string& path);

// Finds homes by the list, for headers that it does not name by the metadata's area of most of
// their rows. What nothing tells the home of is at home in the last library.
class Homes {
 public:
  // All of them must outlive the object.
  Homes(const Library& library, const Areas& areas, const Metadata& metadata);

  [[nodiscard]] std::size_t Of(const ConstRow& row) const;
  [[nodiscard]] std::size_t Of(const DeclareRow& row) const;
  [[nodiscard]] std::size_t Of(const TypeRow& row) const;

  // Whether the constant goes along with a parameter or member of another library.
  [[nodiscard]] bool GoesAlong(const ConstRow& row) const;

 private:
  enum class Rows { kConstants, kOthers };

  void CollectAreas();
  void CountHeaders(const Library& library);
  [[nodiscard]] std::string AreaOf(const ConstRow& row) const;
  [[nodiscard]] std::string AreaOf(const DeclareRow& row) const;
  [[nodiscard]] std::string AreaOf(const TypeRow& row) const;
  [[nodiscard]] const Home* Listed(const std::string& place, Rows rows) const;
  [[nodiscard]] const Home* ListedArea(std::string area, Rows rows) const;
  [[nodiscard]] const Home* Find(const std::string& header, const std::string& area,
                                 Rows rows) const;
  [[nodiscard]] std::size_t LibraryOf(const Home* home) const;

  const Areas& areas_;
  const Metadata& metadata_;
  std::unordered_map<std::string, std::string> constant_areas_;
  std::unordered_map<std::string, std::string> record_areas_;
  std::unordered_map<std::string, std::string> area_of_header_;
};

}  // namespace declarium::win32_library
