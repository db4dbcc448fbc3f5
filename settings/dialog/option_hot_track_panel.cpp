#include "settings/dialog/option_hot_track_panel.h"

#include <algorithm>
#include <array>

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace quillet {
namespace {

using S = Settings;

constexpr std::u16string_view kAnd = u" && ";
constexpr std::array<std::u16string_view, 3> kFields{u"board", u"author", u"title"};

bool IsField(std::u16string_view name) {
  const auto isSameLetter = [](char16_t a, char16_t b) { return (a >= u'A' && a <= u'Z' ? a + 32 : a) == b; };
  return std::ranges::any_of(kFields, [&](std::u16string_view field) {
    return std::equal(name.begin(), name.end(), field.begin(), field.end(), isSameLetter);
  });
}

bool IsCondition(std::u16string_view condition) {
  const std::size_t equals = condition.find(u'=');
  if (equals == std::u16string_view::npos) return false;
  std::u16string_view field = condition.substr(0, equals);
  if (field.ends_with(u'!')) field.remove_suffix(1);
  return IsField(field) && !Trimmed(condition.substr(equals + 1)).empty();
}

QString RuleFault(std::u16string_view line) {
  // In the file a bracket would begin a section.
  if (!line.starts_with(u'[') && IsTrackRule(TrackLineOf(line))) return {};
  return u"不是追蹤規則。要寫成 board、author 或 title，接著 = 或 !=，再接要比對的文字；多個條件以「 && 」連接"_qs;
}

}  // namespace

bool IsTrackRule(std::u16string_view line) {
  // So that a "&&" at the end, where lines are trimmed, joins something that is missing.
  const std::u16string whole = std::u16string(line) + u' ';
  std::size_t begin = 0;
  for (std::size_t end = whole.find(kAnd); end != std::u16string::npos; end = whole.find(kAnd, begin)) {
    if (!IsCondition(std::u16string_view(whole).substr(begin, end - begin))) return false;
    begin = end + kAnd.size();
  }
  return IsCondition(std::u16string_view(whole).substr(begin));
}

OptionHotTrackPanel::OptionHotTrackPanel(QWidget* parent)
    : OptionPanelWidget(parent),
      controls_(OptionPanel::kHotTrack, *this),
      rules_(new LinesEdit(u"追蹤規則"_qs)) {
  rules_->setObjectName(u"rules");
  auto* const layout = new QVBoxLayout(this);
  AddGroup(*layout, u"功能"_qs, controls_,
           {&S::hotArticle, &S::trackArticle, &S::bookmarkUpdate, &S::hotArticleSortMode});
  layout->addWidget(MakeRules(), 1);
}

QWidget* OptionHotTrackPanel::MakeRules() {
  auto* const examples = new NoteLabel(
      u"範例: author=mossgrov  (mossgrov的所有文章)\n"
      u"board=Beauty && title!=帥哥 && title!=肉特  (!=是排除)\n"
      u"title=發錢  (標題要有\"發錢\")\n"
      u"board=gossiping && author=mossgrov"_qs);
  examples->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* const group = new QGroupBox(u"追蹤規則 (一行一條)"_qs);
  auto* const layout = new QVBoxLayout(group);
  layout->addWidget(rules_, 1);
  layout->addWidget(examples);
  return group;
}

void OptionHotTrackPanel::Open(const SettingsStore& store) {
  controls_.Open(store.Fields());
  std::u16string text;
  for (const std::u16string& line : store.Map().TrackLines())
    text.append(line).append(u"\n");
  rules_->Fill(text);
}

QString OptionHotTrackPanel::Complaint() {
  return rules_->Complaint(RuleFault);
}

void OptionHotTrackPanel::Store(SettingsStore& store) const {
  controls_.Store(store.Map());
  if (!rules_->IsTouched()) return;
  std::vector<std::u16string> lines = rules_->Lines();
  std::ranges::transform(lines, lines.begin(), TrackLineOf);
  store.Map().SetTrackLines(lines);
}

}  // namespace quillet
