#include "settings/files/article_list_merge.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "settings/files/bookmarks.h"

namespace quillet {
namespace {

using Child = ArticleFolder::Child;

// What a child is known by, and which of those that are known by the same it is.
using Key = std::pair<std::u16string, int>;

std::u16string NameOf(const Child& child) {
  if (const auto* const folder = std::get_if<ArticleFolder>(&child)) return u"folder " + folder->name;
  const auto& item = std::get<ArticleItem>(child);
  const std::u16string_view code = PlainCode(item.code);
  if (!code.empty()) return u"code " + item.board + u' ' + std::u16string(code);
  const std::string time = std::to_string(item.postTime);
  return u"title " + item.board + u' ' + std::u16string(time.begin(), time.end()) + u' ' + item.title;
}

// A folder's children in their order and by key. The folder outlives it.
class Children {
 public:
  explicit Children(const ArticleFolder& folder) {
    std::map<std::u16string, int> counts;
    for (const Child& child : folder.children) {
      std::u16string name = NameOf(child);
      const int count = counts[name]++;
      order_.emplace_back(std::move(name), count);
      byKey_.emplace(order_.back(), &child);
    }
  }

  const std::vector<Key>& Keys() const { return order_; }
  const Child* Find(const Key& key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
  }

 private:
  std::vector<Key> order_;
  std::map<Key, const Child*> byKey_;
};

// One child as each has it; null where it has none.
struct Versions {
  const Child* ours;
  const Child* theirs;
  const Child* base;
};

const ArticleFolder& FolderOf(const Child* child) {
  static const ArticleFolder kNone;
  return child ? std::get<ArticleFolder>(*child) : kNone;
}

std::optional<Child> MergedItem(const Versions& item) {
  const Child* chosen = item.ours;
  if (item.base) {
    const bool isUnchangedHere = item.ours && *item.ours == *item.base;
    if (isUnchangedHere) chosen = item.theirs;
  } else if (!chosen) {
    chosen = item.theirs;
  }
  return chosen ? std::optional(*chosen) : std::nullopt;
}

ArticleFolder MergedFolder(const ArticleFolder& ours, const ArticleFolder& theirs, const ArticleFolder& base);

std::optional<Child> Merged(const Versions& child) {
  const Child& any = child.ours ? *child.ours : *child.theirs;
  if (!std::holds_alternative<ArticleFolder>(any)) return MergedItem(child);
  ArticleFolder folder = MergedFolder(FolderOf(child.ours), FolderOf(child.theirs), FolderOf(child.base));
  folder.name = std::get<ArticleFolder>(any).name;
  const bool isRemoved = child.base && (!child.ours || !child.theirs);
  if (isRemoved && folder.children.empty()) return std::nullopt;
  return folder;
}

ArticleFolder MergedFolder(const ArticleFolder& ours, const ArticleFolder& theirs,
                           const ArticleFolder& base) {
  const Children our(ours), their(theirs), old(base);
  // By what they stand behind in this list; those behind nothing that both have stand before all others.
  std::map<Key, std::vector<Key>> additions;
  const Key beginning{};
  Key last = beginning;
  for (const Key& key : our.Keys()) {
    if (their.Find(key))
      last = key;
    else
      additions[last].push_back(key);
  }

  ArticleFolder merged;
  const auto put = [&](const Key& key) {
    std::optional<Child> child = Merged({our.Find(key), their.Find(key), old.Find(key)});
    if (child) merged.children.push_back(*std::move(child));
  };
  const auto putAdditions = [&](const Key& key) {
    const auto found = additions.find(key);
    if (found != additions.end()) std::for_each(found->second.begin(), found->second.end(), put);
  };
  putAdditions(beginning);
  for (const Key& key : their.Keys()) {
    put(key);
    putAdditions(key);
  }
  return merged;
}

}  // namespace

void MergeArticles(ArticleFolder& ours, const ArticleFolder& theirs, const ArticleFolder& base) {
  ours = MergedFolder(ours, theirs, base);
}

}  // namespace quillet
