// A window logged in at the demo BBS, with articles of known shapes to open, for tests of how they are shown.
#pragma once

#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include "app/page/article_scroll_bar.h"
#include "bbs/page_flags.h"
#include "core/charset.h"
#include "demo/content_loader.h"
#include "demo/demo_server.h"
#include "input/screen_text.h"
#include "tests/app/window_fixture.h"

namespace quillet {

inline std::string TextOf(const PageRow& row) {
  std::string text;
  for (const PageCell& cell : row.cells)
    text += static_cast<char>(cell.byte);
  return text;
}

inline std::string TextOf(const ArticleLine& line) {
  return {line.text.begin(), line.text.begin() + kCols};
}

// Of a line such as "推 somebody: ...".
inline std::u16string PushWriter(const std::string& line) {
  const std::u16string text = FromBig5(line);
  if (text.empty() || std::u16string_view(u"推噓→").find(text.front()) == std::u16string_view::npos)
    return {};
  const std::size_t colon = text.find(u':');
  return colon == std::u16string::npos ? std::u16string() : text.substr(2, colon - 2);
}

class DemoArticleTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    const std::filesystem::path content = Content();
    DemoOptions options;
    options.contentFolder = content;
    demo = std::make_unique<DemoServer>(options);
    ASSERT_EQ(demo->Error(), "");
    for (const demo::Board& board : demo::LoadContent(content).boards)
      for (const demo::ArticlePtr& article : board.articles)
        Consider(board, *article);
    doc->GetConnection().Open({.address = QString::fromStdString(demo->Address()), .name = {}, .isBbs = true},
                              MakeLoginOrder({.account = u"reader", .password = u"quillet"}));
    ASSERT_TRUE(Until([&] { return Seen().loginId == u"reader" && IsIdle(); }));
  }
  void TearDown() override {
    frame.reset();
    doc.reset();
  }

  // The folder that the BBS shows.
  virtual std::filesystem::path Content() { return QUILLET_SOURCE_DIR "/demo/content"; }

  void Consider(const demo::Board& board, const demo::Article& article) {
    if (article.kind != demo::ArticleKind::kPlain) return;
    const ArticleReference here{.board = FromBig5(board.info.name), .code = FromBig5(article.code)};
    const bool isLast = &article == board.articles.back().get();
    if (article.body.size() > longestBody) {
      longestBody = article.body.size();
      longest = here;
    }
    if (!isLast && article.pushes.size() > mostPushes) {
      mostPushes = article.pushes.size();
      talkative = here;
    }
    if (article.body.size() + article.pushes.size() < fewestLines) {
      fewestLines = article.body.size() + article.pushes.size();
      shortest = here;
    }
  }

  const ArticleView& Article() { return View().Article(); }
  ArticleScrollBar& ScrollBar() { return *View().findChild<ArticleScrollBar*>(); }
  const ArticleLines& Lines() { return Article().Reading().Lines(); }
  int Last() { return LastTop(Article().LineCount()); }
  std::string Row(std::size_t row) { return TextOf(View().Frame().page[row]); }
  bool AtRest(int top) {
    return Until([&] { return Article().TargetLine() == top && Article().TopLine() == top; });
  }

  void Open(const ArticleReference& article) {
    ASSERT_FALSE(article.code.empty());
    ASSERT_TRUE(doc->GetAutomations().JumpTo(article));
    ASSERT_TRUE(Until([&] { return Article().IsShown() && IsIdle(); }));
  }
  void OpenWhole(const ArticleReference& article) {
    Open(article);
    ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
    ASSERT_GT(Article().LineCount(), 3 * kLinesShown);
    ASSERT_EQ(Article().TopLine(), 0);
  }

  std::string ScreenAsUtf8() {
    return QString::fromStdU16String(ScreenAsText(View().Screen())).toStdString();
  }
  // Who has pushed above the page, but not in the row `top`.
  std::u16string SomebodyAbove(const std::string& top) {
    for (int line = 0; line < Article().TopLine(); ++line) {
      const std::u16string id = PushWriter(TextOf(Lines().At(line)));
      if (!id.empty() && id != PushWriter(top)) return id;
    }
    return {};
  }

  void Wheel(int notches) {
    const QPointF at(View().rect().center());
    QWheelEvent event(at, View().mapToGlobal(at), {}, QPoint(0, notches * 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&View(), &event);
  }
  void Mouse(QEvent::Type type, QPoint at) {
    const bool up = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, ScrollBar().mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&ScrollBar(), &event);
  }
  QRect Handle() {
    QStyleOptionSlider option;
    option.initFrom(&ScrollBar());
    option.orientation = Qt::Vertical;
    option.minimum = ScrollBar().minimum();
    option.maximum = ScrollBar().maximum();
    option.pageStep = ScrollBar().pageStep();
    option.singleStep = 1;
    option.sliderPosition = option.sliderValue = ScrollBar().value();
    return ScrollBar().style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider,
                                               &ScrollBar());
  }

  std::unique_ptr<DemoServer> demo;
  ArticleReference longest, talkative, shortest;
  std::size_t longestBody = 0;
  std::size_t mostPushes = 0;
  std::size_t fewestLines = 1000;
};

}  // namespace quillet
