#include "tools/screenshots/hands_pictures.h"

#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QPlainTextEdit>

namespace quillet {
namespace {

struct Cell {
  int row;
  int col;
};

class Mouse {
 public:
  explicit Mouse(CQuillView& view) : view_(view) {}

  void MoveTo(const Cell& cell) { Send(QEvent::MouseMove, cell, Qt::NoButton, held_); }
  void Press(const Cell& cell, Qt::MouseButton button = Qt::LeftButton) {
    held_ = button;
    Send(QEvent::MouseButtonPress, cell, button, button);
  }
  void Release(const Cell& cell) {
    const Qt::MouseButton button = std::exchange(held_, Qt::NoButton);
    Send(QEvent::MouseButtonRelease, cell, button, Qt::NoButton);
  }
  void Drag(const Cell& from, const Cell& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    modifiers_ = modifiers;
    Press(from);
    MoveTo(to);
    Release(to);
    modifiers_ = Qt::NoModifier;
  }

 private:
  void Send(QEvent::Type type, const Cell& cell, Qt::MouseButton button, Qt::MouseButtons held) {
    const QPointF at = view_.Surface().CellRect(cell.row, cell.col).center();
    QMouseEvent event(type, at, view_.mapToGlobal(at), button, held, modifiers_);
    QCoreApplication::sendEvent(&view_, &event);
  }

  CQuillView& view_;
  Qt::MouseButton held_ = Qt::NoButton;
  Qt::KeyboardModifiers modifiers_ = Qt::NoModifier;
};

void ShootSelections(DemoRun& run, Mouse& mouse) {
  mouse.Drag({14, 15}, {17, 33});
  run.Save("select");
  run.Set(&Settings::darkColor, true);
  run.Save("select-dim");
  run.Set(&Settings::darkColor, false);
  run.Set(&Settings::work, true);
  run.Save("select-work");
  run.Set(&Settings::work, false);
  PressKey(run.Frame(), NamedKey(Qt::Key_Escape));
  mouse.Drag({17, 12}, {22, 16}, Qt::AltModifier);
  run.Save("select-column");
}

// On what is selected and the id of a push line.
void ShootMenu(DemoRun& run, Mouse& mouse) {
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  mouse.Drag({4, 15}, {4, 31});
  run.Save("select-push");
  mouse.Press({8, 5}, Qt::RightButton);
  mouse.Release({8, 5});
  run.Await("the menu", [] { return QApplication::activePopupWidget() != nullptr; });
  run.SaveWith(QApplication::activePopupWidget(), "context-menu");
  if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  PressKey(run.Frame(), NamedKey(Qt::Key_Escape));
}

void ReadLink(DemoRun& run, Mouse& mouse) {
  constexpr int kLines = 9;
  run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
  for (int line = 0; line < kLines; ++line)
    run.Press({NamedKey(Qt::Key_Down)}, ArticleRests(line + 1, line + 2));
  mouse.MoveTo({20, 20});
  run.Save("link");
  mouse.MoveTo({1, 70});
}

QWidget* Dialog() {
  return QApplication::activeModalWidget();
}

void ShootDialog(DemoRun& run, const QString& name) {
  run.Await(name, [] { return Dialog() != nullptr; });
  run.SaveWith(Dialog(), name);
  if (Dialog() != nullptr) Dialog()->close();
  run.Await(name, [] { return Dialog() == nullptr; });
}

void ShootCaptionDialogs(DemoRun& run) {
  run.Await("the whole article", [&] { return run.View().Article().Reading().Lines().IsComplete(); });
  run.View().Commands().Run(Command::kPushOn);
  if (Dialog() != nullptr)
    for (QPlainTextEdit* const field : Dialog()->findChildren<QPlainTextEdit*>())
      field->setPlainText(
          u"這場比賽我從第一局看到第九局，連廣告都沒有轉台，中間還去樓下買了一份雞排，"
          u"回來的時候剛好看到那支再見安打飛過左外野的牆。\n謝謝兩隊，明年見！"_qs);
  ShootDialog(run, "push-on");
  run.View().Commands().Run(Command::kGiveMoney);
  ShootDialog(run, "give-money");
}

void ShootPasteQuestion(DemoRun& run) {
  QApplication::clipboard()->setText(
      u"早安，各位板友：\n昨天的比賽大家都看了嗎？\n我把筆記整理在下面。\n"_qs);
  run.View().Commands().Run(Command::kPaste);
  ShootDialog(run, "paste-question");
}

}  // namespace

void ShootHandsPictures(DemoRun& run) {
  Mouse mouse(run.View());
  run.LogIn();
  run.GoToBoard("Baseball");
  run.Read(u"總冠軍賽七戰"_qs);
  ShootCaptionDialogs(run);
  ShootSelections(run, mouse);
  ShootMenu(run, mouse);
  ReadLink(run, mouse);
  run.LeaveArticle();
  ShootPasteQuestion(run);
}

}  // namespace quillet
