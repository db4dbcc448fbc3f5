#include "app/interaction/context_menu.h"

#include <utility>

#include "app/interaction/link_hover.h"

namespace quillet {
namespace {

// Of a text from the screen in a menu entry.
constexpr int kLongestText = 24;
constexpr int kLongestTarget = 60;

// "&" would make the next letter the entry's key.
QString AsEntry(QString text, int longest) {
  text = text.simplified();
  if (text.size() > longest) text = text.left(longest) + u'…';
  return text.replace(u'&', u"&&"_qs);
}

QMenu* NewMenu(QWidget& parent) {
  auto* const menu = new QMenu(&parent);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return menu;
}

class Builder {
 public:
  Builder(QMenu& menu, std::function<void(EditCommand)> perform)
      : menu_(menu), perform_(std::move(perform)) {}

  QAction* Add(const QString& text, EditCommand command) {
    if (std::exchange(separated_, false) && !menu_.isEmpty()) menu_.addSeparator();
    QAction* const item = menu_.addAction(text);
    QObject::connect(item, &QAction::triggered, &menu_, [perform = perform_, command] { perform(command); });
    return item;
  }
  // A line before the next entry, if there are entries before and behind it.
  void Separate() { separated_ = true; }

 private:
  QMenu& menu_;
  std::function<void(EditCommand)> perform_;
  bool separated_ = false;
};

void AddLink(Builder& menu, const TextLink& link) {
  menu.Separate();
  menu.Add(link.article ? u"開啟文章(&O)"_qs : u"開啟連結(&O)"_qs, EditCommand::kOpenLink);
  menu.Add(link.address.empty() ? u"複製文章代碼(&L)"_qs : u"複製連結網址(&L)"_qs, EditCommand::kCopyLink);
}

void AddId(Builder& menu, const std::u16string& id) {
  const QString name = QString::fromStdU16String(id);
  menu.Separate();
  menu.Add(u"將 %1 加入名單…(&B)"_qs.arg(name), EditCommand::kAddToNames);
  menu.Add(u"%1 的網頁(&U)"_qs.arg(name), EditCommand::kUserPage);
}

void AddSelection(Builder& menu, const ContextFacts& facts) {
  menu.Separate();
  menu.Add(u"複製(&C)"_qs, EditCommand::kCopy);
  menu.Add(u"複製成 HTML（含色彩）(&H)"_qs, EditCommand::kCopyHtml);
  menu.Add(u"複製成 ANSI 色碼(&N)"_qs, EditCommand::kCopyAnsi);
  menu.Separate();
  const QString text = AsEntry(facts.selection, kLongestText);
  if (!facts.firstEngine.isEmpty())
    menu.Add(u"用 %1 搜尋「%2」(&1)"_qs.arg(facts.firstEngine, text), EditCommand::kSearchFirst);
  if (!facts.secondEngine.isEmpty())
    menu.Add(u"用 %1 搜尋「%2」(&2)"_qs.arg(facts.secondEngine, text), EditCommand::kSearchSecond);
}

}  // namespace

void ShowContextMenu(QWidget& parent, const QPoint& at, const ContextFacts& facts,
                     std::function<void(EditCommand)> perform) {
  QMenu* const menu = NewMenu(parent);
  Builder entries(*menu, std::move(perform));
  if (facts.target.link) AddLink(entries, *facts.target.link);
  if (!facts.target.id.empty()) AddId(entries, facts.target.id);
  if (!facts.selection.isEmpty()) AddSelection(entries, facts);
  entries.Separate();
  entries.Add(u"貼上(&P)"_qs, EditCommand::kPaste)->setEnabled(facts.connected);
  entries.Add(u"貼上短網址(&S)"_qs, EditCommand::kPasteShortLink)->setEnabled(facts.connected);
  entries.Separate();
  entries.Add(u"全選(&A)"_qs, EditCommand::kSelectAll);
  menu->popup(at);
}

void ShowLinkMenu(QWidget& parent, const QPoint& at, const std::vector<TextLink>& links,
                  const std::function<void(const TextLink&)>& take) {
  QMenu* const menu = NewMenu(parent);
  if (links.empty()) menu->addAction(u"這個畫面上沒有連結"_qs)->setEnabled(false);
  for (const TextLink& link : links) {
    QAction* const item = menu->addAction(AsEntry(LinkHover::TargetOf(link), kLongestTarget));
    QObject::connect(item, &QAction::triggered, menu, [take, link] { take(link); });
  }
  menu->popup(at);
  if (!links.empty()) menu->setActiveAction(menu->actions().front());
}

}  // namespace quillet
