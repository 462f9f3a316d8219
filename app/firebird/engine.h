// The client library's object interface and what every call on it needs: a status that throws, counted references.
#pragma once

#include <firebird/Interface.h>

#include <cstdint>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace app::firebird {

namespace api = ::Firebird;

/// What the engine answered when it refused a call.
class EngineError : public std::exception {
 public:
  explicit EngineError(api::IStatus* status);

  const char* what() const noexcept override { return text_.c_str(); }
  /// The engine's numbers, outermost first.
  const std::vector<std::int64_t>& Codes() const { return codes_; }
  /// Texts that came with the numbers: names of tables, constraints, files.
  const std::vector<std::string>& Names() const { return names_; }
  bool Has(std::int64_t code) const;

 private:
  std::vector<std::int64_t> codes_;
  std::vector<std::string> names_;
  std::string text_;
};

api::IMaster& Master();

/// The status argument of every call; a refused call throws EngineError.
class Status final : public api::BaseStatusWrapper<Status> {
 public:
  Status() : BaseStatusWrapper(Master().getStatus()) {}
  virtual ~Status() { dispose(); }  // NOLINT(modernize-use-override): the base class has none
  Status(const Status&) = delete;
  Status& operator=(const Status&) = delete;

  static void checkException(Status* status) {  // NOLINT(readability-identifier-naming): the library's name
    if (status->dirty && (status->getState() & api::IStatus::STATE_ERRORS) != 0) status->Raise();
  }

  /// A call was refused because the connection is gone.
  bool SawLoss() const { return saw_loss_; }
  void ForgetLoss() { saw_loss_ = false; }

 private:
  [[noreturn]] void Raise();

  bool saw_loss_ = false;
};

/// Holds one reference to an object of the library.
template <typename T>
class Ref {
 public:
  Ref() = default;
  explicit Ref(T* object) : object_(object) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    if (this != &other) Reset(std::exchange(other.object_, nullptr));
    return *this;
  }
  ~Ref() { Reset(); }

  void Reset(T* object = nullptr) {
    if (object_ != nullptr) object_->release();
    object_ = object;
  }
  /// Gives the reference up, for calls that take it over when they succeed.
  T* Forget() { return std::exchange(object_, nullptr); }
  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
};

}  // namespace app::firebird
