#include "app/window/start_options.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace quillet {
namespace {

StartParse Wrong(const QString& why) {
  return {.result = StartParse::Result::kWrong,
          .options = {},
          .text = QStringLiteral("quillet: %1\nTry \"quillet --help\".\n").arg(why)};
}

struct WayName {
  const char* name;
  TransportKind kind;
};
constexpr WayName kWays[] = {
    {"telnet", TransportKind::kTelnet}, {"ssh", TransportKind::kSsh}, {"wss", TransportKind::kWebSocket}};

std::optional<TransportKind> WayNamed(const QString& name) {
  for (const WayName& way : kWays)
    if (name == QLatin1String(way.name)) return way.kind;
  return std::nullopt;
}

// What contradicts itself, or nothing.
QString ComplaintAbout(const StartOptions& options) {
  const int aims =
      (options.address.isEmpty() ? 0 : 1) + (options.demo ? 1 : 0) + (options.replayFile.isEmpty() ? 0 : 1);
  if (aims > 1) return QStringLiteral("ADDRESS, --demo and --replay exclude one another");
  if (options.speed && options.replayFile.isEmpty()) return QStringLiteral("--speed needs --replay");
  if (!options.tourFolder.isEmpty() && !options.profileFolder.isEmpty())
    return QStringLiteral("--tour and --profile exclude one another");
  if (!options.tourFolder.isEmpty() && !options.demo) return QStringLiteral("--tour needs --demo");
  if (!options.contentFolder.isEmpty() && !options.demo) return QStringLiteral("--content needs --demo");
  return {};
}

}  // namespace

StartParse ParseStartOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("A desktop client for a Chinese-language bulletin-board system."));
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  const QCommandLineOption demo("demo", "Start the demo BBS inside the program and connect to it.");
  const QCommandLineOption by("by", "How to reach the demo: telnet, ssh or wss.", "WAY");
  const QCommandLineOption replay("replay", "Show a recorded byte stream.", "FILE");
  const QCommandLineOption speed("speed", "Bytes per second of the replay.", "BYTES_PER_SECOND");
  const QCommandLineOption tour("tour", "Walk through the demo, save a picture of each page, and end.",
                                "FOLDER");
  const QCommandLineOption content("content", "The demo's content folder.", "FOLDER");
  // Acted upon before this, where it stands first; elsewhere it says nothing.
  const QCommandLineOption link(
      "single-argument",
      "As the first argument: hand a web link to the window that is open, or to another browser, and end.",
      "LINK");
  const QCommandLineOption profile("profile", "Keep settings, lists and account in this folder.", "FOLDER");
  parser.addOptions({demo, by, replay, speed, tour, content, profile, link});
  parser.addPositionalArgument(
      "ADDRESS", "telnet://host:port, ssh://host, wss://host/path, or a bare host name.", "[ADDRESS]");

  if (!parser.parse(arguments)) return Wrong(parser.errorText());
  if (parser.isSet(help))
    return {.result = StartParse::Result::kPrintAndQuit, .options = {}, .text = parser.helpText()};
  if (parser.isSet(version))
    return {.result = StartParse::Result::kPrintAndQuit,
            .options = {},
            .text = QStringLiteral("Quillet %1\n").arg(QCoreApplication::applicationVersion())};

  const QStringList addresses = parser.positionalArguments();
  if (addresses.size() > 1) return Wrong(QStringLiteral("more than one ADDRESS"));
  StartParse parsed;
  StartOptions& options = parsed.options;
  options.address = addresses.value(0);
  options.demo = parser.isSet(demo);
  options.replayFile = parser.value(replay);
  options.tourFolder = parser.value(tour);
  options.contentFolder = parser.value(content);
  options.profileFolder = parser.value(profile);
  if (parser.isSet(profile) && options.profileFolder.isEmpty())
    return Wrong(QStringLiteral("--profile wants a folder"));
  if (parser.isSet(by)) {
    const std::optional<TransportKind> way = WayNamed(parser.value(by));
    if (!way) return Wrong(QStringLiteral("--by wants telnet, ssh or wss"));
    if (!options.demo) return Wrong(QStringLiteral("--by needs --demo"));
    options.demoWay = *way;
  }
  if (parser.isSet(speed)) {
    bool isNumber = false;
    options.speed = parser.value(speed).toInt(&isNumber);
    if (!isNumber || *options.speed < 1) return Wrong(QStringLiteral("--speed wants a number of at least 1"));
  }
  const QString complaint = ComplaintAbout(options);
  return complaint.isEmpty() ? parsed : Wrong(complaint);
}

}  // namespace quillet
