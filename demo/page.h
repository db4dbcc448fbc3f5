// A page of the demo BBS and what it may ask of the client that shows it. Pages form a stack: the topmost
// gets the keys; one that does not cover the screen (a prompt, a message) is drawn over those below. All
// calls on the client's own thread.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "demo/canvas.h"
#include "demo/key_decoder.h"
#include "demo/mailbox.h"
#include "demo/world.h"

namespace quillet::demo {

class Page {
 public:
  Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  virtual ~Page() = default;

  virtual void Draw(Canvas& canvas) = 0;
  virtual bool CoversScreen() const { return true; }
  virtual void OnKey(const Key& key) = 0;
  // When OnTime is wanted although no key comes.
  virtual std::optional<Mailbox::Clock::time_point> Deadline() const { return std::nullopt; }
  virtual void OnTime() {}
  // Whether the keys that work everywhere (board prompt, list of users) work here too.
  virtual bool HasGlobalKeys() const { return false; }
};

// What the server was told about itself, the same for all clients.
struct House {
  std::string hostName;  // in the origin line
  std::string webHost;   // in links to articles
  std::filesystem::path contentFolder;
};

class PageHost {
 public:
  virtual ~PageHost() = default;

  virtual World& TheWorld() = 0;
  virtual const House& TheHouse() const = 0;
  virtual const User& CurrentUser() const = 0;
  virtual std::string Address() const = 0;  // the client's, as shown in articles

  // The page below becomes the topmost again when this one is closed.
  virtual void Open(std::unique_ptr<Page> page) = 0;
  // Closes the topmost page; it lives on until its key has been handled.
  virtual void CloseTop() = 0;
  // Closes everything above the lowest page, which is the main menu once somebody is logged in.
  virtual void CloseToMenu() = 0;
  // The login is complete: the stack is emptied for what follows.
  virtual void LogIn(const User& user) = 0;
  // Ends the connection after the present frame.
  virtual void HangUp() = 0;
  virtual void RingBell() = 0;
  // Everything is drawn anew.
  virtual void Refresh() = 0;

  // Articles that this user has opened, by file name; as long as the connection lasts.
  virtual std::set<std::string>& ReadArticles() = 0;
};

}  // namespace quillet::demo
