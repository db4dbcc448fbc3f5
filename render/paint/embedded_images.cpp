#include "render/paint/embedded_images.h"

#include <utility>

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

// In a static library resources come along only when they are asked for, and that only outside all
// namespaces.
static void BringImages() {
  Q_INIT_RESOURCE(images);
}

namespace quillet {
namespace {

QByteArray ColourName(std::uint32_t colour) {
  return '#' + QByteArray::number(colour, 16).rightJustified(6, '0');
}

}  // namespace

EmbeddedImages::EmbeddedImages(QString folder) : folder_(std::move(folder)) {
  BringImages();
}

const QImage& EmbeddedImages::At(EmbeddedImage image, QSize size, std::uint32_t colour) {
  static const QImage kNone;
  if (size.isEmpty() || size.width() > kLargestSide || size.height() > kLargestSide) return kNone;
  const Key key{image, size.width(), size.height(), colour & 0xFFFFFF};
  if (const auto found = rendered_.find(key); found != rendered_.end()) return found->second;

  QImage rendered = Render(image, size, colour & 0xFFFFFF);
  // More than a screenful of sizes and colours are the leftovers of sizes that the window no longer has.
  if (keptBytes_ + rendered.sizeInBytes() > kBudget || rendered_.size() >= kMostKept) {
    rendered_.clear();
    keptBytes_ = 0;
  }
  keptBytes_ += rendered.sizeInBytes();
  return rendered_.emplace(key, std::move(rendered)).first->second;
}

QImage EmbeddedImages::Render(EmbeddedImage image, QSize size, std::uint32_t colour) const {
  QFile file(folder_ + QStringLiteral("/%1.svg").arg(static_cast<int>(image)));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QSvgRenderer picture(file.readAll().replace("currentColor", ColourName(colour)));
  if (!picture.isValid()) return {};
  picture.setAspectRatioMode(Qt::KeepAspectRatio);
  QImage rendered(size, QImage::Format_ARGB32_Premultiplied);
  rendered.fill(Qt::transparent);
  QPainter painter(&rendered);
  picture.render(&painter);
  return rendered;
}

}  // namespace quillet
