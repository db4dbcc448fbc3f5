// A whole window over a document, with a scripted site at the other end, for tests that act as the user does.
#pragma once

#include <QInputMethodEvent>
#include <QWindow>

#include "app/window/main_frame.h"
#include "tests/app/document_fixture.h"

namespace quillet {

class WindowTest : public DocumentTest {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(ProgramHome());
    Start();
  }

  // The program starts (again).
  void Start() {
    frame.reset();
    doc.reset();
    LoadDocument();
    frame = std::make_unique<CMainFrame>(*doc);
    frame->show();
    frame->activateWindow();
  }

  CQuillView& View() { return frame->View(); }

  ArticleView::Parts ArticleParts() {
    return {doc->GetConnection(), doc->GetAutomations(), doc->GetBookmarks(), doc->GetSettings().Store(),
            doc->PageReader()};
  }
  bool IsIdle() { return doc->GetAutomations().Current() == Activity::kNone; }

  void Press(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(frame->windowHandle(), &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(frame->windowHandle(), &release);
  }
  void TypeText(const QString& text) {
    for (const QChar character : text)
      Press(character.toUpper().unicode(), QString(character));
  }
  void Enter() { Press(Qt::Key_Return, "\r"); }
  void Escape() { Press(Qt::Key_Escape, "\x1B"); }

  bool PanelSays(const QString& title) { return View().Panel().Text().title == title; }
  QString PanelLines() { return View().Panel().Text().lines.join('\n'); }

  std::unique_ptr<CMainFrame> frame;
};

}  // namespace quillet
