// What the panel over the screen says about the connection and about start-up problems, and what Enter and
// Esc do while it does. Pure; one place for all of the window's words about connections.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include <QString>
#include <QStringList>

#include "core/charset.h"
#include "core/transport.h"

namespace quillet {

enum class PanelAction { kNone, kReconnect, kAskAddress, kCancel, kDismiss };
enum class PanelTone { kCalm, kBusy, kEnded, kProblem };

struct PanelText {
  QString title;  // empty: no panel
  QStringList lines;
  QString hint;  // the keys that lead on
  PanelTone tone = PanelTone::kCalm;
  PanelAction onEnter = PanelAction::kNone;
  PanelAction onEscape = PanelAction::kNone;

  bool operator==(const PanelText&) const = default;
};

// What the document knows of its connection.
struct SessionFacts {
  int state = 0;     // TermSession::state
  QString siteName;  // the address as the user gave it, or the site's own name
  QString host;
  QString port;
  bool isRecording = false;
  TransportEnd end;
  std::size_t unsentBytes = 0;
};

PanelText DescribeSession(const SessionFacts& facts);

// Which tables are missing or damaged, and in which folder they were looked for. No title when both are
// whole.
PanelText DescribeTables(const CharsetLoad& load, const std::filesystem::path& folder);

// A text of the system's as it is shown: UTF-8 nearly everywhere, else the system's own encoding.
QString SystemText(const std::string& text);

// The demo BBS could not start; `error` is its own text.
PanelText DescribeDemoFailure(const QString& error);

}  // namespace quillet
