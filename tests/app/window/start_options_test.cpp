#include "app/window/start_options.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace quillet {
namespace {

StartParse Parse(QStringList arguments) {
  return ParseStartOptions(QStringList{"quillet"} + arguments);
}

TEST(StartOptionsTest, WhatIsAskedForArrives) {
  EXPECT_EQ(Parse({"telnet://localhost:3000"}).options.address, "telnet://localhost:3000");
  const StartOptions demo = Parse({"--demo", "--tour", "out", "--content=/c"}).options;
  EXPECT_TRUE(demo.demo);
  EXPECT_EQ(demo.tourFolder, "out");
  EXPECT_EQ(demo.contentFolder, "/c");
  EXPECT_EQ(demo.demoWay, TransportKind::kTelnet);
  EXPECT_EQ(Parse({"--demo", "--by", "wss"}).options.demoWay, TransportKind::kWebSocket);
  const StartOptions replay = Parse({"--replay", "file.bin", "--speed", "9600"}).options;
  EXPECT_EQ(replay.replayFile, "file.bin");
  EXPECT_EQ(replay.speed, 9600);
  EXPECT_EQ(Parse({"--replay", "f"}).options.speed, std::nullopt);
  const StartParse none = Parse({});
  EXPECT_EQ(none.result, StartParse::Result::kRun);
  EXPECT_TRUE(none.options.address.isEmpty());
}

TEST(StartOptionsTest, ContradictionsAndNonsenseAreRefused) {
  const QList<QStringList> wrong = {{"--nonsense"},
                                    {"a", "b"},
                                    {"a", "--demo"},
                                    {"--demo", "--replay", "f"},
                                    {"--replay"},
                                    {"--replay", "f", "--speed", "0"},
                                    {"--replay", "f", "--speed", "fast"},
                                    {"--speed", "5"},
                                    {"--tour", "out"},
                                    {"--profile", ""},
                                    {"--demo", "--tour", "out", "--profile", "p"},
                                    {"--by", "ssh"},
                                    {"--demo", "--by", "http"},
                                    {"--content", "c", "a"}};
  for (const QStringList& arguments : wrong) {
    const StartParse parsed = Parse(arguments);
    EXPECT_EQ(parsed.result, StartParse::Result::kWrong) << arguments.join(' ').toStdString();
    EXPECT_TRUE(parsed.text.startsWith("quillet: "));
  }
}

TEST(StartOptionsTest, HelpNamesEveryOption) {
  const StartParse parsed = Parse({"--help"});
  EXPECT_EQ(parsed.result, StartParse::Result::kPrintAndQuit);
  for (const char* option :
       {"ADDRESS", "--demo", "--by", "--replay", "--speed", "--tour", "--content", "--profile", "--version"})
    EXPECT_TRUE(parsed.text.contains(option)) << option;
}

}  // namespace
}  // namespace quillet
