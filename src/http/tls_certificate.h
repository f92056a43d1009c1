#pragma once

#include <filesystem>
#include <memory>
#include <mutex>

struct gnutls_certificate_credentials_st;
struct gnutls_session_int;

namespace orlune {

/// Where a certificate and its private key are.
struct CertificateFiles {
  std::filesystem::path Certificate;  ///< PEM, with the certificates of the chain behind the server's
  std::filesystem::path Key;          ///< PEM, without a password
};

/// A certificate with its key, which can be read anew while connections use it. May be used by several
/// threads at once.
class TlsCertificate {
 public:
  using Credentials = std::shared_ptr<gnutls_certificate_credentials_st>;

  /// Throws ConfigurationError when a file cannot be used, or the key is not the certificate's.
  explicit TlsCertificate(CertificateFiles files);

  /// Reads the files again. Throws ConfigurationError, and keeps what it has.
  void Reload();
  /// Has `session`, which is new, show the certificate. The session needs what is returned until its end.
  Credentials ShowIn(gnutls_session_int* session) const;

 private:
  const CertificateFiles files_;
  mutable std::mutex mutex_;
  Credentials current_;
};

}  // namespace orlune
