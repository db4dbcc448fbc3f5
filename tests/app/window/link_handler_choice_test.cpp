// The wish for the links, on a desktop of scripts.
#include "app/window/link_handler_choice.h"

#include <gtest/gtest.h>

#include "app/window/tour/tour.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/variable.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

class LinkHandlerChoiceTest : public testing::Test {
 protected:
  // Both programs do the same: what they say stands in the file "default", which a choice changes.
  void WriteDesktop(const std::string& first) const {
    for (const char* name : {"xdg-settings", "xdg-mime"}) {
      PutFile(scratch_.Path() / name, "#!/bin/sh\ncd '" + scratch_.Path().string() + "'\n" + first +
                                          "\n[ \"$1\" = default ] && echo \"$2\" > default\n"
                                          "[ \"$1\" = get ] && exec /bin/cat default\nexit 0\n");
      fs::permissions(scratch_.Path() / name, fs::perms::owner_all);
    }
    PutFile(scratch_.Path() / "default", "first.desktop\n");
  }

  const ScratchFolder scratch_;
  const Variable path_{"PATH", scratch_.Path().c_str()};
  const Variable home_{"XDG_DATA_HOME", scratch_.Path().c_str()};
  MemoryRegistry registry_;
  std::vector<LinkChoice> ended_;
};

TEST_F(LinkHandlerChoiceTest, WhoHadTheLinksIsKeptAndEachWishIsAnsweredOnce) {
  WriteDesktop("");
  LinkHandlerChoice choice(registry_, [this](LinkChoice end) { ended_.push_back(end); });
  for (std::size_t wish = 1; wish <= 2; ++wish) {
    choice.Wish();
    choice.Wish();
    EXPECT_TRUE(HandleEventsUntil([&] { return ended_.size() == wish; }, 20000));
    EXPECT_EQ(ended_.back(), LinkChoice::kMade);
    EXPECT_EQ(OtherBrowser(registry_), u"first.desktop");
  }
}

TEST_F(LinkHandlerChoiceTest, AProgramThatHangsIsEndedWithTheWindow) {
  WriteDesktop(": > asked; while :; do :; done");
  {
    LinkHandlerChoice choice(registry_, [this](LinkChoice end) { ended_.push_back(end); });
    choice.Wish();
    EXPECT_TRUE(HandleEventsUntil([&] { return fs::exists(scratch_.Path() / "asked"); }, 20000));
  }
  EXPECT_TRUE(ended_.empty());
  EXPECT_EQ(OtherBrowser(registry_), u"");
}

}  // namespace
}  // namespace quillet
