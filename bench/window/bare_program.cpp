#include "bench/window/bare_program.h"

#include "bench/window/driven_declarium.h"
#include "library/file_io.h"
#include "library/file_saver.h"

namespace declarium::bench {

using namespace window_driver;

void WriteNames(const std::filesystem::path& file, const StringList& names) {
  std::string bytes;
  for (const auto name : names) {
    bytes.append(reinterpret_cast<const char*>(name.data()), name.size() * sizeof(char16_t));
    bytes.append(sizeof(char16_t), '\0');
  }
  if (const auto written = WriteWholeFile(file, bytes); !written) {
    throw std::runtime_error(written.error().Message());
  }
}

BareProgram::BareProgram(const std::filesystem::path& names)
    : program_(BuiltProgram("bench/window/bare_list_box.exe"), L"\"" + names.wstring() + L"\"") {
  WaitTightly("the bare window", [this] {
    Sleep(1);
    return (window_ = program_.FindForm("BareListBox")) != nullptr;
  });
  Ask(window_, WM_NULL);
}

}  // namespace declarium::bench
