// What the user's files cost: reading all of them at start-up, a save, and the names of a very long black
// list.
//
//   settings_bench [FOLDER]    works in a scratch folder inside FOLDER, else inside the temporary folder
//
// "disk" is that folder. "memory" is one that the system keeps in memory, where a flush costs nothing, so
// that the figure is this program's own share; it is left out where there is none.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include "settings/files/article_list_file.h"
#include "settings/setting_table.h"
#include "settings/settings_store.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

constexpr int kUsualNames = 300;
constexpr int kUsualTitleWords = 50;
constexpr int kUsualRules = 20;
constexpr int kUsualBoards = 200;
constexpr int kUsualItems = 200;  // in each article list
constexpr int kItemsInFolder = 20;
constexpr int kManyNames = 50000;

constexpr const char* kMemoryFolder = "/dev/shm";
constexpr std::string_view kMainHost = "bbs.example.org";

class ScratchFolder {
 public:
  explicit ScratchFolder(const fs::path& parent)
      : path_(parent / ("quillet_bench_" + std::to_string(std::random_device{}()))) {
    fs::create_directories(path_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  // `program` is where a person would have the program and its files.
  DataFiles::Folders Folders() const { return {.working = path_ / "program", .data = path_ / "data"}; }

 private:
  fs::path path_;
};

WebHosts Hosts() {
  return {.host = u"www.example.org", .mirror1 = u"mirror.example.org", .mirror2 = u"m.example.org"};
}

std::u16string Numbered(std::u16string_view text, int number) {
  return std::u16string(text) + ToText(number);
}

SettingsMap UsualSettings() {
  SettingsMap map = DefaultSettings(kMainHost);
  for (const SettingRow& row : SettingTable()) {
    if (map.Find(row.section, row.key) != nullptr) continue;
    const std::u16string initial = InitialText(row);
    map.Set(row.section, row.key, initial.empty() ? u"C:\\Users\\someone\\Pictures\\背景.png" : initial);
  }
  std::vector<std::u16string> rules;
  for (int i = 0; i < kUsualRules; ++i)
    rules.push_back(Numbered(u"board=Astronomy && title!=公告 && author=someone", i));
  map.SetTrackLines(rules);
  return map;
}

std::u16string NameOf(int number) {
  return Numbered(u"Someone", number * 7);
}

NameList Names(int count) {
  NameList names;
  for (int i = 0; i < count; ++i) {
    ListEntry entry{
        .kind = static_cast<ListKind>(i % 4), .underline = i % 5 == 0, .description = u"推文洗版"};
    entry.SetColour(1 + i % kFlagColours, i % 3 == 0);
    names.Set(NameOf(i), entry);
  }
  return names;
}

std::u16string UsualTitleWords() {
  std::vector<std::u16string> words;
  for (int i = 0; i < kUsualTitleWords; ++i)
    words.push_back(Numbered(u"[徵求] 代購", i));
  return TitleWordsAsText(words);
}

ArticleLists UsualArticles() {
  ArticleLists lists;
  for (ArticleFolder& root : lists.roots) {
    for (int i = 0; i < kUsualItems; ++i) {
      if (i % kItemsInFolder == 0)
        root.children.emplace_back(ArticleFolder{.name = Numbered(u"資料夾", i), .children = {}});
      std::get<ArticleFolder>(root.children.back())
          .children.emplace_back(ArticleItem{.postTime = 1700000000 + i * 977,
                                             .score = i,
                                             .board = u"Astronomy",
                                             .code = FileNameToAid(u"M.1700000000.A.1F3"),
                                             .extra = u"",
                                             .title = Numbered(u"Re: [問題] 有沒有很多推文的鏡子？", i)});
    }
  }
  return lists;
}

BoardWeights UsualWeights() {
  BoardWeights weights;
  for (int i = 0; i < kUsualBoards; ++i)
    weights[Numbered(u"SomeBoard", i)] = i;
  return weights;
}

void WriteUsualFiles(DataFiles& files) {
  const ArticleLists lists = UsualArticles();
  bool written = files.Write(kSettingsFile, UsualSettings().AsText()) &&
                 files.Write(kNamesFile, Names(kUsualNames).AsText()) &&
                 files.Write(kTitleWordsFile, UsualTitleWords()) && SaveBoardWeights(files, UsualWeights());
  for (const ArticleListKind kind :
       {ArticleListKind::kHot, ArticleListKind::kTracked, ArticleListKind::kBookmarks})
    written = written && SaveArticleList(files, lists, kind);
  if (!written) {
    std::fprintf(stderr, "the files cannot be written\n");
    std::exit(1);
  }
}

// A person's files in a folder of their own.
struct Home {
  explicit Home(const fs::path& parent) : scratch(parent) {
    fs::create_directories(scratch.Folders().working);
    DataFiles files(registry, scratch.Folders());
    files.Prepare();
    WriteUsualFiles(files);
  }

  ScratchFolder scratch;
  MemoryRegistry registry;
};

void BenchStart(benchmark::State& state, const fs::path& parent) {
  Home home(parent);
  for (auto _ : state) {
    DataFiles files(home.registry, home.scratch.Folders());
    files.Prepare();
    SettingsStore store(files, kMainHost);
    store.Load();
    ArticleLists lists;
    BoardWeights weights;
    LoadArticleLists(files, Hosts(), lists, weights);

    const bool isWhole =
        store.Names().Size() == kUsualNames && store.TitleWords().size() == kUsualTitleWords &&
        store.Map().TrackLines().size() == kUsualRules && weights.size() == kUsualBoards &&
        lists.Of(ArticleListKind::kBookmarks).children.size() == kUsualItems / kItemsInFolder;
    if (!isWhole || !files.Problems().empty()) {
      state.SkipWithError("the files did not come back whole");
      return;
    }
  }
}

// `save` gets the loaded store and the number of the round, which makes each save another one.
void BenchSave(benchmark::State& state, const fs::path& parent, bool (*save)(SettingsStore&, int)) {
  Home home(parent);
  DataFiles files(home.registry, home.scratch.Folders());
  files.Prepare();
  SettingsStore store(files, kMainHost);
  store.Load();
  int round = 0;
  for (auto _ : state) {
    if (!save(store, ++round)) {
      state.SkipWithError("the save failed");
      return;
    }
  }
}

bool SaveSettings(SettingsStore& store, int round) {
  Put(store.Map(), {&Settings::work, round % 2 != 0});
  return store.Save();
}

bool SaveNames(SettingsStore& store, int round) {
  store.Names().Set(NameOf(0), {.description = ToText(round)});
  return store.SaveNames();
}

void BenchLoadManyNames(benchmark::State& state, const fs::path& parent) {
  Home home(parent);
  DataFiles files(home.registry, home.scratch.Folders());
  files.Prepare();
  if (!files.Write(kNamesFile, Names(kManyNames).AsText())) state.SkipWithError("the list cannot be written");
  for (auto _ : state) {
    NameList names;
    names.ReadLines(files.Read(kNamesFile).lines);
    if (names.Size() != kManyNames) {
      state.SkipWithError("the list did not come back whole");
      return;
    }
  }
}

void BenchManyNamesAsText(benchmark::State& state) {
  const NameList names = Names(kManyNames);
  for (auto _ : state)
    benchmark::DoNotOptimize(names.AsText());
}

// From the last to the first, which leaves the most gaps; the copy is not counted.
void BenchRemoveManyNames(benchmark::State& state) {
  const NameList names = Names(kManyNames);
  for (auto _ : state) {
    state.PauseTiming();
    NameList copy = names;
    state.ResumeTiming();
    for (int i = kManyNames; i-- > 0;)
      copy.Remove(NameOf(i));
    if (copy.Size() != 0) state.SkipWithError("something is left");
  }
}

// Every id a screen holds is looked up: 20 of them in turn, spread over the list.
void BenchFind(benchmark::State& state, bool isListed) {
  const int count = static_cast<int>(state.range(0));
  const NameList names = Names(count);
  std::vector<std::u16string> ids;
  for (int i = 0; i < 20; ++i)
    ids.push_back(isListed ? NameOf(i * count / 20) : Numbered(u"nobody", i));
  std::size_t turn = 0;
  for (auto _ : state) {
    const ListEntry* const found = names.Find(ids[turn++ % ids.size()]);
    if ((found != nullptr) != isListed) state.SkipWithError("the wrong answer");
  }
}

void RegisterAll(const fs::path& disk) {
  using benchmark::kMillisecond;
  using benchmark::kNanosecond;
  struct Place {
    std::string name;
    fs::path folder;
  };
  std::vector<Place> places{{"disk", disk}};
  if (fs::is_directory(kMemoryFolder)) places.push_back({"memory", kMemoryFolder});
  const auto add = [](const std::string& name, auto&& run) {
    return benchmark::RegisterBenchmark(name.c_str(), run)->Unit(kMillisecond)->UseRealTime();
  };
  for (const Place& place : places) {
    const fs::path folder = place.folder;
    add("Start/" + place.name, [folder](benchmark::State& state) { BenchStart(state, folder); });
    add("SaveSettings/" + place.name,
        [folder](benchmark::State& state) { BenchSave(state, folder, SaveSettings); });
    add("SaveNames/" + place.name,
        [folder](benchmark::State& state) { BenchSave(state, folder, SaveNames); });
  }
  add("LoadNames/50000", [disk](benchmark::State& state) { BenchLoadManyNames(state, disk); });
  add("NamesAsText/50000", BenchManyNamesAsText);
  add("RemoveNames/50000", BenchRemoveManyNames);
  for (const bool isListed : {true, false}) {
    benchmark::RegisterBenchmark(isListed ? "FindName/hit" : "FindName/miss",
                                 [isListed](benchmark::State& state) { BenchFind(state, isListed); })
        ->Unit(kNanosecond)
        ->Arg(kUsualNames)
        ->Arg(kManyNames);
  }
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  quillet::RegisterAll(argc > 1 ? std::filesystem::path(argv[1]) : std::filesystem::temp_directory_path());
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
