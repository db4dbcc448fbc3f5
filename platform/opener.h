// Opens a web address with the program that the user has for such. Never through a shell, and never anything
// but http and https. User-interface thread; returns at once, whatever the desktop and the browser do.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace quillet {

class Opener {
 public:
  virtual ~Opener() = default;
  // False when the address is none that may be opened, or nothing can be started for it. What addresses
  // cannot hold, such as blanks or Chinese in a search, is percent-encoded on the way.
  virtual bool Open(std::u16string_view address) = 0;
};

// The system's own.
class SystemOpener : public Opener {
 public:
  // What becomes known only later; called on a thread of the opener's, but not after its end.
  using Failed = std::function<void(const std::u16string& address)>;

  // `otherBrowser` tells who has the links that the system would give to this program (see OtherBrowser).
  explicit SystemOpener(std::function<std::u16string()> otherBrowser = {}, Failed failed = {})
      : otherBrowser_(std::move(otherBrowser)), failures_(std::make_shared<Failures>(std::move(failed))) {}
  SystemOpener(const SystemOpener&) = delete;
  SystemOpener& operator=(const SystemOpener&) = delete;
  ~SystemOpener() override { failures_->Close(); }

  bool Open(std::u16string_view address) override;

 private:
  // Outlives the opener while one of its threads does.
  class Failures {
   public:
    explicit Failures(Failed failed) : failed_(std::move(failed)) {}
    void Tell(const std::u16string& address) {
      const std::lock_guard guard(lock_);
      if (failed_) failed_(address);
    }
    void Close() {
      const std::lock_guard guard(lock_);
      failed_ = nullptr;
    }

   private:
    std::mutex lock_;
    Failed failed_;
  };

  const std::function<std::u16string()> otherBrowser_;
  const std::shared_ptr<Failures> failures_;
};

}  // namespace quillet
