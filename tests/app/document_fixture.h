// A document without a window, with a scripted site at the other end, for tests of what it owns.
#pragma once

#include <gtest/gtest.h>
#include <memory>

#include <QCoreApplication>

#include "app/document/quill_doc.h"
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

// Takes over what the session posts, as the view does.
class MessageTaker : public QObject {
 public:
  explicit MessageTaker(CQuillDoc& doc) : doc_(doc) { doc_.Messages().Attach(this); }
  ~MessageTaker() override { doc_.Messages().Detach(); }
  bool event(QEvent* event) override {
    if (event->type() != MessageTarget::WakeEvent()) return QObject::event(event);
    auto messages = doc_.Messages().Take(doc_.GetConnection().Session().connectionNumber);
    if (messages.screen) doc_.OnScreen(messages.reason, std::move(messages.seen));
    return true;
  }

 private:
  CQuillDoc& doc_;
};

class DocumentTest : public WithTables {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(ProgramHome());
    LoadDocument();
    taker = std::make_unique<MessageTaker>(*doc);
  }

  // Over what the user has kept: `registry` and the files in `home`.
  void LoadDocument() {
    doc = std::make_unique<CQuillDoc>(
        DocumentParts{.endpoints = endpoints,
                      .signaller = signaller,
                      .registry = registry,
                      .opener = opener,
                      .folders = {.working = ProgramHome(), .data = home.Path() / "data"},
                      .machineTag = [] { return std::string("TEST-01"); },
                      .clock = [this] { return SteadyMilliseconds() + ahead; },
                      .version = u"1.0"});
    doc->Load();
  }

  // Stands for the folder that the program lies in; the settings are there unless `registry` says otherwise.
  std::filesystem::path ProgramHome() const { return home.Path() / "program"; }

  // Returns at once.
  void BeginScript(LoginOrder login = nullptr) {
    doc->GetConnection().Open(
        {.address = "script",
         .name = {},
         .makeTransport = [this] { return std::make_unique<ScriptedTransport>(script); },
         .isRecording = true},
        std::move(login));
  }
  // The attempt has ended.
  bool Settles() {
    return Until([&] { return !doc->GetConnection().IsConnecting(); });
  }
  void OpenScript() {
    BeginScript();
    ASSERT_TRUE(Settles());
  }

  const Settings& Fields() { return doc->GetSettings().Fields(); }
  const Sightings& Seen() { return doc->GetConnection().Seen(); }

  static bool Until(const std::function<bool()>& done) { return HandleEventsUntil(done, kPatienceMs); }

  std::int64_t ahead = 0;  // of the clock, in milliseconds, as far as waits for an answer go
  ScratchFolder home;
  class ShortLivedRegistry : public MemoryRegistry {
   public:
    std::optional<FileProblem> Problem() const override { return problem; }
    std::optional<FileProblem> problem;
  } registry;
  Endpoints endpoints;
  RecordingSignaller signaller;
  RecordingOpener opener;
  std::shared_ptr<Script> script = std::make_shared<Script>();
  std::unique_ptr<CQuillDoc> doc;
  std::unique_ptr<MessageTaker> taker;
};

}  // namespace quillet
