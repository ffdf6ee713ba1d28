// The basket as a list file: saving and opening it.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "basket/list_file.h"
#include "basket/ui/basket_view.h"
#include "library/file_saver.h"
#include "library/library.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"
#include "vb/audience.h"

namespace declarium {

struct ListLinks {
  std::function<vb::Audience()> target;  // that declarations are written for
  // Offers the user to write them for this one, another one, from now on.
  std::function<void(vb::Audience)> offer_target;
};

class ListCommands {
 public:
  // `folder` is the program's. Everything given by reference must outlive the commands.
  ListCommands(Toolkit& toolkit, FileSaver& saver, const Library& library, BasketView& basket,
               MenuItem& mnuSaveList, MenuItem& mnuOpenList, std::filesystem::path folder,
               ListLinks links);

  // Writes the basket's entries, the libraries that have them and the target into a file that the
  // user chooses, and tells which entries no library has so.
  void mnuSaveList_Click();
  // Puts what a list file names into the basket, in place of what is there or beside it, as the
  // user answers. Tells in one message what was not found. A file that is no list, and one that
  // names nothing that there is, leaves the basket alone.
  void mnuOpenList_Click();

 private:
  void Save(const std::filesystem::path& path);
  void Open(const std::filesystem::path& path);
  void Take(const ListFile& list, const std::filesystem::path& path);
  // False when the user wants neither.
  [[nodiscard]] bool PutIntoBasket(const Basket& chosen);
  void Say(std::u16string_view text, std::span<const std::u16string> lines);

  Toolkit& toolkit_;
  FileSaver& saver_;
  const Library& library_;
  BasketView& basket_;
  std::filesystem::path folder_;
  ListLinks links_;
  std::u16string last_file_;  // saved or opened, which the next dialog begins with
};

}  // namespace declarium
