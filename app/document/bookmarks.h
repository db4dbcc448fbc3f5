// The user's bookmarks and his other lists of articles, with their files: whether an article is among them,
// adding and removing it, also by itself after a push. Where the BBS alone knows an article's code, it is
// asked. The document owns it. User-interface thread.
#pragma once

#include <functional>

#include <QObject>

#include "app/session/automations.h"
#include "app/session/connection.h"
#include "settings/files/article_lists.h"
#include "settings/files/data_files.h"
#include "settings/settings.h"

namespace quillet {

class Bookmarks : public QObject {
  Q_OBJECT

 public:
  // The references outlive the object.
  struct Parts {
    DataFiles& files;
    WebHosts hosts;
    const Settings& settings;
    Connection& connection;
    Automations& automations;
  };
  // The lists are empty yet.
  explicit Bookmarks(Parts parts);
  void Load();

  const ArticleFolder& List(ArticleListKind kind) const { return lists_.Of(kind); }
  BoardWeights& Boards() { return boards_; }
  // Something that the user follows stands in the lists.
  bool HoldNews() const;
  // Takes in what another program has written to the list's file, changes the list and saves it.
  void Change(ArticleListKind kind, const std::function<void(ArticleFolder&)>& change);

  bool Has(const ArticleInfo& article) const;
  bool HasOpenArticle() const { return Has(parts_.connection.Seen().article); }
  // Puts the open article among the bookmarks, or takes it out; Ended follows unless the user takes over.
  // False, and nothing happens, without an open article or a connection, or while an automation is at work.
  bool ToggleOpenArticle();
  // A push to the article will bookmark it, and its code is yet to be asked for.
  bool WantsCodeOf(const ArticleInfo& article) const;

 signals:
  // One of the lists is different.
  void Changed();
  // How the wish for a bookmark ended.
  void Ended(quillet::BookmarkEnd end);

 private:
  enum class CodeFor { kToggle, kPushed };

  bool AskCode(const ArticleInfo& article, CodeFor use);
  void OnCodeAsked(const ArticleInfo& article);
  void Toggle(const ArticleInfo& article);
  // Unless it is there already, or its code is not known; whether it is new there.
  bool Add(const ArticleInfo& article);
  void OnArticlePushed(const ArticleInfo& article, PushedBy by);

  const Parts parts_;
  ArticleLists lists_;
  BoardWeights boards_;
  CodeFor codeFor_ = CodeFor::kToggle;  // that was asked for last
};

}  // namespace quillet
