#include "app/dialogs/login_form.h"

#include <algorithm>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "app/dialogs/label_words.h"
#include "app/overlay/panel_look.h"

namespace quillet {
namespace {

struct WayRow {
  TransportKind kind;
  const char* name;
};
constexpr WayRow kWays[] = {
    {TransportKind::kTelnet, "Telnet"}, {TransportKind::kSsh, "SSH"}, {TransportKind::kWebSocket, "WSS"}};

QLabel* Label() {
  auto* const label = new QLabel;
  label->setWordWrap(true);
  return label;
}

// One that leads elsewhere, and is quieter than the form's own button.
QPushButton* Link(const QString& text) {
  auto* const button = new QPushButton(text);
  button->setFlat(true);
  return button;
}

}  // namespace

LoginForm::LoginForm(const Contents& contents, QWidget* parent)
    : QWidget(parent), aim_(contents.aim), colours_(&LoginFormColoursFor(false)) {
  setAttribute(Qt::WA_NoMousePropagation);
  MakeControls(contents);
  NameControls();
  FillTransports();
  Arrange();
  ShowSite();
  Complain(contents.complaint);
  Connect();
  SetColours(*colours_);
}

void LoginForm::MakeControls(const Contents& contents) {
  title_ = Label();
  title_->setWordWrap(false);
  title_->setText(u"登入"_qs);
  site_ = Label();
  site_->setTextFormat(Qt::PlainText);
  complaint_ = Label();
  detail_ = Label();
  detail_->setTextFormat(Qt::PlainText);
  recentLabel_ = Label();
  recentLabel_->setText(u"站台"_qs);
  recent_ = new QComboBox;
  // A long address is cut, and does not widen the form.
  recent_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  removeSite_ = new QPushButton(u"移除"_qs);
  removeSite_->setToolTip(u"不再列出這個站台；記住的帳號不受影響"_qs);
  transport_ = new QComboBox;
  account_ = new QLineEdit(contents.entry.account);
  account_->setMaxLength(64);
  account_->setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
  password_ = new QLineEdit;
  password_->setMaxLength(64);
  password_->setEchoMode(QLineEdit::Password);
  showPassword_ = new QPushButton(u"顯示"_qs);
  showPassword_->setCheckable(true);
  rememberAccount_ = new QCheckBox(u"記住帳號"_qs);
  rememberPassword_ = new QCheckBox(u"記住密碼"_qs);
  kickOthers_ = new QCheckBox(u"刪除其它連線"_qs);
  kickOthers_->setToolTip(u"同一個帳號在別處的連線會被結束"_qs);
  rememberAccount_->setChecked(contents.entry.rememberAccount || contents.entry.rememberPassword);
  rememberPassword_->setChecked(contents.entry.rememberPassword);
  kickOthers_->setChecked(contents.entry.kickOthers);
  logIn_ = new QPushButton(u"登入"_qs);
  connect_ = Link(u"只連線不登入"_qs);
  address_ = Link(u"連線到…"_qs);
  demo_ = Link(u"示範站台"_qs);
  ProposePassword(contents.entry.password);
}

// By these names tests and accessibility tools know them.
void LoginForm::NameControls() {
  recent_->setObjectName("recentSites");
  removeSite_->setObjectName("removeSite");
  transport_->setObjectName("transport");
  account_->setObjectName("account");
  password_->setObjectName("password");
  showPassword_->setObjectName("showPassword");
  rememberAccount_->setObjectName("rememberAccount");
  rememberPassword_->setObjectName("rememberPassword");
  kickOthers_->setObjectName("kickOthers");
  logIn_->setObjectName("logIn");
  connect_->setObjectName("connectOnly");
  address_->setObjectName("otherAddress");
  demo_->setObjectName("demo");
  complaint_->setObjectName("complaint");
  detail_->setObjectName("detail");
  site_->setObjectName("site");
}

void LoginForm::SetColours(const LoginFormColours& colours) {
  colours_ = &colours;
  const QPalette base = LoginFormPalette(colours);
  const auto give = [&](QWidget* control, QPalette::ColorRole role, const QColor& colour) {
    QPalette palette = base;
    palette.setColor(QPalette::Active, role, colour);
    palette.setColor(QPalette::Inactive, role, colour);
    control->setPalette(palette);
  };
  setPalette(base);
  give(title_, QPalette::WindowText, colours.panel.title);
  give(site_, QPalette::WindowText, colours.panel.hint);
  give(complaint_, QPalette::WindowText, colours.panel.problem);
  give(detail_, QPalette::WindowText, colours.panel.line);
  for (QPushButton* link : {connect_, address_, demo_})
    give(link, QPalette::ButtonText, colours.panel.hint);
  give(logIn_, QPalette::Button, colours.mainButton);
  if (unit_ > 0) StyleControls();
  update();
}

void LoginForm::StyleControls() {
  for (QWidget* control : tabOrder_)
    StyleLoginControl(*control, panel_look::TextSize(unit_), *colours_);
}

void LoginForm::FillTransports() {
  const QSignalBlocker quiet(transport_);
  transport_->clear();
  for (const WayRow& row : kWays) {
    const LoginSites::Way& way = aim_.ways.Of(row.kind);
    transport_->addItem(row.name, static_cast<int>(row.kind));
    const int at = transport_->count() - 1;
    if (way.possible) {
      transport_->setItemData(at, way.address, Qt::ToolTipRole);
      continue;
    }
    transport_->setItemData(
        at,
        way.address.isEmpty() ? u"沒有設定這種連線的站台"_qs : u"這個版本還不能用 %1 連線"_qs.arg(row.name),
        Qt::ToolTipRole);
    if (auto* const model = qobject_cast<QStandardItemModel*>(transport_->model()))
      model->item(at)->setEnabled(false);
  }
  transport_->setCurrentIndex(transport_->findData(static_cast<int>(aim_.ways.proposed)));
}

void LoginForm::Arrange() {
  auto* const passwordRow = new QHBoxLayout;
  passwordRow->addWidget(password_, 1);
  passwordRow->addWidget(showPassword_);
  auto* const fields = new QGridLayout;
  const auto label = [&](int row, const QString& text, QWidget* buddy) {
    auto* const name = new QLabel(text);
    name->setBuddy(buddy);
    fields->addWidget(name, row, 0);
  };
  auto* const recentRow = new QHBoxLayout;
  recentRow->addWidget(recent_, 1);
  recentRow->addWidget(removeSite_);
  recentLabel_->setBuddy(recent_);
  fields->addWidget(recentLabel_, 0, 0);
  fields->addLayout(recentRow, 0, 1);
  label(1, u"連線方式"_qs, transport_);
  fields->addWidget(transport_, 1, 1);
  label(2, u"帳號"_qs, account_);
  fields->addWidget(account_, 2, 1);
  label(3, u"密碼"_qs, password_);
  fields->addLayout(passwordRow, 3, 1);
  fields->setColumnStretch(1, 1);
  auto* const switches = new QHBoxLayout;
  for (QCheckBox* box : {rememberAccount_, rememberPassword_, kickOthers_})
    switches->addWidget(box);
  switches->addStretch();
  auto* const buttons = new QHBoxLayout;
  for (QPushButton* link : {connect_, address_, demo_})
    buttons->addWidget(link);
  buttons->addStretch();
  buttons->addWidget(logIn_);

  auto* const header = new QHBoxLayout;
  header->addWidget(title_, 0, Qt::AlignBottom);
  header->addWidget(site_, 1, Qt::AlignBottom);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(header);
  layout->addWidget(complaint_);
  layout->addWidget(detail_);
  layout->addLayout(fields);
  layout->addLayout(switches);
  layout->addLayout(buttons);
  tabOrder_ = {
      recent_,           removeSite_, transport_, account_, password_, showPassword_, rememberAccount_,
      rememberPassword_, kickOthers_, logIn_,     connect_, address_,  demo_};
  OfferSites({});
}

void LoginForm::Connect() {
  connect(recent_, &QComboBox::currentIndexChanged, this,
          [this] { emit SiteChosen(recent_->currentIndex()); });
  connect(removeSite_, &QPushButton::clicked, this, [this] { emit SiteRemoved(recent_->currentIndex()); });
  connect(transport_, &QComboBox::currentIndexChanged, this, [this] {
    ShowSite();
    emit AimChanged();
  });
  connect(account_, &QLineEdit::textEdited, this, [this] { emit AimChanged(); });
  connect(password_, &QLineEdit::textEdited, this, [this] {
    passwordTouched_ = true;
    showPassword_->setEnabled(true);
  });
  connect(showPassword_, &QPushButton::toggled, this, &LoginForm::SetPasswordShown);
  connect(rememberAccount_, &QCheckBox::toggled, this, [this](bool on) {
    if (!on) rememberPassword_->setChecked(false);
  });
  connect(rememberPassword_, &QCheckBox::toggled, this, [this](bool on) {
    if (on) rememberAccount_->setChecked(true);
  });
  connect(logIn_, &QPushButton::clicked, this, &LoginForm::Submit);
  connect(connect_, &QPushButton::clicked, this, [this] { emit ConnectRequested(); });
  connect(address_, &QPushButton::clicked, this, [this] { emit AddressRequested(); });
  connect(demo_, &QPushButton::clicked, this, [this] { emit DemoRequested(); });
}

void LoginForm::ShowSite() {
  const bool possible = aim_.ways.Of(Entry().kind).possible;
  const QString name = Address() == aim_.namedAddress && !aim_.siteName.isEmpty() ? aim_.siteName : Address();
  site_->setText(possible ? name : u"沒有設定站台，請用「連線到…」輸入位址"_qs);
  logIn_->setEnabled(possible);
  connect_->setEnabled(possible);
}

void LoginForm::Complain(const LoginComplaint& complaint) {
  ShowWords(*complaint_, complaint.title);
  ShowWords(*detail_, complaint.detail);
  if (unit_ > 0) Place(unit_);
  update();
}

void LoginForm::SetAim(const Aim& aim) {
  aim_ = aim;
  FillTransports();
  ShowSite();
}

void LoginForm::OfferSites(const std::vector<OfferedSite>& sites) {
  const QSignalBlocker quiet(recent_);
  recent_->clear();
  for (const OfferedSite& site : sites) {
    const QString whole =
        site.account.isEmpty() ? site.address : u"%1 @ %2"_qs.arg(site.account, site.address);
    recent_->addItem(site.name.isEmpty() ? whole : site.name);
    recent_->setItemData(recent_->count() - 1, whole, Qt::ToolTipRole);
  }
  offersSites_ = sites.size() > 1;
  ShowRecent(offersSites_);
  if (unit_ > 0) Place(unit_);
}

void LoginForm::ShowRecent(bool shown) {
  for (QWidget* part : std::initializer_list<QWidget*>{recentLabel_, recent_, removeSite_})
    part->setVisible(shown);
}

void LoginForm::ProposeAccount(const LoginEntry& entry) {
  account_->setText(entry.account);
  rememberAccount_->setChecked(entry.rememberAccount || entry.rememberPassword);
  rememberPassword_->setChecked(entry.rememberPassword);
  ProposePassword(entry.password);
}

void LoginForm::ProposePassword(const QString& password) {
  password_->setText(password);
  passwordTouched_ = false;
  showPassword_->setChecked(false);
  showPassword_->setEnabled(password.isEmpty());
}

LoginEntry LoginForm::Entry() const {
  return {.kind = static_cast<TransportKind>(transport_->currentData().toInt()),
          .account = account_->text().trimmed(),
          .password = password_->text(),
          .rememberAccount = rememberAccount_->isChecked(),
          .rememberPassword = rememberPassword_->isChecked(),
          .kickOthers = kickOthers_->isChecked()};
}

const QString& LoginForm::Address() const {
  return aim_.ways.Of(static_cast<TransportKind>(transport_->currentData().toInt())).address;
}

QWidget* LoginForm::FirstField() const {
  if (QWidget* const focus = focusWidget()) return focus;
  if (account_->text().isEmpty()) return account_;
  if (password_->text().isEmpty()) return password_;
  return logIn_;
}

void LoginForm::Submit() {
  if (!logIn_->isEnabled()) return;
  if (account_->text().trimmed().isEmpty())
    account_->setFocus();
  else
    emit LoginRequested();
}

void LoginForm::SetPasswordShown(bool shown) {
  password_->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
  showPassword_->setText(shown ? u"隱藏"_qs : u"顯示"_qs);
}

void LoginForm::Place(double unit) {
  const double size = panel_look::TextSize(unit);
  if (unit != unit_) {
    unit_ = unit;
    QFont letters = parentWidget()->font();
    letters.setPixelSize(qRound(size));
    setFont(letters);
    QFont large = letters;
    large.setPixelSize(qRound(size * panel_look::kTitleSize));
    large.setWeight(QFont::DemiBold);
    title_->setFont(large);
    letters.setWeight(QFont::DemiBold);
    complaint_->setFont(letters);
    StyleControls();
    const int indent = qRound(size * 0.25);
    for (QLineEdit* field : {account_, password_})
      field->setTextMargins(indent, 0, indent, 0);
    const int padding = qRound(size * panel_look::kPanelPadding);
    layout()->setContentsMargins(padding, padding, padding, padding);
    layout()->setSpacing(qRound(size * 0.6));
    // The rows within it still go by the controls' sizes before.
    layout()->activate();
  }
  const QRect room = parentWidget()->rect();
  const int width = std::min(room.width(), std::max(qRound(size * 28), layout()->minimumSize().width()));
  const auto heightNow = [&] {
    layout()->invalidate();
    return layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height();
  };
  ShowRecent(offersSites_);
  int height = heightNow();
  // In a small window what is wrong comes before another choice.
  if (height > room.height()) {
    ShowRecent(false);
    height = heightNow();
  }
  const QSize whole(width, std::min(height, room.height()));
  setGeometry(QRect(room.center() - QPoint(whole.width() / 2, whole.height() / 2), whole));
  accentHeight_ = title_->fontMetrics().height();
}

void LoginForm::paintEvent(QPaintEvent* /*event*/) {
  const double size = panel_look::TextSize(unit_);
  const double padding = qRound(size * panel_look::kPanelPadding);
  const panel_look::Colours& panel = colours_->panel;
  QPainter painter(this);
  panel_look::PaintBox(painter, rect(), size, panel.border, panel.fill);
  const bool problem = !complaint_->text().isEmpty();
  painter.fillRect(QRectF(padding * 0.5, padding, qRound(size * panel_look::kMarkWidth), accentHeight_),
                   problem ? panel.problem : panel.busy);
}

void LoginForm::keyPressEvent(QKeyEvent* event) {
  // Nothing that a control leaves goes on to the terminal beneath.
  event->accept();
  if (event->key() == Qt::Key_Escape) {
    emit Dismissed();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
      button->click();
    else
      Submit();
  }
}

bool LoginForm::focusNextPrevChild(bool next) {
  const auto count = static_cast<std::ptrdiff_t>(tabOrder_.size());
  std::ptrdiff_t at = std::find(tabOrder_.begin(), tabOrder_.end(), focusWidget()) - tabOrder_.begin();
  if (at == count) at = next ? count - 1 : 0;
  for (std::ptrdiff_t step = 0; step < count; ++step) {
    at = (at + (next ? 1 : count - 1)) % count;
    QWidget* const control = tabOrder_[static_cast<std::size_t>(at)];
    if (!control->isEnabled() || control->isHidden()) continue;
    control->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return true;
}

}  // namespace quillet
