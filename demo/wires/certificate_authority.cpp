#include "demo/wires/certificate_authority.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

namespace quillet::demo {
namespace {

template <auto Free>
struct Freed {
  template <typename T>
  void operator()(T* object) const {
    Free(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using Card = std::unique_ptr<X509, Freed<X509_free>>;
using Memory = std::unique_ptr<BIO, Freed<BIO_free_all>>;

constexpr const char* kAuthorityName = "Quillet demo authority";
constexpr const char* kServerName = "Quillet demo";
constexpr std::chrono::seconds kAuthorityLife = std::chrono::hours(24 * 3650);
constexpr long kVersion3 = 2;  // counted from 0

Key MakeKey() {
  return Key(EVP_EC_gen("P-256"));
}

std::string Text(const Memory& memory) {
  char* data = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &data);
  return size > 0 ? std::string(data, static_cast<std::size_t>(size)) : std::string();
}

std::string Pem(X509* card) {
  const Memory memory(BIO_new(BIO_s_mem()));
  return PEM_write_bio_X509(memory.get(), card) == 1 ? Text(memory) : std::string();
}

std::string Pem(EVP_PKEY* key) {
  const Memory memory(BIO_new(BIO_s_mem()));
  const int written = PEM_write_bio_PrivateKey(memory.get(), key, nullptr, nullptr, 0, nullptr, nullptr);
  return written == 1 ? Text(memory) : std::string();
}

bool Name(X509_NAME* place, const char* name) {
  return X509_NAME_add_entry_by_txt(place, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>(name),
                                    -1, -1, 0) == 1;
}

bool Extend(X509* card, X509* issuer, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, card, nullptr, nullptr, 0);
  X509_EXTENSION* extension = X509V3_EXT_nconf_nid(nullptr, &context, kind, value.c_str());
  const bool added = extension != nullptr && X509_add_ext(card, extension, -1) == 1;
  X509_EXTENSION_free(extension);
  return added;
}

bool Number(X509* card) {
  long serial = 0;
  if (RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial) != 1) return false;
  return ASN1_INTEGER_set(X509_get_serialNumber(card), serial & 0x7FFFFFFF) == 1;
}

// Everything but the extensions and the signature.
Card Begin(EVP_PKEY* key, const char* name, std::chrono::seconds begins, std::chrono::seconds ends) {
  Card card(X509_new());
  const bool begun =
      card && X509_set_version(card.get(), kVersion3) == 1 && Number(card.get()) &&
      X509_gmtime_adj(X509_getm_notBefore(card.get()), static_cast<long>(begins.count())) != nullptr &&
      X509_gmtime_adj(X509_getm_notAfter(card.get()), static_cast<long>(ends.count())) != nullptr &&
      X509_set_pubkey(card.get(), key) == 1 && Name(X509_get_subject_name(card.get()), name);
  return begun ? std::move(card) : nullptr;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string all;
  for (const std::string& name : names)
    all += (all.empty() ? "" : ",") + name;
  return all;
}

}  // namespace

struct CertificateAuthority::Signer {
  Key key;
  Card card;
};

CertificateAuthority::CertificateAuthority() : signer_(std::make_unique<Signer>()) {
  signer_->key = MakeKey();
  if (!signer_->key) return;
  Card card = Begin(signer_->key.get(), kAuthorityName, CertificateWish().begins, kAuthorityLife);
  if (!card) return;
  const bool made = X509_set_issuer_name(card.get(), X509_get_subject_name(card.get())) == 1 &&
                    Extend(card.get(), card.get(), NID_basic_constraints, "critical,CA:TRUE") &&
                    Extend(card.get(), card.get(), NID_key_usage, "critical,keyCertSign,cRLSign") &&
                    Extend(card.get(), card.get(), NID_subject_key_identifier, "hash") &&
                    X509_sign(card.get(), signer_->key.get(), EVP_sha256()) > 0;
  if (!made) return;
  signer_->card = std::move(card);
  certificate_ = Pem(signer_->card.get());
}

CertificateAuthority::~CertificateAuthority() = default;

ServerCertificate CertificateAuthority::Issue(const CertificateWish& wish) const {
  X509* const issuer = signer_->card.get();
  const Key key = MakeKey();
  if (issuer == nullptr || !key) return {};
  const Card card = Begin(key.get(), kServerName, wish.begins, wish.ends);
  if (!card) return {};
  const bool made = X509_set_issuer_name(card.get(), X509_get_subject_name(issuer)) == 1 &&
                    Extend(card.get(), issuer, NID_basic_constraints, "critical,CA:FALSE") &&
                    Extend(card.get(), issuer, NID_key_usage, "critical,digitalSignature") &&
                    Extend(card.get(), issuer, NID_ext_key_usage, "serverAuth") &&
                    Extend(card.get(), issuer, NID_subject_alt_name, Joined(wish.names)) &&
                    X509_sign(card.get(), signer_->key.get(), EVP_sha256()) > 0;
  if (!made) return {};
  return {Pem(card.get()), Pem(key.get())};
}

}  // namespace quillet::demo
