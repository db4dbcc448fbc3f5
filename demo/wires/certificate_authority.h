// A certificate authority of the demo's own, made anew at every start and never written to disk: who is given
// its certificate can tell that he talks to this demo. Made by the WebSocket door and by tests; any thread.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace quillet::demo {

// PEM texts. Empty when the system's cryptography could not make them.
struct ServerCertificate {
  std::string certificate;
  std::string key;
};

// What a certificate says.
struct CertificateWish {
  // As subjectAltName has it.
  std::vector<std::string> names = {"DNS:localhost", "IP:127.0.0.1", "IP:::1"};
  // From now on.
  std::chrono::seconds begins = -std::chrono::hours(1);
  std::chrono::seconds ends = std::chrono::hours(24 * 365);
};

class CertificateAuthority {
 public:
  CertificateAuthority();
  ~CertificateAuthority();
  CertificateAuthority(const CertificateAuthority&) = delete;
  CertificateAuthority& operator=(const CertificateAuthority&) = delete;

  // PEM: what a client has to trust. Empty when there is none.
  const std::string& Certificate() const { return certificate_; }
  ServerCertificate Issue(const CertificateWish& wish = {}) const;

 private:
  struct Signer;
  std::unique_ptr<Signer> signer_;
  std::string certificate_;
};

}  // namespace quillet::demo
