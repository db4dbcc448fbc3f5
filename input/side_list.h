// A side list's state: its entries, which is selected, which is shown first, and what a key does. The tree of
// folders is shown as one list of entries, depth first. Pure; the side list view draws it and carries the
// actions out.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "settings/files/article_lists.h"
#include "settings/setting_choices.h"

namespace quillet {

struct SideListEntry {
  std::vector<int> path;              // child indices from the root
  int depth = 0;                      // folders around it
  const ArticleItem* item = nullptr;  // null: a folder
  std::u16string folderName{};
};

// Whether the first article comes before the second.
using ArticleOrder = std::function<bool(const ArticleItem&, const ArticleItem&)>;

// Valid until the tree changes. With an order, each folder shows the folders in it first and its articles in
// that order; without one, everything stands as it does in the tree.
std::vector<SideListEntry> FlattenList(const ArticleFolder& root, const ArticleOrder& order = nullptr);

// The order of the hot articles. By board: those of greater weight first, then by name. By popularity: the
// most pushed or booed first. `weights` outlives the answer.
ArticleOrder HotArticleOrder(HotSortMode mode, const BoardWeights& weights);

// Null when the path leads nowhere or is empty. Valid until the tree changes.
const ArticleFolder::Child* EntryAt(const ArticleFolder& root, const std::vector<int>& path);
// Removes what stands at the path; false, and nothing happens, when the path leads nowhere.
bool RemoveEntry(ArticleFolder& root, const std::vector<int>& path);
// Removes `what`, which stood at the path when the user saw it; the tree may have changed since. False, and
// nothing happens, when there is no such child any more. A child's `flag` makes no difference.
bool RemoveEntry(ArticleFolder& root, const std::vector<int>& path, const ArticleFolder::Child& what);

// Articles in the folder and in those inside it.
int ArticlesIn(const ArticleFolder& folder);

struct SideListState {
  int selected = 0;
  int first = 0;  // shown first, where the motion is to end
  int shown = 1;  // entries that have room
  int count = 0;
};

// Brings `first` to 0 to count - shown and `selected` to 0 to count - 1, or 0.
void ClampSideList(SideListState& state);
// Moves the shown part by `entries`; the selection stays where it is.
void ScrollSideList(SideListState& state, int entries);

// Moves the shown part as little as is needed to show the selection.
void ShowSelection(SideListState& state);

enum class SideListAction {
  kNotConsumed,
  kNone,  // consumed, and nothing is to be done
  kMoved,
  kClose,
  kOpen,   // the selected entry
  kRemove  // the selected entry
};

// `virtualKey` as in KeyPress. Moves `state`, which stays within its list and shows the selection afterwards.
SideListAction OnSideListKey(int virtualKey, ArticleListKind kind, SideListState& state);

}  // namespace quillet
