// The error type of the rules: the kind of failure, what it happened to, and what the operating
// system said about it.
#pragma once

#include <string>

namespace declarium {

enum class ErrorKind {
  kCannotRead,     // a file cannot be opened or read
  kCannotWrite,    // a file cannot be created, written or put in place
  kInvalidFormat,  // the bytes are not a library
  kCannotKeep,     // a library's file would not load again as what was saved; the context names
                   // the item
};

struct Error {
  ErrorKind kind;
  std::string context;  // what it happened to, usually a path; UTF-8
  std::string detail;   // the reason in words; UTF-8
  int system_code = 0;  // errno or GetLastError at the failing call, 0 when none

  // "context: detail"
  [[nodiscard]] std::string Message() const { return context + ": " + detail; }
};

}  // namespace declarium
