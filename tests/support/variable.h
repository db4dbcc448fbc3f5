// An environment variable that is put back when the test ends.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace quillet {

class Variable {
 public:
  Variable(const char* name, const std::filesystem::path& value) : name_(name) {
    if (const char* const old = std::getenv(name)) old_ = old;
    Set(value.string());
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { Set(old_); }

 private:
  void Set(const std::optional<std::string>& value) const {
#ifdef _WIN32
    // An empty one is none there.
    _putenv_s(name_, value.value_or("").c_str());
#else
    if (value)
      setenv(name_, value->c_str(), 1);
    else
      unsetenv(name_);
#endif
  }

  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace quillet
