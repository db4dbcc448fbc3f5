#include "bench/streams.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <span>
#include <thread>

#include "core/charset.h"
#include "demo/demo_server.h"
#include "platform/socket.h"

namespace quillet {
namespace {

constexpr std::array<std::u16string_view, 12> kPhrases = {
    u"今天下午的雨下得很大，巷口的貓都躲到屋簷下去了",
    u"有人知道車站附近哪裡可以修舊收音機嗎？",
    u"第一次自己做麵包，烤箱溫度好像太高，表面有點焦",
    u"整理書櫃時翻出十年前的日記，字醜到認不出來",
    u"請問這個版本的編譯器支援協程嗎",
    u"昨晚的流星雨有看到三顆，山上冷得要命但是值得",
    u"推薦一家藏在市場二樓的豆花店",
    u"圖書館的空調又壞了，大家帶扇子來吧",
    u"這首曲子的左手部分到底要怎麼練才不會打結",
    u"鄰居家的狗學會開門了",
    u"老師說報告可以晚一週交",
    u"感謝分享，照著做真的成功了",
};
constexpr std::array<std::string_view, 8> kNames = {"inkwell", "paperboat",  "mooncake", "riverbank",
                                                    "tofu88",  "lanternfox", "snail",    "quietnoon"};
constexpr std::array<std::u16string_view, 6> kBlocks = {u"█", u"▇", u"▅", u"▂", u"◢", u"◤"};

class Maker {
 public:
  explicit Maker(std::size_t atLeast) : atLeast_(atLeast) { out_.reserve(atLeast + 8192); }

  bool Enough() const { return out_.size() >= atLeast_; }
  std::string Take() { return std::move(out_); }
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::u16string_view Phrase() { return kPhrases[static_cast<std::size_t>(Below(kPhrases.size()))]; }
  std::string_view Name() { return kNames[static_cast<std::size_t>(Below(kNames.size()))]; }

  Maker& Raw(std::string_view bytes) {
    out_ += bytes;
    return *this;
  }
  Maker& Text(std::u16string_view text) { return Raw(ToBig5(text)); }
  template <class... Args>
  Maker& Format(const char* format, Args... args) {
    std::array<char, 128> buffer;
    std::snprintf(buffer.data(), buffer.size(), format, args...);
    return Raw(buffer.data());
  }
  // Prose of exactly `columns`, an even number.
  Maker& Prose(int columns) {
    while (columns > 0) {
      const std::u16string_view phrase = Phrase();
      std::string big5 = ToBig5(phrase);
      if (big5.size() > static_cast<std::size_t>(columns)) big5.resize(static_cast<std::size_t>(columns));
      columns -= static_cast<int>(big5.size());
      Raw(big5);
    }
    return *this;
  }

 private:
  std::size_t atLeast_;
  std::string out_;
  std::minstd_rand random_{20240607};
};

void ListLine(Maker& make, int number) {
  make.Format("%7d ", number);
  make.Raw(make.Below(3) != 0 ? "+" : " ");
  make.Format("\x1b[1;3%dm%2d\x1b[m%2d/%02d ", 1 + make.Below(3), make.Below(100), 1 + make.Below(12),
              1 + make.Below(28));
  make.Format("%-13s", std::string(make.Name()).c_str());
  make.Text(make.Below(4) != 0 ? u"□ [閒聊] " : u"R: [問題] ");
  make.Prose(2 * (6 + make.Below(14))).Raw("\x1b[K\r\n");
}

void ListPage(Maker& make) {
  make.Raw("\x1b[H\x1b[2J\x1b[1;37;44m").Text(u"【板主:inkwell】        紙船與燈籠        ");
  make.Raw("\x1b[33m").Text(u"看板《Paper》").Raw("\x1b[m\r\n");
  make.Text(u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   \r\n");
  make.Raw("\x1b[30;47m").Text(u"   編號    日 期 作  者       文  章  標  題").Raw("            \x1b[m\r\n");
  const int first = make.Below(90000);
  for (int row = 0; row < 20; ++row)
    ListLine(make, first + row);
  make.Raw("\x1b[24;1H\x1b[34;46m").Text(u" 文章選讀 ").Raw("\x1b[31;47m (y)\x1b[30m").Text(u"回應");
  make.Raw("\x1b[31m(X)\x1b[30m").Text(u"推文").Raw("\x1b[31m(^X)\x1b[30m").Text(u"轉錄 ");
  make.Raw("\x1b[31m(=[]<>)\x1b[30m").Text(u"相關主題").Raw("            \x1b[m");
  // The cursor wanders, and one line is drawn anew now and then.
  int row = 4;
  for (int move = 0; move < 12; ++move) {
    make.Format("\x1b[%d;1H  ", row);
    row = 4 + make.Below(20);
    make.Format("\x1b[%d;1H", row).Text(u"●").Format("\x1b[%d;1H", row);
    if (move % 4 == 3) {
      make.Format("\x1b[%d;10H\x1b[1;31m%2d\x1b[m\x1b[%d;1H", row, make.Below(100), row);
    }
  }
}

void StatusLine(Maker& make, int page, int pages, int firstLine) {
  make.Raw("\x1b[24;1H\x1b[34;46m").Text(u"  瀏覽 ");
  make.Text(u"第 ").Format("%d/%d ", page, pages).Text(u"頁 ").Format("(%3d%%) ", page * 100 / pages);
  make.Raw("\x1b[1;30;47m ").Text(u"目前顯示: 第 ").Format("%02d~%02d ", firstLine, firstLine + 21);
  make.Text(u"行").Raw("\x1b[0;31;47m  (y)\x1b[30m").Text(u"回應").Raw("\x1b[31m(X%)\x1b[30m").Text(u"推文");
  make.Raw("\x1b[31m(h)\x1b[30m").Text(u"說明").Raw("\x1b[31m(").Text(u"←").Raw(")\x1b[30m").Text(u"離開 ");
  make.Raw("\x1b[m");
}

void PushLine(Maker& make) {
  make.Raw("\x1b[1;37m").Text(make.Below(5) != 0 ? u"推 " : u"→ ");
  make.Format("\x1b[33m%s\x1b[m\x1b[33m: ", std::string(make.Name()).c_str()).Text(make.Phrase());
  make.Format("\x1b[m\x1b[%dC", 1)
      .Format("  %d.%d.%d.%d", 11 + make.Below(200), make.Below(256), make.Below(256), make.Below(256));
  make.Format(" %02d/%02d %02d:%02d\x1b[K\r\n", 1 + make.Below(12), 1 + make.Below(28), make.Below(24),
              make.Below(60));
}

void ArticlePages(Maker& make) {
  make.Raw("\x1b[H\x1b[2J\x1b[34;47m").Text(u" 作者 ").Raw("\x1b[0;44m inkwell (").Text(make.Phrase());
  make.Raw(")            \x1b[34;47m").Text(u" 看板 ").Raw("\x1b[0;44m Paper \x1b[m\r\n\x1b[34;47m");
  make.Text(u" 標題 ").Raw("\x1b[0;44m ").Text(make.Phrase()).Raw("                \x1b[m\r\n");
  const int pages = 4;
  for (int page = 1; page <= pages; ++page) {
    if (page > 1) make.Raw("\x1b[H");
    for (int row = 0; row < 22; ++row) {
      if (page > 2) {
        PushLine(make);
      } else if (make.Below(4) == 0) {
        make.Raw("\x1b[K\r\n");
      } else {
        make.Prose(2 * (10 + make.Below(28))).Raw("\x1b[K\r\n");
      }
    }
    StatusLine(make, page, pages, 1 + 22 * (page - 1));
  }
}

void ArtPage(Maker& make) {
  make.Raw("\x1b[H\x1b[2J");
  for (int row = 0; row < 23; ++row) {
    for (int cell = 0; cell < 39;) {
      make.Format("\x1b[%s3%d;4%dm", make.Below(2) != 0 ? "1;" : "", make.Below(8), make.Below(8));
      for (int run = 1 + make.Below(2); run > 0 && cell < 39; --run, ++cell)
        make.Text(kBlocks[static_cast<std::size_t>(make.Below(kBlocks.size()))]);
    }
    make.Raw("\x1b[m\r\n");
  }
}

void TextPage(Maker& make) {
  make.Raw("\x1b[H");
  for (int row = 0; row < 23; ++row)
    make.Prose(78).Raw("\r\n");
}

// What a reader of the demo does: logs in, leafs through three boards, reads and moves about.
struct KeyStep {
  std::string_view keys;  // sent at once, answered by one frame
  int times;
};
constexpr KeyStep kDemoSession[] = {
    {"reader\r", 1}, {"quillet\r", 1}, {"\n", 1},     {"sChitChat\r", 1}, {"\x1b[A", 8},  {"\x1b[5~", 1},
    {"\x1b[A", 8},   {"\r", 1},        {" ", 2},      {"f", 1},           {" ", 1},       {"f", 1},
    {"\x1b[B", 6},   {"\x1b[A", 3},    {"q", 1},      {"\x1b[D", 1},      {"sCats\r", 1}, {"\r", 1},
    {" ", 1},        {"q", 1},         {"\x1b[D", 1}, {"sAsciiArt\r", 1}, {"\x1b[A", 5},  {"\r", 1},
    {"q", 1},        {"\x1b[A", 1},    {"\r", 1},     {"q", 1},           {"\x1b[D", 1},
};

// What one read brings; ends the program when nothing answers `what`.
std::string ReadOnce(Socket& socket, const StopSignal& stop, std::string_view what) {
  std::string bytes(1 << 16, '\0');
  std::size_t count = 0;
  if (socket.Receive({reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}, count, stop) !=
      Socket::Result::kOk) {
    std::fprintf(stderr, "The demo does not answer %.*s.\n", static_cast<int>(what.size()), what.data());
    std::exit(1);
  }
  bytes.resize(count);
  return bytes;
}

void AppendUtf8(std::string& out, char16_t unit) {
  const auto byte = [&out](int value) { out += static_cast<char>(value); };
  if (unit < 0x80) {
    byte(unit);
  } else if (unit < 0x800) {
    byte(0xC0 | (unit >> 6));
    byte(0x80 | (unit & 0x3F));
  } else {
    byte(0xE0 | (unit >> 12));
    byte(0x80 | ((unit >> 6) & 0x3F));
    byte(0x80 | (unit & 0x3F));
  }
}

}  // namespace

Stream ScreenStream(std::size_t atLeast) {
  Maker make(atLeast);
  while (!make.Enough()) {
    ListPage(make);
    ArticlePages(make);
  }
  return {"screens", make.Take()};
}

Stream ArtStream(std::size_t atLeast) {
  Maker make(atLeast);
  while (!make.Enough())
    ArtPage(make);
  return {"art", make.Take()};
}

Stream TextStream(std::size_t atLeast) {
  Maker make(atLeast);
  while (!make.Enough())
    TextPage(make);
  return {"text", make.Take()};
}

std::vector<std::string> RecordDemoSession() {
  DemoOptions options;
  options.contentFolder = QUILLET_SOURCE_DIR "/demo/content";
  options.writes = DemoOptions::Writes::kWhole;
  DemoServer server(options);
  StopSignal stop, finished;
  // A key that changes nothing is answered by nothing.
  std::jthread watchdog([&] {
    if (!finished.WaitFor(20'000)) stop.Set();
  });
  Socket socket;
  const Resolution found = ResolveHost("127.0.0.1", std::to_string(server.Port()));
  if (!server.Error().empty() || found.addresses.empty() ||
      socket.Connect(found.addresses[0], stop) != Socket::Result::kOk) {
    std::fprintf(stderr, "The demo cannot be reached. %s\n", server.Error().c_str());
    std::exit(1);
  }
  std::vector<std::string> reads{ReadOnce(socket, stop, "the connection")};
  for (const KeyStep& step : kDemoSession) {
    for (int i = 0; i < step.times; ++i) {
      std::size_t count = 0;
      socket.Send({reinterpret_cast<const std::uint8_t*>(step.keys.data()), step.keys.size()}, count, stop);
      reads.push_back(ReadOnce(socket, stop, step.keys));
    }
  }
  finished.Set();
  return reads;
}

Stream DemoStream(std::size_t atLeast) {
  std::string session;
  for (const std::string& read : RecordDemoSession())
    session += read;
  Maker make(atLeast);
  while (!make.Enough())
    make.Raw(session);
  return {"demo", make.Take()};
}

std::vector<Stream> AllStreams(std::size_t atLeast) {
  return {ScreenStream(atLeast), DemoStream(atLeast), ArtStream(atLeast), TextStream(atLeast)};
}

std::string StreamAsUtf8(std::string_view big5) {
  std::string out;
  for (const char16_t unit : FromBig5(big5))
    AppendUtf8(out, unit);
  return out;
}

void LoadTablesOrExit() {
  if (LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete()) return;
  std::fputs("The character tables are missing from Data.\n", stderr);
  std::exit(1);
}

}  // namespace quillet
