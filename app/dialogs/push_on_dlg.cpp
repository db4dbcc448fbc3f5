#include "app/dialogs/push_on_dlg.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QRadioButton>
#include <QShortcut>
#include <QTreeWidgetItem>
#include <QVBoxLayout>

#include "app/dialogs/label_words.h"
#include "app/messages/push_messages.h"
#include "bbs/automation/push_pieces.h"
#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

// In Latin letters, and lines.
constexpr int kWidth = 72;
constexpr int kTextLines = 7;
constexpr int kPieceLines = 6;  // the header among them

enum PieceColumn { kNumberColumn, kWordsColumn, kWidthColumn };

QLabel* Label(const QString& name) {
  auto* const label = new QLabel;
  label->setObjectName(name);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  return label;
}

}  // namespace

PushOnDlg::PushOnDlg(const Contents& contents, QWidget* parent)
    : QDialog(parent),
      columns_(contents.columns),
      text_(new QPlainTextEdit(contents.text)),
      kinds_(new QButtonGroup(this)),
      heading_(Label("heading")),
      pieces_(new QTreeWidget),
      unpushable_(Label("unpushable")),
      complaint_(Label("complaint")) {
  setWindowTitle(u"連續推文"_qs);
  text_->setObjectName("text");
  pieces_->setObjectName("pieces");
  text_->setTabChangesFocus(true);
  text_->moveCursor(QTextCursor::End);
  Arrange(contents);

  connect(text_, &QPlainTextEdit::textChanged, this, &PushOnDlg::Review);
  connect(kinds_, &QButtonGroup::idToggled, this, &PushOnDlg::Edited);
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(Qt::CTRL | key, this), &QShortcut::activated, this, &PushOnDlg::Start);
  Review();
  text_->setFocus();
}

void PushOnDlg::Arrange(const Contents& contents) {
  // The font's own letters may be lower than the Chinese ones that another font lends it.
  const int lineHeight = QLabel(u"推"_qs).sizeHint().height();
  text_->setMinimumHeight(lineHeight * kTextLines);
  pieces_->setMinimumHeight(lineHeight * kPieceLines);
  pieces_->setColumnCount(3);
  pieces_->setHeaderLabels({u"順序"_qs, u"內容"_qs, u"欄數"_qs});
  pieces_->headerItem()->setTextAlignment(kWidthColumn, Qt::AlignRight | Qt::AlignVCenter);
  pieces_->setRootIsDecorated(false);
  pieces_->setUniformRowHeights(true);
  pieces_->setSelectionMode(QAbstractItemView::NoSelection);
  pieces_->header()->setStretchLastSection(false);
  pieces_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  pieces_->header()->setSectionResizeMode(kWordsColumn, QHeaderView::Stretch);

  auto* const title = Label("title");
  title->setText(contents.title);
  auto* const buttons = new QDialogButtonBox;
  start_ = buttons->addButton(u"開始推文"_qs, QDialogButtonBox::AcceptRole);
  start_->setToolTip(u"Ctrl+Enter"_qs);
  buttons->addButton(u"取消"_qs, QDialogButtonBox::RejectRole)->setToolTip(u"文字會保留"_qs);
  connect(buttons, &QDialogButtonBox::accepted, this, &PushOnDlg::Start);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(title);
  layout->addWidget(text_, 3);
  layout->addWidget(KindButtons(contents));
  layout->addWidget(heading_);
  layout->addWidget(pieces_, 2);
  layout->addWidget(unpushable_);
  layout->addWidget(complaint_);
  layout->addWidget(buttons);
  complaint_->hide();
  setMinimumWidth(LettersWide(*this, kWidth));
  FitToScreen(*this);
}

QWidget* PushOnDlg::KindButtons(const Contents& contents) {
  auto* const row = new QWidget;
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  const bool noteOnly = contents.kinds == Kinds::kNoteOnly;
  const PushKind chosen = noteOnly ? PushKind::kNote : contents.kind;
  struct Choice {
    PushKind kind;
    QString words;
  };
  for (const Choice& choice : {Choice{PushKind::kGood, u"推(&1)"_qs}, Choice{PushKind::kBad, u"噓(&2)"_qs},
                               Choice{PushKind::kNote, u"→ 只加註解(&3)"_qs}}) {
    auto* const button = new QRadioButton(choice.words);
    button->setChecked(choice.kind == chosen);
    button->setEnabled(!noteOnly || choice.kind == PushKind::kNote);
    kinds_->addButton(button, static_cast<int>(choice.kind));
    layout->addWidget(button);
  }
  layout->addStretch();
  return row;
}

PushKind PushOnDlg::Kind() const {
  return static_cast<PushKind>(kinds_->checkedId());
}

void PushOnDlg::Complain(const QString& words) {
  ShowWords(*complaint_, words);
}

void PushOnDlg::Review() {
  ShowPieces();
  const QString unpushable = QString::fromStdU16String(UnpushableIn(Text().toStdU16String()));
  ShowWords(*unpushable_, DescribeUnpushable(unpushable));
  emit Edited();
}

void PushOnDlg::ShowPieces() {
  const std::vector<PushPiece> pieces =
      CutIntoPushes(Text().toStdU16String(), columns_, static_cast<std::size_t>(kMostPieces) + 1);
  const bool tooMany = pieces.size() > static_cast<std::size_t>(kMostPieces);
  QList<QTreeWidgetItem*> items;
  for (const PushPiece& piece : pieces) {
    if (items.size() == kMostPieces) break;
    auto* const item =
        new QTreeWidgetItem({u"第 %1 則"_qs.arg(items.size() + 1), QString::fromStdU16String(piece.text),
                             u"%1/%2"_qs.arg(piece.columns).arg(columns_)});
    item->setTextAlignment(kWidthColumn, Qt::AlignRight | Qt::AlignVCenter);
    items << item;
  }
  pieces_->clear();
  pieces_->addTopLevelItems(items);
  heading_->setText(DescribePieces(static_cast<int>(items.size()), columns_));
  start_->setEnabled(!pieces.empty() && !tooMany);
  Complain(tooMany ? u"一次最多 %1 則，請把文字分成幾次推。"_qs.arg(kMostPieces) : QString());
}

void PushOnDlg::Start() {
  if (start_->isEnabled()) emit StartRequested();
}

}  // namespace quillet
