// A whole window over a document, with a scripted site at the other end, for tests that act as the user does.
#pragma once

#include <gtest/gtest.h>
#include <memory>

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QWindow>

#include "app/window/main_frame.h"
#include "app/window/tour/tour.h"
#include "platform/clock.h"
#include "tests/app/scripted_transport.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/tables.h"

namespace quillet {

class RecordingSignaller : public Signaller {
 public:
  void Flash() override { ++flashes; }
  void Beep() override { ++beeps; }
  void PlayUpdatedSound() override { ++sounds; }

  int flashes = 0;
  int beeps = 0;
  int sounds = 0;
};

// Remembers what it should have opened.
class RecordingOpener : public Opener {
 public:
  bool Open(std::u16string_view address) override {
    opened.emplace_back(address);
    return opens;
  }

  std::vector<std::u16string> opened;
  bool opens = true;
};

inline constexpr int kPatienceMs = 20000;

class WindowTest : public WithTables {
 protected:
  void SetUp() override {
    WithTables::SetUp();
    std::filesystem::create_directories(ProgramHome());
    Start();
  }

  // The program starts (again) over what the user has kept: `registry` and the files in `home`.
  void Start() {
    frame.reset();
    doc.reset();
    doc = std::make_unique<CQuillDoc>(
        DocumentParts{.endpoints = endpoints,
                      .signaller = signaller,
                      .registry = registry,
                      .opener = opener,
                      .folders = {.working = ProgramHome(), .data = home.Path() / "data"},
                      .machineTag = [] { return std::string("TEST-01"); },
                      .clock = [this] { return SteadyMilliseconds() + ahead; }});
    doc->Load();
    frame = std::make_unique<CMainFrame>(*doc);
    frame->show();
    frame->activateWindow();
  }

  // Stands for the folder that the program lies in; the settings are there unless `registry` says otherwise.
  std::filesystem::path ProgramHome() const { return home.Path() / "program"; }

  CQuillView& View() { return frame->View(); }

  ArticleView::Parts ArticleParts() {
    return {doc->GetConnection(), doc->GetAutomations(), doc->GetBookmarks(), doc->GetSettings().Store()};
  }

  // Returns at once.
  void BeginScript() {
    doc->GetConnection().Open({.address = "script", .name = {}, .makeTransport = [this] {
                                 return std::make_unique<ScriptedTransport>(script);
                               }});
  }
  bool Settles() {
    return Until([&] { return !doc->GetConnection().IsConnecting(); });
  }
  void OpenScript() {
    BeginScript();
    ASSERT_TRUE(Settles());
  }

  static bool Until(const std::function<bool()>& done) { return HandleEventsUntil(done, kPatienceMs); }

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

  std::int64_t ahead = 0;  // of the clock, in milliseconds, as far as waits for an answer go
  ScratchFolder home;
  MemoryRegistry registry;
  Endpoints endpoints;
  RecordingSignaller signaller;
  RecordingOpener opener;
  std::shared_ptr<Script> script = std::make_shared<Script>();
  std::unique_ptr<CQuillDoc> doc;
  std::unique_ptr<CMainFrame> frame;
};

}  // namespace quillet
