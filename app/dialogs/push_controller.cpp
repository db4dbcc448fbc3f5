#include "app/dialogs/push_controller.h"

#include <algorithm>
#include <utility>

#include "bbs/automation/push_pieces.h"
#include "core/ascii.h"

namespace quillet {

PushController::PushController(const Parts& parts) : parts_(parts) {
  connect(&parts_.automations, &Automations::PushesEnded, this, &PushController::OnEnded);
}

PushController::~PushController() {
  delete dialog_;
}

std::u16string PushController::KeyOf(const ArticleInfo& article) {
  constexpr char16_t kBetween = u'\n';
  return article.board + kBetween + article.author + kBetween + article.title + kBetween +
         QString::number(article.postTime).toStdU16String();
}

std::optional<NoPushReason> PushController::Obstacle() const {
  if (!parts_.connection.IsConnected()) return NoPushReason::kNotConnected;
  // The latter for a moment only: the article is being opened anew.
  if (parts_.automations.IsBusy() || parts_.article.Reading().MustWait()) return NoPushReason::kBusy;
  if (!OpenArticle().IsArticle()) return NoPushReason::kNoArticle;
  return std::nullopt;
}

bool PushController::IsOwnArticle() const {
  const std::u16string& author = OpenArticle().author;
  const std::u16string& id = LoginId();
  return std::equal(author.begin(), author.end(), id.begin(), id.end(),
                    [](char16_t a, char16_t b) { return AsciiLower(a) == AsciiLower(b); });
}

int PushController::LikelyColumns() const {
  if (columns_ > 0 && columnsOfId_ == LoginId()) return columns_;
  // Of an unknown id, the longest leaves the least room.
  constexpr std::size_t kLongestId = 12;
  return LikelyPushColumns(LoginId().empty() ? kLongestId : LoginId().size());
}

void PushController::Open() {
  if (dialog_ != nullptr) {
    dialog_->activateWindow();
    return;
  }
  if (const std::optional<NoPushReason> obstacle = Obstacle()) return emit Said(DescribeNoPush(*obstacle));
  const ArticleInfo& article = OpenArticle();
  asked_ = KeyOf(article);
  const auto kept = drafts_.find(asked_);
  const Draft draft = kept == drafts_.end() ? Draft{} : kept->second;
  dialog_ = new PushOnDlg({.title = QString::fromStdU16String(article.title),
                           .text = draft.text,
                           .kind = draft.kind,
                           .kinds = IsOwnArticle() ? PushOnDlg::Kinds::kNoteOnly : PushOnDlg::Kinds::kAll,
                           .columns = LikelyColumns()},
                          &parts_.view);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog_, &PushOnDlg::Edited, this, &PushController::KeepDraft);
  connect(dialog_, &PushOnDlg::StartRequested, this, &PushController::Start);
  // From here on another one may be opened, though this one is not gone yet.
  connect(dialog_, &QDialog::finished, this, [this] { dialog_ = nullptr; });
  dialog_->open();
}

void PushController::KeepDraft() {
  if (dialog_ == nullptr) return;
  if (dialog_->Text().isEmpty())
    drafts_.erase(asked_);
  else
    drafts_[asked_] = {.text = dialog_->Text(), .kind = dialog_->Kind()};
}

void PushController::Start() {
  std::optional<NoPushReason> obstacle = Obstacle();
  if (!obstacle && KeyOf(OpenArticle()) != asked_) obstacle = NoPushReason::kOtherArticle;
  if (obstacle == NoPushReason::kNoArticle) obstacle = NoPushReason::kOtherArticle;
  if (obstacle) return dialog_->Complain(DescribeNoPush(*obstacle));
  KeepDraft();
  // No page of the reading's own is asked for between the keys of the run.
  parts_.article.OnUserKey();
  const bool started = parts_.automations.PushOn({.text = dialog_->Text().toStdU16String(),
                                                  .kind = dialog_->Kind(),
                                                  .columns = LikelyColumns(),
                                                  .asksCode = parts_.bookmarks.WantsCodeOf(OpenArticle())});
  if (!started) return dialog_->Complain(DescribeNoPush(NoPushReason::kBusy));
  parts_.article.KeepPlace();
  pushed_ = asked_;
  dialog_->accept();
}

void PushController::OnEnded(const PushRunResult& result) {
  const std::u16string article = std::exchange(pushed_, {});
  if (article.empty()) return;
  if (result.columns > 0) {
    columns_ = result.columns;
    columnsOfId_ = LoginId();
  }
  if (result.rest.empty())
    drafts_.erase(article);
  else
    drafts_[article].text = QString::fromStdU16String(result.rest);
  if (result.pushed > 0) parts_.article.ShowEnd();
  const QString words = DescribePushSuccess(result);
  if (words.isEmpty())
    emit Notice(DescribePushEnd(result));
  else
    emit Said(words);
}

}  // namespace quillet
