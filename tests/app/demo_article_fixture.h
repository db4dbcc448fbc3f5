// A window logged in at the demo BBS, with articles of known shapes to open, for tests of how they are shown.
#pragma once

#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include "app/document/resources.h"
#include "app/page/article_scroll_bar.h"
#include "bbs/page_flags.h"
#include "core/charset.h"
#include "demo/demo_server.h"
#include "input/text/screen_text.h"
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
    DemoOptions options;
    options.contentFolder = Content();
    demo = std::make_unique<DemoServer>(options);
    ASSERT_EQ(demo->Error(), "");
    doc->GetConnection().Open({.address = QString::fromStdString(demo->Address()),
                               .name = {},
                               .placesFolder = PlacesOfDemo(options.contentFolder),
                               .isBbs = true},
                              MakeLoginOrder({.account = u"reader", .password = u"quillet"}));
    ASSERT_TRUE(Until([&] { return Seen().loginId == u"reader" && IsIdle(); }));
    // So that the picture's rows read as the BBS's lines.
    doc->GetSettings().Set({{&Settings::ipToName, false}, {&Settings::showPicMode, PictureScope::kNone}});
  }
  void TearDown() override {
    frame.reset();
    doc.reset();
  }

  // The folder that the BBS shows.
  virtual std::filesystem::path Content() { return QUILLET_SOURCE_DIR "/demo/content"; }

  const ArticleView& Article() { return View().Article(); }
  ArticleScrollBar& ScrollBar() { return *View().findChild<ArticleScrollBar*>(); }
  const ArticleLines& Lines() { return Article().Reading().Lines(); }
  int Last() { return Article().LastTopRow(); }
  std::string Row(std::size_t row) { return TextOf(View().Frame().page[row]); }
  bool AtRest(int top) {
    return Until([&] { return Article().TargetRow() == top && Article().TopRow() == top; });
  }

  void Open(const ArticleReference& article) {
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

  void Wheel(int notches) {
    const QPointF at(View().rect().center());
    QWheelEvent event(at, View().mapToGlobal(at), {}, QPoint(0, notches * 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&View(), &event);
  }

  std::unique_ptr<DemoServer> demo;
  // Of the content: the one with the most lines, the one with the most pushes that has an article behind it,
  // and one that fills no page.
  const ArticleReference longest{.board = u"Typing", .code = u"1gmv50ad"};
  const ArticleReference talkative{.board = u"Baseball", .code = u"1gt8PGR5"};
  const ArticleReference shortest{.board = u"Cats", .code = u"1g-6paoC"};
};

}  // namespace quillet
