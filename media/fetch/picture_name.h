// The name that is proposed for a picture's file. Pure; any thread.
#pragma once

#include <QByteArray>
#include <QString>

namespace quillet {

// Letters, digits, "-" and "_" of the link's last part, and the ending of what `file` is by its content.
// Plain on every system, whatever stands in the link.
QString PictureFileName(const QString& link, const QByteArray& file);

}  // namespace quillet
