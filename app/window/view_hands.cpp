#include "app/window/view_hands.h"

#include <algorithm>
#include <utility>

#include "app/messages/article_messages.h"
#include "app/messages/text_messages.h"
#include "bbs/page_flags.h"

namespace quillet {

ViewHands::ViewHands(const Parts& parts, Handlers handlers)
    : parts_(parts),
      handlers_(std::move(handlers)),
      connection_(parts.doc.GetConnection()),
      automations_(parts.doc.GetAutomations()),
      settings_(parts.doc.GetSettings()),
      keys_(connection_, automations_, parts.doc.Driver(), KeyHandlers()),
      runner_({.target = [this] { return targets_.Current(); },
               .refused = [this](Command, Refusal refusal) { Refuse(refusal); }}),
      articleCommands_(parts.doc.GetBookmarks(), parts.article, keys_,
                       {.refused = [this] { Tell(DescribeNoCommand(connection_.IsConnected())); },
                        .pushOn = [this] { push_.Open(); },
                        .giveMoney = [this] { money_.Open(); },
                        .screen = [this]() -> const ScreenSnapshot& { return parts_.screen; }}),
      shown_(parts.screen, parts.page, parts.picture, parts.composer, parts.article),
      selection_(shown_, {.changed = handlers_.pictureChanged,
                          .scrollBy = [this](int rows) { parts_.article.ScrollWithin(rows); },
                          .finished = [this] { edit_.OnSelected(); }}),
      search_(parts.article, shown_, parts.view),
      links_(shown_, WebHostsOf(parts.doc.Hosts())),
      places_(shown_, parts.places, settings_.Fields()),
      clipboard_({.connection = connection_,
                  .automations = automations_,
                  .settings = settings_.Fields(),
                  .hosts = parts.doc.Hosts(),
                  .window = parts.view},
                 {.send = [this](std::u16string_view text, Wrap wrap) { keys_.SendText(text, wrap); },
                  .pageKind = [this] { return parts_.page.kind; }}),
      web_({.connection = connection_,
            .automations = automations_,
            .hosts = parts.doc.Hosts(),
            .opener = parts.doc.WebOpener()},
           {.beforeJump = [this] { parts_.article.OnUserKey(); }, .tell = handlers_.notice}),
      wanted_({.connection = connection_, .automations = automations_},
              {.open = [this](const ArticleReference& article) { web_.OpenArticle(article); },
               .waits = [this](const ArticleReference& article,
                               ArticleWaitsFor what) { OnArticleWaits(article, what); },
               .isAtRest =
                   [this] { return parts_.page.Shows(PF_LIST_CURSOR) || parts_.page.Shows(PF_READING); }}),
      edit_({.settings = settings_,
             .text = shown_,
             .selection = selection_,
             .clipboard = clipboard_,
             .web = web_},
            {.tell = [this](const QString& words) { Tell(words); }}),
      saver_({.connection = connection_,
              .settings = settings_,
              .text = shown_,
              .article = parts.article,
              .window = parts.view},
             {.tell = [this](const QString& words) { Tell(words); }, .notice = handlers_.notice}),
      printer_({.connection = connection_,
                .settings = settings_,
                .text = shown_,
                .article = parts.article,
                .window = parts.view},
               {.tell = [this](const QString& words) { Tell(words); }, .notice = handlers_.notice}),
      log_(connection_, parts.view,
           {.tell = [this](const QString& words) { Tell(words); }, .notice = handlers_.notice}),
      pictureKeeper_(parts.store, parts.view,
                     {.tell = [this](const QString& words) { Tell(words); },
                      .notice = [this](const PanelText& notice) { TellOfPicture(notice); }}),
      nameKeys_(settings_),
      money_({.connection = connection_,
              .automations = automations_,
              .settings = settings_,
              .article = parts.article,
              .view = parts.view}),
      push_({.connection = connection_,
             .automations = automations_,
             .bookmarks = parts.doc.GetBookmarks(),
             .article = parts.article,
             .view = parts.view}),
      pointer_({.widget = parts.view,
                .surface = parts.surface,
                .composer = parts.composer,
                .article = parts.article,
                .selection = selection_,
                .links = links_,
                .places = places_,
                .pictures = parts.pictures,
                .connection = connection_,
                .settings = settings_.Fields(),
                .screen = parts.screen,
                .page = parts.page},
               PointerHandlers()),
      targets_({.seen = connection_.Seen(),
                .screen = parts.screen,
                .page = parts.page,
                .composer = parts.composer,
                .article = parts.article,
                .shown = shown_,
                .links = links_,
                .pointer = pointer_}),
      keyInput_({.connection = connection_,
                 .automations = automations_,
                 .settings = settings_.Fields(),
                 .screen = parts.screen,
                 .page = parts.page,
                 .overlays = parts.overlays,
                 .composer = parts.composer,
                 .article = parts.article,
                 .selection = selection_,
                 .search = search_,
                 .targets = targets_,
                 .places = places_,
                 .names = nameKeys_,
                 .keys = keys_},
                {.typing = handlers_.typing,
                 .linesChanged = handlers_.linesChanged,
                 .tell = [this](const QString& words) { Tell(words); }}) {
  OfferCommands();
  ConnectAll();
}

KeyDispatch::Handlers ViewHands::KeyHandlers() {
  return {.command = [this](Command command) { runner_.Run(command); },
          .userTypes = [this] { OnUserTypes(); },
          .mustWait = [this] { return parts_.article.Reading().MustWait(); },
          .noSite = handlers_.noSite,
          .lost = [this](const LostCharacters& lost) { Tell(DescribeLostCharacters(lost)); },
          .screen = [this]() -> const ScreenSnapshot& { return parts_.screen; },
          .page = [this]() -> const UnderstoodPage& { return parts_.page; }};
}

PointerControl::Handlers ViewHands::PointerHandlers() {
  return {.perform = [this](Command command) { runner_.Run(command); },
          .open = [this](const TextLink& link) { web_.Open(link); },
          .showPicture =
              [this](const TextLink& link) {
                parts_.screenPicture.Open(QString::fromStdU16String(link.address));
              },
          .act = [this](const MouseAction& action) { keys_.Perform(action); },
          .pastePrimary = [this] { clipboard_.Paste(QClipboard::Selection); },
          .contextMenu = [this](QPoint at, auto cell,
                                const auto& picture) { ShowMenuOfPlace(at, cell, picture); },
          .changed = handlers_.pictureChanged,
          .targetChanged =
              [this] {
                parts_.overlays.Repaint(links_);
                parts_.overlays.Repaint(places_);
              }};
}

void ViewHands::ConnectAll() {
  const auto tell = [this](const QString& words) { Tell(words); };
  connect(&parts_.article, &ArticleView::BytesForBbs, this,
          [this](const QByteArray& bytes) { keys_.SendBytes(bytes.toStdString()); });
  connect(&clipboard_, &ClipboardController::Working, this, [this](bool working) {
    if (working)
      Tell(u"正在取得短網址…"_qs);
    else
      parts_.toast.Hide();
  });
  connect(&clipboard_, &ClipboardController::Said, this, tell);
  connect(&push_, &PushController::Said, this, tell);
  connect(&push_, &PushController::Notice, this, handlers_.notice);
  connect(&money_, &MoneyController::Notice, this, handlers_.notice);
  connect(&search_, &SearchController::Changed, this, handlers_.pictureChanged);
  connect(&search_, &SearchController::Said, this, tell);
  connect(&parts_.sideList, &SideListView::Opened, &search_, &SearchController::StopAsking);
  connect(&parts_.sideList, &SideListView::ArticleChosen, this, [this](const ArticleReference& article) {
    parts_.sideList.Close();
    parts_.article.OnUserKey();
    if (!automations_.JumpTo(article)) handlers_.notice(DescribeNoJump(connection_.IsConnected()));
  });
  connect(&parts_.sideList, &SideListView::Closed, this, [this] { parts_.view.setFocus(); });
  connect(&automations_, &Automations::JumpEnded, this,
          [this](const ArticleReference& article, JumpResult result) {
            handlers_.notice(DescribeJump(article, result));
          });
  connect(&parts_.doc.GetBookmarks(), &Bookmarks::Ended, this, [this](BookmarkEnd end) {
    parts_.toast.Show(DescribeBookmarkEnd(end), EmbeddedImage::kBookmarkList);
  });
  connect(&parts_.sideButtons, &SideButtons::Clicked, this,
          [this](Command command) { runner_.Run(command); });
}

// What goes to the BBS may bring another page, or a question below this one.
void ViewHands::OnUserTypes() {
  search_.StopAsking();
  parts_.article.OnUserKey();
}

void ViewHands::OnScreen() {
  pointer_.OnScreen();
  clipboard_.OnScreen();
  articleCommands_.OnScreen();
  wanted_.OnScreen();
  saver_.OnScreen();
  printer_.OnScreen();
}

void ViewHands::OnArticleWaits(const ArticleReference& article, ArticleWaitsFor what) {
  Tell(DescribeWaitingArticle(article, what));
  // A panel shows the way where there was a connection.
  const bool hasBegun = connection_.IsConnected() || connection_.IsConnecting() || connection_.IsClosed();
  if (what == ArticleWaitsFor::kLogin && !hasBegun) parts_.login.Show();
}

// What is selected, and what lies under the pointer, is told by the picture's lines.
void ViewHands::OnOtherLines() {
  search_.OnLines();
  selection_.OnTextChanged();
  if (!parts_.overlays.IsCovered()) pointer_.OnPictureChanged();
}

void ViewHands::OnCovered() {
  pointer_.Cancel();
  search_.StopAsking();
}

void ViewHands::Decorate(Page& page) {
  places_.Decorate(page);
  pointer_.Decorate(page);
  links_.Decorate(page);
  search_.Decorate(page);
  selection_.Decorate(page);
}

}  // namespace quillet
