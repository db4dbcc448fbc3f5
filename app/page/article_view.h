// The open article as a whole, scrolled in the window: keeps its lines current, moves through them, and says
// what the picture shows. The view asks it first for keys and wheel turns, and draws its page in place of the
// BBS's screen while it is shown. User-interface thread.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include "app/document/bookmarks.h"
#include "app/page/article_scroll_bar.h"
#include "bbs/article/article_reading.h"
#include "input/article_paging.h"
#include "input/commands/commands.h"
#include "render/article_bar.h"
#include "render/paint/frame_painter.h"
#include "render/picture_rows.h"
#include "render/style/styled_article.h"
#include "settings/settings_store.h"

namespace quillet {

// What the user's settings ask of the reading.
ArticleReadingOptions ReadingOptionsOf(const Settings& settings);

class ArticleView : public QObject {
  Q_OBJECT

 public:
  // All outlive the view.
  struct Parts {
    Connection& connection;
    const Automations& automations;
    const Bookmarks& bookmarks;
    const SettingsStore& settings;
  };
  // The scroll bar lies in `parent`, which outlives the view too.
  ArticleView(const Parts& parts, QWidget& parent);
  ~ArticleView() override;

  // Settings, lists or the Tab key's state are different.
  void SetRules(const StyleRules& rules);
  // The connection has seen the screen before. `page` is what stands on it.
  void OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page);
  // A few times a second. `mayRefresh`: as for the reading, whether the article moves or not.
  void OnTick(bool mayRefresh);
  // Before anything of the user's goes to the BBS.
  void OnUserKey();
  // The same for an automation's: nothing of the reading's own comes between its keys.
  void OnAutomationKey();
  // For a connection that begins: nothing of the article is the new one's.
  void Forget();
  // Rows of the window in which lines of the article are seen, 1 to kLinesShown: the lowest above the bar.
  void SetLinesInSight(int lines);
  int LinesInSight() const { return inSight_; }
  // An automation of the client's own works under the article: a page that is shown stays meanwhile.
  void SetHeld(bool held);

  // The local page stands in the picture.
  bool IsShown() const;
  // Fills page, caret and progress of `frame`. Only while shown.
  void Compose(FrameState& frame) const;
  // The line in a row of the picture above the bar, seen or not; -1 where there is none, and below a line
  // where its pictures are.
  int LineAtRow(int row) const;
  // What stands there, a line or a picture below one; nothing where the article has no such row.
  std::optional<LinePlace> PlaceAtRow(int row) const;
  // The row of the picture that shows a line, seen or not; also beyond the picture's edges.
  int RowOfLine(int line) const { return rows_.RowOf(line) - top_ + kLinesShown - inSight_; }
  // Its lines stand in the picture as they do on the BBS's page, whose row 0 holds this line of the article.
  bool StandsLikePage(int firstLine, int rows) const;
  // What the bottom row's captions do. Empty while not shown.
  const std::vector<CaptionArea>& Captions() const { return bar_.areas; }

  // Where it stands, for deciding about a key.
  PagingState Paging() const;
  // Carries out what a key was decided to mean. False: the key is to go to the BBS.
  bool ApplyPaging(const PagingAction& action);
  // Rows to move by, positive down. False when there is nothing to move: no article is shown, or it fits the
  // page.
  bool ScrollBy(int rows);
  // The same, as far as lines are known.
  void ScrollWithin(int rows);
  // To one of the article's rows, 0 to RowCount() - 1.
  void ScrollTo(int row);
  bool HasPushes() const { return dressed_.FirstPush() >= 0; }
  void GoToFirstPush();
  // The rest is wanted now, wherever one reads.
  void ReadOn();
  // Stands here again when an automation that leads the BBS away has led it back.
  void KeepPlace();
  // Or rather at the end, and at what is still added to it. Nothing where the user has typed meanwhile.
  void ShowEnd();
  // The pointer is over this command's caption.
  void SetHovered(Command command);

  // The scroll bar goes to the right edge of `area`, in widget units; the window is wide enough or it lies
  // over the right margin. `plain`: in disguise.
  void PlaceScrollBar(const QRect& area, bool plain);
  // In widget units; 0 while there is none.
  int ScrollBarWidth() const { return scrollBar_->isHidden() ? 0 : scrollBar_->width(); }
  // The article's rows: its lines, and below some of them those of their pictures.
  const PictureRows& Rows() const { return rows_; }
  int TopRow() const { return top_; }
  int TargetRow() const { return target_; }
  // Each of its steps tells Changed.
  bool IsAnimating() const { return animation_.isActive(); }
  int LastTopRow() const { return LastTop(rows_.Count(), inSight_); }
  // Whether the line will be in sight where the motion ends.
  bool WillShow(int line) const;
  int TopLine() const { return rows_.At(top_).line; }
  int TargetLine() const { return rows_.At(target_).line; }
  int LineCount() const { return dressed_.Count(); }
  // The article's own line behind a shown one; -1: there is none.
  int SourceLine(int index) const { return dressed_.LineOf(index); }
  // The shown line of one of the article's own, or the next one where it is left out.
  int ShownIndex(int line) const { return dressed_.IndexOf(line); }
  const StyledArticle& Dressed() const { return dressed_; }
  const StyleRules& Rules() const { return rules_; }

  // The rows that pictures take below lines of the article, left out or not, in the order of the lines. What
  // is read stays where it is: the first line in sight; for who reads at the end the last one, unless he has
  // opened or closed something himself.
  enum class BandsBy { kThemselves, kUser };
  void SetBands(std::vector<PictureBand> bands, BandsBy by);
  // Another number when lines may be shown, hidden or left out that were not so before.
  unsigned RulesVersion() const { return rulesVersion_; }
  // The article's line behind a shown one; null where there is none, or while it is read anew.
  const ArticleLine* ShownLine(int index) const;
  // The look of a shown line; an empty row where there is none.
  PageRow ShownRow(int index) const { return dressed_.Row(reading_.Lines(), index, rules_); }
  // The look of a shown line in which the user's lists hide something; nothing for all others.
  std::optional<PageRow> RowWithHidden(int index) const;
  const ArticleReading& Reading() const { return reading_; }

 signals:
  // The picture is different. Not sent by SetRules and OnScreen: who calls them draws anyway.
  void Changed();
  // The lines of the article before are gone; another's have taken their place, or none.
  void OtherArticle();
  // New push lines, or a changed text, as AutoRefreshPush found them.
  void NewsArrived(const quillet::ArticleNews& news);
  // "b" and the like, decided by the keys, for the BBS.
  void BytesForBbs(const QByteArray& bytes);

 private:
  // What stays when the article grows or the list of its shown lines changes.
  enum class Stay {
    kAtLine,  // the line at the top
    kAtEnd    // the end, which moves on with the article
  };
  enum class Motion { kEased, kAtOnce };

  const ArticleInfo& OpenArticle() const { return parts_.connection.Seen().article; }
  // Takes in what the reading knows.
  void Follow();
  // Whether the lines are another article's than at the last call.
  bool IsAnotherArticle();

  // Brings the bands to the lines that are shown.
  void LayRows();
  // In lines of the article, whether they are left out or not.
  RowAnchor AnchorAt(int row) const;
  // The top that brings it there, as far as lines are known.
  int TopOf(const RowAnchor& anchor) const;
  void StandAt(int line);
  void StandWhereWanted();
  void GoTo(int top, Motion motion, Stay stay);
  // As far as lines are known; the rest of the way as they come.
  void GoBeyond(int top);
  void Step();
  // It scrolls, or the user holds the scroll bar.
  bool IsMoving() const { return top_ != target_ || scrollBar_->isSliderDown(); }
  // The user's wish.
  void MoveTo(int top, Motion motion, Stay stay);

  // Sees to it that the reading goes on no later than it may.
  void ReadOnInTime();
  // Brings both bars to the state of now.
  void Review();
  ArticleBarInput BarInput() const;

  const Parts parts_;
  StyleRules rules_;
  ArticleReading reading_;
  StyledArticle dressed_;
  std::int64_t postTime_ = 0;       // of the article that the lines are of; 0 not known
  std::vector<ScreenRow> opening_;  // the first lines; they tell one article from another
  std::unique_ptr<ArticleScrollBar> scrollBar_;
  QTimer animation_;
  QTimer readOn_;

  int inSight_ = kLinesShown;
  unsigned rulesVersion_ = 0;
  int top_ = 0;
  int target_ = 0;
  RowAnchor anchor_;                // of the article, that stands, or is to stand, at the top
  std::vector<PictureBand> bands_;  // below lines of the article
  PictureRows rows_;                // below lines that are shown
  int beyond_ = 0;  // rows past the target that the user has asked for and that are yet to come
  Stay stay_ = Stay::kAtLine;
  // Where to stand in an article whatever page of it the BBS comes back to.
  struct Wish {
    ArticleInfo article;
    int line = 0;  // or kEnd
  };
  static constexpr int kEnd = -1;
  std::optional<Wish> wanted_;  // until the user types or moves

  bool held_ = false;
  bool atBbsEnd_ = false;  // the BBS's reader shows the last page
  bool mayRefresh_ = false;
  bool bookmarked_ = false;
  Command hovered_ = Command::kNone;
  ArticleBar bar_;
};

}  // namespace quillet
