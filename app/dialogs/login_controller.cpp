#include "app/dialogs/login_controller.h"

#include <algorithm>
#include <utility>

#include "settings/files/data_files.h"
#include "settings/password_seal.h"

namespace quillet {
namespace {

QString Text(const std::u16string& text) {
  return QString::fromStdU16String(text);
}

// No host has one, and no account.
constexpr char16_t kBeforeAccount = u' ';

OfferedSite AsOffered(const RecentSite& site) {
  return {.address = Text(site.address), .account = Text(site.account), .name = Text(site.name)};
}

void Wipe(QString& text) {
  text.fill(QChar(u'\0'));
  text.clear();
}

}  // namespace

LoginController::LoginController(const Parts& parts) : parts_(parts) {
  // However it came about, it needs no form any more.
  connect(&parts_.connection, &Connection::ConnectionBegins, this, &LoginController::Close);
  connect(&parts_.automations, &Automations::LoginEnded, this, &LoginController::OnLoginEnded);
  connect(&parts_.settings, &UserSettings::Changed, this, &LoginController::ApplyColours);
}

LoginController::~LoginController() {
  NoteUnticking();
  Wipe(pending_.password);
}

void LoginController::Show() {
  if (form_) return GiveKeyboard();
  const Site& current = parts_.connection.CurrentSite();
  const bool standsThere = parts_.connection.IsConnected() && !current.isRecording;
  const std::u16string& usedLast = parts_.settings.Fields().site;
  aim_ = standsThere ? current
                     : Site{.address = Text(usedLast),
                            .name = Text(NameOfSite(parts_.settings.Store().Map(), usedLast))};
  account_.clear();
  OpenAtAim();
}

void LoginController::ShowFor(const RecentSite& site) {
  aim_ = {.address = Text(site.address), .name = Text(site.name)};
  account_ = Text(site.account);
  OpenAtAim();
}

void LoginController::OpenAtAim() {
  const LoginSites ways = ProposedLogin(aim_.address, parts_.hosts);
  LoginEntry entry = Remembered(KeyOf(SiteAt(ways.Of(ways.proposed).address)));
  Open(entry, {});
  Wipe(entry.password);
}

void LoginController::Open(const LoginEntry& entry, const LoginComplaint& complaint) {
  Discard();
  form_ = new LoginForm({.aim = WaysTo(aim_), .entry = entry, .complaint = complaint}, &parts_.view);
  proposedFor_ = AimKey();
  proposed_ = entry;
  Wipe(proposed_.password);
  OfferSites();
  // Queued: what follows may do away with the form, which is still at work on the key or click.
  connect(form_, &LoginForm::LoginRequested, this, &LoginController::LogIn, Qt::QueuedConnection);
  connect(form_, &LoginForm::ConnectRequested, this, &LoginController::ConnectOnly, Qt::QueuedConnection);
  connect(form_, &LoginForm::AddressRequested, this, &LoginController::AddressRequested,
          Qt::QueuedConnection);
  connect(form_, &LoginForm::DemoRequested, this, &LoginController::GoToDemo, Qt::QueuedConnection);
  connect(form_, &LoginForm::Dismissed, this, &LoginController::Close, Qt::QueuedConnection);
  connect(form_, &LoginForm::AimChanged, this, &LoginController::OnAimChanged);
  // Queued: they fill the box anew that is telling of its choice.
  connect(form_, &LoginForm::SiteChosen, this, &LoginController::ChooseSite, Qt::QueuedConnection);
  connect(form_, &LoginForm::SiteRemoved, this, &LoginController::RemoveSite, Qt::QueuedConnection);
  ApplyColours();
  if (unit_ > 0) form_->Place(unit_);
  form_->setVisible(!covered_);
  GiveKeyboard();
  emit Changed();
}

void LoginController::ApplyColours() {
  if (form_) form_->SetColours(LoginFormColoursFor(parts_.settings.Fields().work));
}

void LoginController::Discard() {
  if (!form_) return;
  NoteUnticking();
  parts_.view.setFocusProxy(nullptr);
  form_->hide();
  form_->deleteLater();
  form_ = nullptr;
  emit AccountWritten();
}

void LoginController::Close() {
  if (!form_) return;
  Discard();
  parts_.view.setFocus();
  emit Changed();
}

void LoginController::GiveKeyboard() {
  if (!IsShown()) return;
  QWidget* const field = form_->FirstField();
  parts_.view.setFocusProxy(field);
  field->setFocus();
}

void LoginController::SetCovered(bool covered) {
  if (covered == covered_) return;
  covered_ = covered;
  if (!form_) return;
  parts_.view.setFocusProxy(nullptr);
  form_->setVisible(!covered_);
  if (covered_)
    parts_.view.setFocus();
  else
    GiveKeyboard();
  emit Changed();
}

void LoginController::Place(const OverlayPlace& place) {
  unit_ = place.unit;
  if (form_) form_->Place(unit_);
}

QRectF LoginController::Bounds(const OverlayPlace& place) const {
  return IsShown() ? QRectF(place.area) : QRectF();
}

void LoginController::Paint(QPainter& painter, const OverlayPlace& place) {
  painter.fillRect(place.area, place.Colours().calmScrim);
}

// ---- What the user keeps

Site LoginController::SiteAt(const QString& address) const {
  if (address == aim_.address) return aim_;
  return {.address = address, .name = {}};
}

LoginForm::Aim LoginController::WaysTo(const Site& site) const {
  return {
      .ways = ProposedLogin(site.address, parts_.hosts), .siteName = site.name, .namedAddress = site.address};
}

std::u16string LoginController::KeyOf(const Site& site) const {
  std::u16string key = SiteKey(site, parts_.hosts);
  const bool isForAccount = !account_.isEmpty() && key == SiteKey(aim_, parts_.hosts);
  return isForAccount ? key + kBeforeAccount + account_.toStdU16String() : key;
}

QString LoginController::PasswordOf(const std::u16string& key, const QString& account) {
  AccountStore& kept = parts_.account;
  if (Text(kept.Account(key)) == account) return Text(kept.Password(key));
  // It may be the one that is remembered for the site as well.
  const std::u16string ofSite = key.substr(0, key.find(kBeforeAccount));
  return Text(kept.Account(ofSite)) == account ? Text(kept.Password(ofSite)) : QString();
}

LoginEntry LoginController::Remembered(const std::u16string& key) {
  AccountStore& kept = parts_.account;
  const std::size_t before = key.find(kBeforeAccount);
  const bool isForAccount = before != std::u16string::npos;
  LoginEntry entry;
  entry.account = Text(isForAccount ? key.substr(before + 1) : kept.Account(key));
  entry.password = PasswordOf(key, entry.account);
  entry.rememberAccount = !entry.account.isEmpty();
  entry.rememberPassword = !entry.password.isEmpty();
  entry.kickOthers = parts_.settings.Fields().kickOthers;
  return entry;
}

void LoginController::OnAimChanged() {
  const std::u16string key = AimKey();
  const bool isTouched = form_->Entry().account != proposed_.account || form_->PasswordTouched();
  if (key != proposedFor_) {
    NoteUnticking();
    proposedFor_ = key;
    proposed_ = isTouched ? form_->Entry() : Remembered(key);
    if (!isTouched) form_->ProposeAccount(proposed_);
    Wipe(proposed_.password);
  }
  if (!form_->PasswordTouched()) ReviewPassword();
}

void LoginController::ReviewPassword() {
  QString known = PasswordOf(proposedFor_, form_->Entry().account);
  form_->ProposePassword(known);
  if (known.isEmpty()) return;
  // What is remembered goes on being remembered unless the user says otherwise.
  form_->RememberPassword(true);
  proposed_.rememberAccount = proposed_.rememberPassword = true;
  Wipe(known);
}

void LoginController::ChooseSite(int index) {
  // The first is the one that the form leads to.
  if (form_ && index > 0 && index < static_cast<int>(offered_.size()))
    AimAt(OfferedSite(offered_[static_cast<std::size_t>(index)]));
}

void LoginController::AimAt(const OfferedSite& site) {
  aim_ = {.address = site.address, .name = site.name};
  account_ = site.account;
  form_->SetAim(WaysTo(aim_));
  OfferSites();
  OnAimChanged();
}

void LoginController::RemoveSite(int index) {
  if (!form_ || index < 0 || index >= static_cast<int>(offered_.size())) return;
  const OfferedSite& site = offered_[static_cast<std::size_t>(index)];
  const RecentSite gone{.address = PlainAddress(site.address.toStdU16String()),
                        .account = site.account.toStdU16String(),
                        .name = {}};
  parts_.settings.ChangeMap([&](SettingsMap& map) { ForgetSite(map, gone, parts_.settings.Fields().site); });
  const std::vector<RecentSite> left = parts_.settings.RecentSites();
  if (left.empty()) return OfferSites();
  AimAt(AsOffered(left.front()));
}

void LoginController::OfferSites() {
  offered_ = {{.address = aim_.address, .account = account_, .name = aim_.name}};
  for (const RecentSite& site : parts_.settings.RecentSites()) {
    const bool isThere = std::any_of(offered_.begin(), offered_.end(), [&](const OfferedSite& one) {
      return one.account.toStdU16String() == site.account &&
             PlainAddress(one.address.toStdU16String()) == site.address;
    });
    if (!isThere) offered_.push_back(AsOffered(site));
  }
  // Who has been elsewhere finds his way back to the BBS itself.
  const QString own = ProposedAddress({}, parts_.hosts.mainHost);
  const bool isOwnThere = std::any_of(offered_.begin(), offered_.end(), [&](const OfferedSite& site) {
    return SiteKey(site.address, parts_.hosts) == SiteKey(own, parts_.hosts);
  });
  if (!own.isEmpty() && !isOwnThere) offered_.push_back({.address = own, .account = {}, .name = {}});
  form_->OfferSites(offered_);
}

void LoginController::NoteUnticking() {
  if (!form_) return;
  AccountStore& kept = parts_.account;
  const LoginEntry entry = form_->Entry();
  const std::u16string account = kept.Account(proposedFor_);
  if (account.empty() || Text(account) != entry.account) return;
  if (proposed_.rememberAccount && !entry.rememberAccount)
    kept.Forget(proposedFor_);
  else if (proposed_.rememberPassword && !entry.rememberPassword)
    kept.ForgetPassword(proposedFor_);
}

void LoginController::Remember(const LoginEntry& entry, const std::u16string& key) {
  AccountStore& kept = parts_.account;
  const std::u16string account = entry.account.toStdU16String();
  if (!entry.rememberAccount) {
    if (kept.Account(key) == account) kept.Forget(key);
    return;
  }
  // Without a password nobody has been let in yet; what is remembered of somebody who was stays.
  if (entry.password.isEmpty() && !kept.Account(key).empty()) return;
  std::u16string password = entry.rememberPassword ? entry.password.toStdU16String() : std::u16string();
  kept.Remember(key, account, password);
  quillet::Wipe(password);
}

// ---- Logging in

LoginOrder LoginController::MakeOrder(const std::u16string& key, const LoginEntry& entry) {
  std::u16string password = entry.password.toStdU16String();
  if (entry.rememberPassword && !parts_.account.CanRemember(password)) {
    quillet::Wipe(password);
    // Not the user's doing, so that nothing is forgotten by it.
    proposed_.rememberPassword = false;
    form_->RememberPassword(false);
    form_->Complain(DescribeUnsealable(kSealedPasswordLength));
    return nullptr;
  }
  parts_.settings.Set(&Settings::kickOthers, entry.kickOthers);
  Wipe(pending_.password);
  pending_ = entry;
  pendingFor_ = key;
  LoginOrder order = MakeLoginOrder(
      {.account = entry.account.toStdU16String(), .password = password, .kickOthers = entry.kickOthers});
  quillet::Wipe(password);
  sent_ = order;
  return order;
}

void LoginController::LogIn() {
  parts_.leaving.Before(LeaveFor::kOtherSite, [this] {
    if (!form_) return;
    const Site site = SiteAt(form_->Address());
    const LoginEntry entry = form_->Entry();
    // Another one than the site was chosen with is remembered for the site itself.
    const bool isOther = !account_.isEmpty() && entry.account != account_;
    LoginOrder order = MakeOrder(isOther ? SiteKey(site, parts_.hosts) : KeyOf(site), entry);
    if (!order) return;
    Close();
    parts_.connection.Open(site, std::move(order));
  });
}

void LoginController::ConnectOnly() {
  parts_.leaving.Before(LeaveFor::kOtherSite, [this] {
    if (!form_) return;
    const Site site = SiteAt(form_->Address());
    Close();
    parts_.connection.Open(site);
  });
}

void LoginController::GoToDemo() {
  parts_.leaving.Before(LeaveFor::kOtherSite, [this] {
    if (!form_) return;
    const std::u16string demo = KeyOf({.address = {}, .name = {}, .makeTransport = {}, .isBbs = true});
    // What is remembered for another site is not told to this one.
    const LoginEntry there = Remembered(proposedFor_);
    LoginEntry entry = form_->Entry();
    if (entry.account == there.account && entry.password == there.password) entry = Remembered(demo);
    LoginOrder order;
    if (!entry.account.isEmpty()) {
      order = MakeOrder(demo, entry);
      if (!order) return;
    }
    emit DemoRequested(order, entry.kind);
    if (!parts_.connection.WillLogIn()) Wipe(pending_.password);  // there is no demo
  });
}

void LoginController::AimAtCurrentSite() {
  const Site& current = parts_.connection.CurrentSite();
  if (SiteKey(current, parts_.hosts) != SiteKey(aim_, parts_.hosts)) account_.clear();
  aim_ = current;
}

void LoginController::OnLoginEnded(const LoginEnd& end) {
  // Of an earlier login: what is pending is on its way to take its place.
  const LoginOrder sent = sent_.lock();
  if (end.how == LoginEnd::How::kTakenOver && sent && parts_.connection.WantedLogin() == sent) return;
  LoginEntry entry = std::exchange(pending_, {});
  switch (end.how) {
    case LoginEnd::How::kFinished:
      Remember(entry, pendingFor_);
      emit AccountWritten();
      break;
    case LoginEnd::How::kRefused:
      AimAtCurrentSite();
      // Given once more, without the form.
      if (entry.account.isEmpty()) entry = Remembered(KeyOf(aim_));
      Wipe(entry.password);
      Open(entry, DescribeRefusal(end.said));
      break;
    case LoginEnd::How::kNotConnected:
      // It was let in before, and is given again when the connection is made anew.
      if (parts_.connection.LoginKept()) break;
      // The panel asks first whether the host is to be trusted.
      if (parts_.connection.Facts().end.reason == EndReason::kHostKeyChanged) break;
      AimAtCurrentSite();
      Open(entry, DescribeBrokenLogin(parts_.connection.Facts()));
      break;
    case LoginEnd::How::kTakenOver:
      break;
  }
  Wipe(entry.password);
}

}  // namespace quillet
