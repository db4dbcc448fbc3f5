// The first start asks which pictures open by themselves.
#include "app/overlay/picture_question.h"

#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class PictureQuestionTest : public WindowTest {
 protected:
  QWidget* Line() {
    auto* const button = View().findChild<QPushButton*>("scope0");
    return button == nullptr ? nullptr : button->parentWidget();
  }
  bool IsAsked() { return Line() != nullptr && Line()->isVisible(); }
};

TEST_F(PictureQuestionTest, OnlyTheFirstStartIsOneAndAnAnswerIsASetting) {
  EXPECT_TRUE(doc->IsFirstStart());
  EXPECT_FALSE(IsAsked()) << "that is the program's to ask";
  View().AskAboutPictures();
  ASSERT_TRUE(IsAsked());
  EXPECT_EQ(frame->focusWidget(), &View());
  for (const char* const name : {"scope0", "scope1", "scope2"})
    EXPECT_TRUE(Line()->rect().contains(View().findChild<QPushButton*>(name)->geometry())) << name;
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_FALSE(IsAsked());
  doc->GetSettings().Set(&Settings::work, false);
  View().findChild<QPushButton*>("scope2")->click();
  EXPECT_EQ(Fields().showPicMode, PictureScope::kAllPages);
  EXPECT_FALSE(IsAsked());

  Start();
  EXPECT_FALSE(doc->IsFirstStart());
  View().AskAboutPictures();
  ASSERT_TRUE(IsAsked());
  View().findChild<QPushButton*>("later")->click();
  EXPECT_FALSE(IsAsked());
  EXPECT_EQ(Fields().showPicMode, PictureScope::kAllPages) << "left as it was";
  frame->resize(480, 320);
  View().AskAboutPictures();
  EXPECT_TRUE(View().rect().contains(Line()->geometry()));
  EXPECT_TRUE(Line()->rect().contains(View().findChild<QPushButton*>("later")->geometry()));
}

}  // namespace
}  // namespace quillet
