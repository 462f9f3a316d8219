// The two exceptions that cross the border between the module and its host.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

namespace host {

/// A statement that the database refused. The failed statement left no trace; the work that the same
/// action did before it is still pending.
class DatabaseError : public std::runtime_error {
 public:
  /// `text` is one sentence a person can read, `code` the engine's own number (0 when the error did not come
  /// from the engine), `sql` the statement as the screen sent it.
  DatabaseError(const std::string& text, std::int64_t code, std::string sql)
      : std::runtime_error(text), code_(code), sql_(std::move(sql)) {}

  std::int64_t Code() const { return code_; }
  const std::string& Sql() const { return sql_; }

 private:
  std::int64_t code_;
  std::string sql_;
};

/// Something a person typed, or a file holds, that cannot be taken. what() is the sentence to show.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Ends the running action silently. What the action asked to be made durable stays; what it did after that is
/// undone.
class Abort : public std::exception {
 public:
  const char* what() const noexcept override { return "the action was ended silently"; }
};

}  // namespace host
