// Asks whether to play an article and plays it: frames are separated by lines with the sign U+240C. The
// client's thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "demo/page.h"

namespace quillet::demo {

class AnimationPage : public Page {
 public:
  AnimationPage(PageHost& host, const std::vector<std::string>& body, std::function<void()> read);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;
  std::optional<Mailbox::Clock::time_point> Deadline() const override { return nextFrame_; }
  void OnTime() override;

 private:
  void Finish();

  PageHost& host_;
  std::function<void()> read_;  // opens the article itself
  std::vector<std::vector<std::string>> frames_;
  std::size_t frame_ = 0;
  std::optional<Mailbox::Clock::time_point> nextFrame_;  // empty while the question is asked
};

// Whether a line of an article's body separates two frames.
bool IsFrameSeparator(const std::string& line);

}  // namespace quillet::demo
