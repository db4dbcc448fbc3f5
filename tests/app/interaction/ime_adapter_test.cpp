#include "app/interaction/ime_adapter.h"

#include <gtest/gtest.h>

#include "core/charset.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

// A screen full of text with an input method over it, as the view puts them together.
class Host : public QWidget {
 public:
  Host() {
    DisplaySettings settings;
    settings.pushLineSpacing = 6;
    surface.ApplySettings(settings);
    ime.ApplySettings(settings);
    ScreenSnapshot screen;
    screen.Clear();
    for (ScreenRow& row : screen.text)
      std::fill_n(row.begin(), kCols, std::uint8_t{'#'});
    frame.page = PlainPage(screen);
    resize(900, 620);
    show();
  }

  QRect Rectangle(Qt::InputMethodQuery query = Qt::ImCursorRectangle) const {
    return ime.Query(query)->toRect();
  }
  QImage Shot() { return grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QString Compose(const QString& text, const QList<QInputMethodEvent::Attribute>& attributes = {}) {
    return ime.Handle(QInputMethodEvent(text, attributes));
  }
  void MoveTo(int row, int col, RowSize size = RowSize::kOrdinary) {
    ime.UpdatePosition(row, col, ImeAdapter::Move::kIfChanged, size);
  }
  // A row in device pixels.
  QRect RowRect(int row) const {
    const Layout& layout = surface.CurrentLayout();
    return {0, layout.originY + row * layout.rowHeight, surface.Picture().width(), layout.rowHeight};
  }

  FrameSurface surface{*this};
  ImeAdapter ime{*this, surface};
  FrameState frame;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    surface.Paint(painter, event->rect());
    ime.Paint(painter, {});
  }
  void resizeEvent(QResizeEvent* /*event*/) override {
    surface.Refresh(frame);
    ime.UpdatePosition(0, 0, ImeAdapter::Move::kForced);
  }
};

// The smallest rectangle around all pixels that differ.
QRect Difference(const QImage& one, const QImage& other) {
  QRect rect;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if (one.pixel(x, y) != other.pixel(x, y)) rect |= QRect(x, y, 1, 1);
  return rect;
}

class ImeAdapterTest : public WithTables {
 protected:
  Host host;
};

TEST_F(ImeAdapterTest, TheCompositionCoversItsCellsAndNothingElse) {
  const QImage before = host.Shot();
  for (const RowSize size : {RowSize::kOrdinary, RowSize::kPush})
    for (const QPoint cursor : {QPoint(0, 0), QPoint(9, 9), QPoint(70, 23), QPoint(79, 0), QPoint(79, 23)}) {
      host.MoveTo(cursor.y(), cursor.x(), size);
      host.Compose(u"ㄓㄨㄥa中"_qs);
      const QImage during = host.Shot();
      const QRect box = host.ime.Box();
      EXPECT_EQ(Difference(before, during), box) << cursor.x() << ',' << cursor.y();
      EXPECT_TRUE(host.RowRect(cursor.y()).contains(box));
      EXPECT_EQ(box.height(), host.RowRect(0).height());
      const int half = PlaceComposition(host.surface.CurrentLayout(), size, 0, 0).size / 2;
      EXPECT_EQ(box.width(), 10 * half);
      const int wanted = host.surface.CurrentLayout().originX + cursor.x() * half;
      EXPECT_TRUE(box.left() == wanted || (box.left() < wanted && box.right() + half > wanted));
      host.Compose({});
      EXPECT_EQ(host.Shot(), before) << "gone at once";
    }
}

// A candidate window stands at this rectangle, above it or below: it must never cover what is typed.
TEST_F(ImeAdapterTest, TheRectangleIsAsHighAsTheRowAndFollowsTheCursorInTheText) {
  const qreal scale = host.surface.Scale();
  for (const RowSize size : {RowSize::kOrdinary, RowSize::kPush})
    for (const int row : {0, 11, 23}) {
      host.MoveTo(row, 76, size);
      int last = -1;
      for (const int caret : {0, 2, 4}) {
        host.Compose(u"中文中文"_qs, {{QInputMethodEvent::Cursor, caret, 1, {}}});
        const QRect rect = host.Rectangle();
        EXPECT_LE(rect.top() * scale, host.RowRect(row).top());
        EXPECT_GE((rect.bottom() + 1) * scale, host.RowRect(row).bottom() + 1);
        EXPECT_GT(rect.left(), last);
        EXPECT_TRUE(
            host.ime.Box().adjusted(-2, 0, 2, 0).contains(qRound(rect.left() * scale), host.ime.Box().top()));
        EXPECT_EQ(host.Rectangle(Qt::ImAnchorRectangle), rect);
        last = rect.left();
      }
      host.Compose({});
      const ImePlacement place = PlaceComposition(host.surface.CurrentLayout(), size, row, 76);
      EXPECT_NEAR(host.Rectangle().left() * scale, place.x, scale);
      EXPECT_NEAR(host.ime.Query(Qt::ImFont)->value<QFont>().pixelSize() * scale, place.size, scale);
    }
}

TEST_F(ImeAdapterTest, TheCompositionStaysWithTheCursorAndItsEndIsTold) {
  const QImage before = host.Shot();
  host.MoveTo(4, 10);
  host.Compose(u"ㄋㄧˇ"_qs);
  const QRect first = host.ime.Box();
  host.MoveTo(20, 30);
  const QRect second = host.ime.Box();
  EXPECT_EQ(second.size(), first.size());
  EXPECT_EQ(Difference(before, host.Shot()), second);
  EXPECT_EQ(host.ime.Preedit(), u"ㄋㄧˇ"_qs);

  EXPECT_EQ(host.Compose(u"ㄏ"_qs), "");
  QInputMethodEvent commit(u"ㄠ"_qs, {});
  commit.setCommitString(u"你\x1B好\n"_qs);
  EXPECT_EQ(host.ime.Handle(commit), QString::fromUtf16(u"你好\r"));
  EXPECT_EQ(host.ime.Preedit(), u"ㄠ"_qs);
  host.ime.End();
  EXPECT_EQ(host.Shot(), before);

  host.Compose(u"ㄠ"_qs);
  host.ime.SetEnabled(false);
  EXPECT_FALSE(host.ime.IsComposing());
  EXPECT_FALSE(host.ime.Query(Qt::ImEnabled)->toBool());
  EXPECT_EQ(host.Shot(), before);
}

}  // namespace
}  // namespace quillet
