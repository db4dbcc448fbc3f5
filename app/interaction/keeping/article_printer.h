// Prints the article that is shown whole, as it reads in the window. What is not yet read of it is waited for
// in the background. The view's hands own one. User-interface thread.
#pragma once

#include <memory>
#include <utility>

#include <QObject>
#include <QPrinter>

#include "app/interaction/keeping/keeping_parts.h"

namespace quillet {

class ArticlePrinter : public QObject {
  Q_OBJECT

 public:
  ArticlePrinter(const KeepingParts& parts, KeepingHandlers handlers);

  // Whether the system has a dialog to ask with: Windows has one for printers only, others print to files
  // too.
  static bool CanAsk();
  // Asks on which printer, and prints; says so where there is none.
  void Print();
  // More of the article may have been read.
  void OnScreen();

 private:
  // Once the article has been read.
  void PrintIfWhole();
  void GiveUp();

  const KeepingParts parts_;
  const KeepingHandlers handlers_;
  std::unique_ptr<QPrinter> waiting_;  // for the article's end; null: nothing is to be printed
  QString title_;
};

}  // namespace quillet
