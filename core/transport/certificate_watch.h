// Why a server's certificate was refused. The TLS library's own checks are made as ever and their answer
// stands; this only looks at what they found, because whoever called them is told no more than that it
// failed. Used by the WebSocket line, on the library's thread; the answer is read on any.
#pragma once

#include <atomic>
#include <string>

struct ssl_ctx_st;
struct x509_store_ctx_st;

namespace quillet {

class CertificateWatch {
 public:
  enum class Finding { kNotAsked, kGood, kUntrusted, kWrongName, kExpired };

  // Watches the handshakes of this context, which this must outlive.
  void Attach(ssl_ctx_st* context);

  Finding Found() const;
  // The TLS library's own words.
  std::string Detail() const;

 private:
  static int Verify(x509_store_ctx_st* chain, void* self);

  static constexpr int kNotAsked = -1;
  static constexpr int kGood = -2;
  std::atomic<int> result_{kNotAsked};  // one of these, or the TLS library's number of the fault
};

}  // namespace quillet
