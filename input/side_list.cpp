#include "input/side_list.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <tuple>
#include <variant>

#include "core/key_sequence.h"
#include "input/key_control.h"

namespace quillet {
namespace {

using Path = std::vector<int>;

bool IsFolder(const ArticleFolder::Child& child) {
  return std::holds_alternative<ArticleFolder>(child);
}

// The indices of the folder's children as they are shown.
std::vector<int> ShownOrder(const ArticleFolder& folder, const ArticleOrder& order) {
  std::vector<int> indices(folder.children.size());
  std::iota(indices.begin(), indices.end(), 0);
  if (!order) return indices;
  const auto childOf = [&](int index) -> const ArticleFolder::Child& {
    return folder.children[static_cast<std::size_t>(index)];
  };
  const auto articles = std::stable_partition(indices.begin(), indices.end(),
                                              [&](int index) { return IsFolder(childOf(index)); });
  std::stable_sort(articles, indices.end(), [&](int a, int b) {
    return order(std::get<ArticleItem>(childOf(a)), std::get<ArticleItem>(childOf(b)));
  });
  return indices;
}

void AppendEntries(const ArticleFolder& folder, const ArticleOrder& order, Path& path,
                   std::vector<SideListEntry>& entries) {
  const int depth = static_cast<int>(path.size());
  for (const int index : ShownOrder(folder, order)) {
    const ArticleFolder::Child& child = folder.children[static_cast<std::size_t>(index)];
    path.push_back(index);
    SideListEntry& entry = entries.emplace_back(SideListEntry{.path = path, .depth = depth});
    if (const auto* const inner = std::get_if<ArticleFolder>(&child)) {
      entry.folderName = inner->name;
      AppendEntries(*inner, order, path, entries);
    } else {
      entry.item = &std::get<ArticleItem>(child);
    }
    path.pop_back();
  }
}

// An article that is not known to be pushed or booed comes last, after deleted ones too.
std::int64_t Popularity(const ArticleItem& item) {
  return item.score == kNoScore ? -1 : std::abs(std::int64_t{item.score});
}

bool IsSame(const ArticleFolder::Child& a, const ArticleFolder::Child& b) {
  if (a.index() != b.index()) return false;
  if (const auto* const folder = std::get_if<ArticleFolder>(&a)) {
    const auto& other = std::get<ArticleFolder>(b);
    return folder->name == other.name && std::equal(folder->children.begin(), folder->children.end(),
                                                    other.children.begin(), other.children.end(), IsSame);
  }
  // Its score and mark may have been brought up to date.
  const auto whatItIs = [](const ArticleItem& item) {
    return std::tie(item.board, item.code, item.postTime, item.title);
  };
  return whatItIs(std::get<ArticleItem>(a)) == whatItIs(std::get<ArticleItem>(b));
}

std::optional<Path> FindChild(const ArticleFolder& root, const ArticleFolder::Child& what) {
  for (const SideListEntry& entry : FlattenList(root))
    if (IsSame(*EntryAt(root, entry.path), what)) return entry.path;
  return std::nullopt;
}

int LastFirst(const SideListState& state) {
  return std::max(0, state.count - state.shown);
}

void MoveUp(SideListState& state) {
  state.selected = std::max(0, state.selected - 1);
  if (state.selected < state.first) state.first = state.selected - state.shown + 2;
}

void MoveDown(SideListState& state) {
  state.selected = std::min(state.count - 1, state.selected + 1);
  if (state.selected >= state.first + state.shown) state.first = state.selected - 1;
}

void MovePage(SideListState& state, int entries) {
  state.selected += entries;
  state.first += entries;
}

}  // namespace

std::vector<SideListEntry> FlattenList(const ArticleFolder& root, const ArticleOrder& order) {
  std::vector<SideListEntry> entries;
  Path path;
  AppendEntries(root, order, path, entries);
  return entries;
}

ArticleOrder HotArticleOrder(HotSortMode mode, const BoardWeights& weights) {
  if (mode == HotSortMode::kNewestFirst)
    return [](const auto& a, const auto& b) { return a.postTime > b.postTime; };
  if (mode == HotSortMode::kByPopularity)
    return [](const auto& a, const auto& b) { return Popularity(a) > Popularity(b); };
  return [&weights](const ArticleItem& a, const ArticleItem& b) {
    const auto weightOf = [&](const ArticleItem& item) {
      const auto weight = weights.find(item.board);
      return weight == weights.end() ? 0 : weight->second;
    };
    const std::int32_t weightA = weightOf(a);
    const std::int32_t weightB = weightOf(b);
    return weightA != weightB ? weightA > weightB : a.board < b.board;
  };
}

const ArticleFolder::Child* EntryAt(const ArticleFolder& root, const std::vector<int>& path) {
  const ArticleFolder* folder = &root;
  const ArticleFolder::Child* child = nullptr;
  for (const int index : path) {
    if (folder == nullptr || index < 0 || static_cast<std::size_t>(index) >= folder->children.size())
      return nullptr;
    child = &folder->children[static_cast<std::size_t>(index)];
    folder = std::get_if<ArticleFolder>(child);
  }
  return child;
}

bool RemoveEntry(ArticleFolder& root, const std::vector<int>& path) {
  if (EntryAt(root, path) == nullptr) return false;
  ArticleFolder* folder = &root;
  for (std::size_t i = 0; i + 1 < path.size(); ++i)
    folder = &std::get<ArticleFolder>(folder->children[static_cast<std::size_t>(path[i])]);
  folder->children.erase(folder->children.begin() + path.back());
  return true;
}

bool RemoveEntry(ArticleFolder& root, const std::vector<int>& path, const ArticleFolder::Child& what) {
  const ArticleFolder::Child* const there = EntryAt(root, path);
  if (there != nullptr && IsSame(*there, what)) return RemoveEntry(root, path);
  const std::optional<Path> elsewhere = FindChild(root, what);
  return elsewhere && RemoveEntry(root, *elsewhere);
}

int ArticlesIn(const ArticleFolder& folder) {
  int count = 0;
  for (const ArticleFolder::Child& child : folder.children) {
    const auto* const inner = std::get_if<ArticleFolder>(&child);
    count += inner != nullptr ? ArticlesIn(*inner) : 1;
  }
  return count;
}

void ClampSideList(SideListState& state) {
  state.first = std::clamp(state.first, 0, LastFirst(state));
  state.selected = std::clamp(state.selected, 0, std::max(0, state.count - 1));
}

void ScrollSideList(SideListState& state, int entries) {
  state.first = std::clamp(state.first + entries, 0, LastFirst(state));
}

void ShowSelection(SideListState& state) {
  if (state.selected < state.first) state.first = state.selected;
  if (state.selected >= state.first + state.shown) state.first = state.selected - state.shown + 1;
}

SideListAction OnSideListKey(int virtualKey, ArticleListKind kind, SideListState& state) {
  const bool isEmpty = state.count <= 0;
  switch (virtualKey) {
    case kKeyTab:
      return SideListAction::kNotConsumed;
    case kKeyEscape:
    case kKeyLeft:
      return SideListAction::kClose;
    case kKeyEnter:
    case kKeyRight:
      return isEmpty ? SideListAction::kNone : SideListAction::kOpen;
    case 'D':
    case kKeyDelete:
      return isEmpty || kind != ArticleListKind::kBookmarks ? SideListAction::kNone : SideListAction::kRemove;
    case kKeyUp:
      MoveUp(state);
      break;
    case kKeyDown:
      MoveDown(state);
      break;
    case kKeyPageUp:
      MovePage(state, -state.shown);
      break;
    case kKeyPageDown:
      MovePage(state, state.shown);
      break;
    case kKeyHome:
      state.selected = 0;
      break;
    case kKeyEnd:
      state.selected = state.count - 1;
      break;
    default:
      return SideListAction::kNone;
  }
  ClampSideList(state);
  // The wheel may have moved the selection out of sight, and a list with room for a single entry has none for
  // the jumps' overlap.
  ShowSelection(state);
  return SideListAction::kMoved;
}

}  // namespace quillet
