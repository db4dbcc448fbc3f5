// The lines of "hotboards.txt", "hot.txt", "track.txt" and "bookmark.txt". The functions over lines and texts
// are pure and expect hostile input; those over files are for the user-interface thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/article_code.h"
#include "settings/files/article_lists.h"
#include "settings/files/data_files.h"

namespace quillet {

inline constexpr std::string_view kBoardWeightsFile = "hotboards.txt";
// By ArticleListKind.
inline constexpr std::string_view kArticleListFiles[kArticleLists] = {"hot.txt", "track.txt", "bookmark.txt"};

// How deep folders lie in one another. Those deeper dissolve into the deepest, when read and when written.
inline constexpr std::size_t kDeepestFolder = 64;

// Makes the list of this kind anew from the lines: header, folders, items. Items whose place is named by a
// web link, as older versions wrote them, get board and code from it. Never fails: what is missing keeps its
// value on creation, a closing line without a folder is ignored, folders left open are closed by the end.
void ReadArticleLines(const std::vector<std::u16string>& lines, ArticleListKind kind, const WebHosts& hosts,
                      ArticleLists& lists);

// The text of the file, lines ended by LF, the header's by CR LF. Every item comes back from it as it is, but
// for what a line cannot hold: it is cut to 511 units, the title first; control characters become blanks;
// blanks inside `board`, `code` and `extra` and at the end of `title` are dropped, and a `board` is cut to 17
// units. A header that is 0 or empty comes back so, whatever stands behind it.
std::u16string ArticleListText(const ArticleLists& lists, ArticleListKind kind);

// The name, blanks, the number (0 when it is none); a later line replaces an earlier one of the same name.
void ReadBoardWeightLines(const std::vector<std::u16string>& lines, BoardWeights& weights);
// In the map's order. Blanks inside a name are dropped, and a weight whose name is empty is left out.
std::u16string BoardWeightsText(const BoardWeights& weights);

// The three lists and the weights from their files; a missing file leaves what there is.
void LoadArticleLists(DataFiles& files, const WebHosts& hosts, ArticleLists& lists, BoardWeights& weights);
// False when a file did not reach the disk; why stands in the files' problems.
bool SaveArticleList(DataFiles& files, const ArticleLists& lists, ArticleListKind kind);
// Takes in what another program has written to the list's file, changes the list and saves it, all in one
// turn at the file. What could not be written before is still in the list. Returns as above.
bool ChangeArticleList(DataFiles& files, const WebHosts& hosts, ArticleLists& lists, ArticleListKind kind,
                       const std::function<void(ArticleFolder&)>& change);
bool SaveBoardWeights(DataFiles& files, const BoardWeights& weights);

}  // namespace quillet
