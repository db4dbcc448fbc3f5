#include "app/interaction/keeping/picture_keeper.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string_view>
#include <utility>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QThreadPool>

#include "app/interaction/keeping/save_question.h"
#include "app/messages/keeping_messages.h"
#include "app/messages/picture_messages.h"
#include "media/fetch/picture_decoder.h"
#include "media/fetch/worker_run.h"
#include "platform/user_file.h"

namespace quillet {
namespace {

// What a file carries besides its pixels (who took the picture, where) is nobody's who pastes it.
QImage PixelsOf(const QImage& image) {
  QImage pixels(image.size(), image.format());
  if (pixels.isNull()) return pixels;
  const auto count = static_cast<std::size_t>(std::min(image.bytesPerLine(), pixels.bytesPerLine()));
  for (int y = 0; y < image.height(); ++y)
    std::memcpy(pixels.scanLine(y), image.constScanLine(y), count);
  return pixels;
}

}  // namespace

PictureKeeper::PictureKeeper(const PictureStore& store, QWidget& window, Handlers handlers)
    : store_(store), window_(window), handlers_(std::move(handlers)) {}

// Whatever is shown under the question, the file is the one that he wanted.
void PictureKeeper::Save(const QString& link) {
  const PictureFile file = store_.FileOf(link);
  if (file.bytes.isEmpty()) return handlers_.notice(DescribeNoPictureFile());
  const qsizetype dot = file.name.lastIndexOf(u'.');
  const auto answer =
      AskWhereToSave(window_, {.title = PictureSaveTitle(),
                               .name = file.name.left(dot),
                               .folder = folder_,
                               .kinds = {{PictureKindName(file.name.mid(dot + 1)), file.name.mid(dot)}},
                               .kind = 0});
  if (!answer) return;
  folder_ = QString::fromStdU16String(answer->file.parent_path().u16string());
  const std::string_view bytes(file.bytes.constData(), static_cast<std::size_t>(file.bytes.size()));
  const std::string reason = ReplaceFile(answer->file, bytes);
  if (reason.empty())
    handlers_.tell(DescribeSaved(answer->file));
  else
    handlers_.notice(DescribePictureNotSaved(answer->file, reason));
}

void PictureKeeper::Copy(const QString& link) {
  const PictureFile file = store_.FileOf(link);
  if (file.bytes.isEmpty()) return handlers_.notice(DescribeNoPictureFile());
  RunOnWorker(
      *QThreadPool::globalInstance(), this,
      [bytes = file.bytes] {
        const std::atomic<bool> dropped{false};
        return PixelsOf(DecodeFile(bytes, {}, dropped).image);
      },
      [this, number = ++copies_](const QImage& image) {
        if (number == copies_) Offer(image);
      });
}

void PictureKeeper::Offer(const QImage& image) {
  if (image.isNull()) return handlers_.notice(DescribeNoPictureFile());
  auto* const data = new QMimeData;
  data->setImageData(image);
  QGuiApplication::clipboard()->setMimeData(data);
  handlers_.tell(DescribePictureCopied());
}

}  // namespace quillet
