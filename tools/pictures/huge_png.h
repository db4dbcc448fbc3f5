// A PNG file that says to be far larger than anybody should decode. Called by the maker; pure.
#pragma once

#include <QByteArray>

namespace quillet {

// 50,000 x 50,000 grey pixels by its head, and the first megabyte of them: a kilobyte of file.
QByteArray HugePngBytes();

}  // namespace quillet
