#include "core/transport/certificate_watch.h"

#include <openssl/ssl.h>
#include <openssl/x509_vfy.h>

namespace quillet {

void CertificateWatch::Attach(ssl_ctx_st* context) {
  SSL_CTX_set_cert_verify_callback(context, &CertificateWatch::Verify, this);
}

int CertificateWatch::Verify(x509_store_ctx_st* chain, void* self) {
  const int good = X509_verify_cert(chain);
  static_cast<CertificateWatch*>(self)->result_ = good > 0 ? kGood : X509_STORE_CTX_get_error(chain);
  return good;
}

CertificateWatch::Finding CertificateWatch::Found() const {
  switch (result_) {
    case kNotAsked:
      return Finding::kNotAsked;
    case kGood:
      return Finding::kGood;
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
      return Finding::kExpired;
    // Who compares the name refuses a chain in which nothing else is wrong.
    case X509_V_OK:
    case X509_V_ERR_UNSPECIFIED:
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
      return Finding::kWrongName;
    default:
      return Finding::kUntrusted;
  }
}

std::string CertificateWatch::Detail() const {
  const Finding found = Found();
  if (found != Finding::kUntrusted && found != Finding::kExpired) return {};
  return X509_verify_cert_error_string(result_);
}

}  // namespace quillet
