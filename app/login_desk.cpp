#include "app/login_desk.h"

#include <utility>

#include "settings/data_files.h"
#include "settings/password_seal.h"

namespace quillet {
namespace {

// Beside the account in the registry: the site that it is kept for, as SiteKey says it.
constexpr std::u16string_view kAccountSiteName = u"AccountSite";

QString Text(const std::u16string& text) {
  return QString::fromStdU16String(text);
}

void Wipe(QString& text) {
  text.fill(QChar(u'\0'));
  text.clear();
}

}  // namespace

LoginDesk::LoginDesk(CQuillDoc& doc, QWidget& view) : doc_(doc), view_(view) {
  // However it came about, it needs no form any more.
  connect(&doc_, &CQuillDoc::ConnectionBegins, this, &LoginDesk::Close);
  connect(&doc_, &CQuillDoc::LoginEnded, this, &LoginDesk::OnLoginEnded);
  connect(&doc_, &CQuillDoc::SettingsChanged, this, &LoginDesk::Dress);
  // An account that an older version kept belongs to the site that is set up now, whatever is chosen later.
  if (!doc_.Account().Account().empty() && !doc_.UserRegistry().Text(kRegistryPath, kAccountSiteName))
    doc_.UserRegistry().SetText(kRegistryPath, kAccountSiteName,
                                SiteKey(Text(doc_.Fields().site), doc_.Hosts()));
}

LoginDesk::~LoginDesk() {
  WipePending();
}

void LoginDesk::Show() {
  if (form_) return GiveKeyboard();
  const Site& current = doc_.CurrentSite();
  const bool standsThere = doc_.IsConnected() && !current.makeTransport;
  aim_ = standsThere ? current : Site{.address = Text(doc_.Fields().site), .name = {}};
  LoginEntry entry{.account = Text(doc_.Account().Account()), .password = {}};
  entry.rememberAccount = !entry.account.isEmpty();
  entry.kickOthers = doc_.Fields().kickOthers;
  Open(entry, {});
  ReviewPassword();
  if (!form_->Entry().password.isEmpty()) form_->RememberPassword(true);
  GiveKeyboard();
}

void LoginDesk::Open(const LoginEntry& entry, const LoginComplaint& complaint) {
  const LoginSites sites = ProposedLogin(aim_.address, doc_.Hosts());
  proposed_ = sites.proposed;
  Discard();
  form_ = new LoginForm({.sites = sites,
                         .siteName = aim_.name,
                         .namedAddress = aim_.address,
                         .entry = entry,
                         .complaint = complaint},
                        &view_);
  // Queued: connecting handles events of its own, and no key press of the form shall wait beneath it.
  connect(form_, &LoginForm::LoginRequested, this, &LoginDesk::LogIn, Qt::QueuedConnection);
  connect(form_, &LoginForm::ConnectRequested, this, &LoginDesk::ConnectOnly, Qt::QueuedConnection);
  connect(form_, &LoginForm::AddressRequested, this, &LoginDesk::AddressRequested, Qt::QueuedConnection);
  connect(form_, &LoginForm::DemoRequested, this, &LoginDesk::DemoRequested, Qt::QueuedConnection);
  connect(form_, &LoginForm::Dismissed, this, &LoginDesk::Close, Qt::QueuedConnection);
  connect(form_, &LoginForm::AimChanged, this, &LoginDesk::ReviewPassword);
  Dress();
  if (unit_ > 0) form_->Place(unit_);
  form_->setVisible(!covered_);
  GiveKeyboard();
  emit Changed();
}

void LoginDesk::Dress() {
  if (form_) form_->Wear(LoginFormColoursFor(doc_.Fields().work));
}

void LoginDesk::Discard() {
  if (!form_) return;
  view_.setFocusProxy(nullptr);
  form_->hide();
  form_->deleteLater();
  form_ = nullptr;
}

void LoginDesk::Close() {
  if (!form_) return;
  Discard();
  view_.setFocus();
  emit Changed();
}

void LoginDesk::GiveKeyboard() {
  if (!IsShown()) return;
  QWidget* const field = form_->FirstField();
  view_.setFocusProxy(field);
  field->setFocus();
}

void LoginDesk::SetCovered(bool covered) {
  if (covered == covered_) return;
  covered_ = covered;
  if (!form_) return;
  view_.setFocusProxy(nullptr);
  form_->setVisible(!covered_);
  if (covered_)
    view_.setFocus();
  else
    GiveKeyboard();
  emit Changed();
}

void LoginDesk::Place(double unit) {
  unit_ = unit;
  if (form_) form_->Place(unit);
}

// ---- What the user keeps

Site LoginDesk::Aim() const {
  if (form_->Address() == aim_.address) return aim_;
  return {.address = form_->Address(), .name = {}};
}

QString LoginDesk::KnownPassword() const {
  AccountStore& kept = doc_.Account();
  if (kept.Account().empty() || Text(kept.Account()) != form_->Entry().account) return {};
  const std::u16string site = SiteKey(form_->Address(), doc_.Hosts());
  if (site.empty() || doc_.UserRegistry().Text(kRegistryPath, kAccountSiteName) != site) return {};
  return Text(kept.Password());
}

void LoginDesk::ReviewPassword() {
  if (form_->PasswordTouched()) return;
  QString known = KnownPassword();
  form_->ProposePassword(known);
  Wipe(known);
}

bool LoginDesk::Remember(const LoginEntry& entry) {
  AccountStore& kept = doc_.Account();
  if (!entry.rememberAccount) {
    kept.Forget();
    doc_.UserRegistry().SetText(kRegistryPath, kAccountSiteName, u"");
    return true;
  }
  doc_.UserRegistry().SetText(kRegistryPath, kAccountSiteName, SiteKey(form_->Address(), doc_.Hosts()));
  std::u16string password = entry.rememberPassword ? entry.password.toStdU16String() : std::u16string();
  const bool held = kept.Remember(entry.account.toStdU16String(), password);
  quillet::Wipe(password);
  return held;
}

void LoginDesk::WipePending() {
  Wipe(pending_.password);
}

// ---- Logging in

void LoginDesk::LogIn() {
  if (!form_) return;
  LoginEntry entry = form_->Entry();
  if (!Remember(entry)) {
    form_->RememberPassword(false);
    form_->Complain(DescribeUnsealable(kSealedPasswordLength));
    return;
  }
  doc_.Change(u"Basic", u"KickOthers", entry.kickOthers ? u"1" : u"0");
  aim_ = Aim();
  KeepChosenSite(entry.kind);
  WipePending();
  pending_ = entry;
  LoginOrder order = MakeLoginOrder({.account = entry.account.toStdU16String(),
                                     .password = entry.password.toStdU16String(),
                                     .kickOthers = entry.kickOthers});
  Close();
  doc_.LogIn(aim_, std::move(order));
}

void LoginDesk::ConnectOnly() {
  if (!form_) return;
  aim_ = Aim();
  KeepChosenSite(form_->Entry().kind);
  Close();
  doc_.Open(aim_);
}

void LoginDesk::KeepChosenSite(TransportKind kind) {
  // What stands in for a way that this build cannot go is no choice of the user's.
  if (kind != proposed_) doc_.Change(u"Basic", u"Site", aim_.address.toStdU16String());
}

void LoginDesk::OnLoginEnded(const LoginEnd& end) {
  LoginEntry entry = pending_;
  WipePending();
  switch (end.how) {
    case LoginEnd::How::kRefused:
      Wipe(entry.password);
      // The account stays, without a password that is none.
      if (entry.rememberPassword) doc_.Account().Remember(entry.account.toStdU16String(), u"");
      Open(entry, DescribeRefusal(end.said));
      break;
    case LoginEnd::How::kNotConnected:
      Open(entry, DescribeBrokenLogin(doc_.Facts()));
      break;
    case LoginEnd::How::kFinished:
    case LoginEnd::How::kTakenOver:
      break;
  }
  Wipe(entry.password);
}

}  // namespace quillet
