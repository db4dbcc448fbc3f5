// What the command line asks for. Pure apart from reading its arguments; before any window exists.
#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "core/site_address.h"

namespace quillet {

struct StartOptions {
  QString address;
  bool demo = false;
  TransportKind demoWay = TransportKind::kTelnet;
  QString replayFile;
  std::optional<int> speed;  // bytes per second of a replay; as fast as it can be shown when absent
  QString tourFolder;
  QString profileFolder;  // where all that the user sets is kept; empty: in his own places
  QString contentFolder;  // of the demo; empty: the one that came with the program
};

struct StartParse {
  enum class Result { kRun, kPrintAndQuit, kWrong } result = Result::kRun;
  StartOptions options;
  QString text;  // to print: help, version, or what is wrong
};

// `arguments` begin with the program's name, as in main.
StartParse ParseStartOptions(const QStringList& arguments);

}  // namespace quillet
