// What walks through the demo are made of: key presses, conditions for having arrived, and the ways to its
// pages. User-interface thread.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QString>

#include "app/window/tour/tour.h"

namespace quillet {

using Arrived = std::function<bool(const CQuillView&)>;

// A key without a character, such as an arrow.
TourKey NamedKey(Qt::Key key);
std::vector<TourKey> Typed(QStringView text);
std::vector<TourKey> TypedLine(QStringView text);  // and Enter

// The BBS's screen holds `text`.
Arrived Shows(const QString& text);
// The screen has all of `flags` and none of `without`.
Arrived Is(std::uint32_t flags, std::uint32_t without = 0);
// The article is known to its end and stands still, from line `first` to before `end`.
Arrived ArticleRests(int first, int end);
bool ArticleRestsAtEnd(const CQuillView& view);

// From the login page.
std::vector<TourStep> StepsToMainMenu();
// From the main menu or a list.
std::vector<TourStep> StepsToBoard(const QString& board);
// From an article list to the top of the first article after the cursor whose title holds `words`; `name` is
// the picture's.
std::vector<TourStep> StepsToArticle(const QString& words, const QString& name = {});
// From an article to its list.
std::vector<TourStep> StepsOutOfArticle();

}  // namespace quillet
