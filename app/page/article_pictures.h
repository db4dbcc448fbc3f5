// The pictures of the article that is shown whole, below the lines of their links: has them fetched as they
// come into sight, gives them their rows in the article, and lays them into each frame. The view follows it
// before each frame; the hands ask it what lies under a click. User-interface thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>

#include "app/page/article_view.h"
#include "media/fetch/picture_store.h"
#include "render/picture_plan.h"

namespace quillet {

class ArticlePictures : public QObject {
  Q_OBJECT

 public:
  // All outlive the object.
  struct Parts {
    ArticleView& article;
    PictureStore& store;
    const Settings& settings;
    std::function<QString(const PictureNow&)> wordsFor;  // that stand in the place of one without an image
  };
  explicit ArticlePictures(const Parts& parts);

  enum class Seen { kNo, kYes };
  // Before each frame: the article may have other lines or stand elsewhere, the settings may be others.
  // `seen`: the window is; in one that is hidden nothing moves.
  void Follow(const PictureRoom& room, Seen seen);
  // After the article has filled the page.
  void Compose(FrameState& frame) const;

  // ---- What lies under the hands. Rows are the picture's.

  enum class Under {
    kPicture,  // drawn, whole or in part
    kFailure,  // the words that say why there is none
    kWaiting   // its room
  };
  struct Place {
    QString link;
    int line = 0;      // in which the link stands, of those that are shown
    int firstCol = 0;  // where it begins there
    Under under = Under::kPicture;

    bool operator==(const Place&) const = default;
  };
  // `x`: device pixels from the grid's left edge.
  std::optional<Place> PictureAt(int row, int x) const;
  // Whether a click on a link that begins at the cell opens or closes a picture.
  bool CanToggle(int row, int firstCol) const;
  void Toggle(int row, int firstCol);
  // The same by a line, of those that are shown, wherever it is.
  enum class Standing { kNone, kClosed, kOpen };
  Standing StandingInLine(int line, int firstCol) const;
  void ToggleInLine(int line, int firstCol);
  // All in sight: they close where all of them are open, else they open.
  void TogglePage();
  bool HasPicturesInSight() const;
  // Of a click on a picture or on what stands in its place.
  void Click(const Place& place);
  // Every picture of the article that is open, top to bottom, each link once.
  std::vector<QString> OpenLinks() const;

 signals:
  // What is shown is different: lines may stand elsewhere.
  void RowsChanged();
  // The same without any line.
  void ImagesChanged();
  // The user wants to look at it, or at the video.
  void PictureClicked(const QString& link);

 private:
  // What spots were made from.
  struct Source {
    unsigned lines = 0;
    unsigned rules = 0;
    int count = 0;

    bool operator==(const Source&) const = default;
  };
  // What bands and wishes follow from.
  struct Followed {
    unsigned plan = 0;
    PictureRoom room;
    PictureSight sight;
    Seen seen = Seen::kNo;
    bool moves = false;

    bool operator==(const Followed&) const = default;
  };
  struct Learned {
    PictureKnown known = PictureKnown::kNothing;
    PixelSize natural;
  };
  // A picture's rows in the window: `offset` of them are above the one that was asked for.
  struct SpotPlace {
    std::size_t spot = 0;
    int offset = 0;
    int rows = 0;
  };

  bool IsOff() const;
  Followed StateNow(Seen seen) const;
  void Close();
  void ReadSpots();
  std::vector<PictureSpot> SpotsOf() const;
  void AddSpotsOf(int index, PictureSize size, std::vector<PictureSpot>& spots) const;
  void LearnAll();
  // What was known stays known while it is fetched anew.
  Learned AskStore(const std::string& link, const Learned& before) const;
  void OnChanged(const QString& link);
  // Once for all that the store has told in one go.
  void TellSoon();
  void LayBands();
  // What the user has opened is brought into sight with its link.
  void ShowOpened();
  PictureSight Sight() const;
  void Want(const PictureSight& sight, Seen seen);
  PictureBounds BoundsOf(std::size_t spot) const;
  QString LinkOf(std::size_t spot) const { return QString::fromStdString(plan_.At(spot).link); }
  std::optional<SpotPlace> SpotAtRow(int row) const;
  std::optional<std::size_t> SpotOfLink(int row, int firstCol) const;
  std::optional<std::size_t> SpotInLine(int index, int firstCol) const;
  void ToggleSpot(std::size_t spot);
  void ComposeSpot(const SpotPlace& place, int row, FrameState& frame) const;
  std::u16string WordsFor(std::size_t spot, const PictureNow& now) const;

  const Parts parts_;
  PicturePlan plan_;
  PictureRoom room_;
  std::optional<Followed> followed_;  // nothing: more may open
  Source source_;
  std::unordered_map<std::string, Learned> learned_;
  std::vector<PictureWish> wishes_;
  ArticleView::BandsBy by_ = ArticleView::BandsBy::kThemselves;
  bool isOn_ = false;
  QTimer soon_;
  bool learnsSoon_ = false;
  std::optional<std::size_t> opened_;  // until its size is known
};

}  // namespace quillet
