#include "http/tls_certificate.h"

#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <gnutls/gnutls.h>

#include "base/configuration_error.h"

namespace orlune {
namespace {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  if (!file) throw ConfigurationError(fmt::format("cannot read {}", path.string()));
  return text;
}

gnutls_datum_t Bytes(std::string& text) {
  return {reinterpret_cast<unsigned char*>(text.data()), static_cast<unsigned>(text.size())};
}

TlsCertificate::Credentials Read(const CertificateFiles& files) {
  std::string certificate = ReadFile(files.Certificate);
  std::string key = ReadFile(files.Key);
  gnutls_certificate_credentials_t allocated = nullptr;
  if (gnutls_certificate_allocate_credentials(&allocated) != GNUTLS_E_SUCCESS) throw std::bad_alloc();
  TlsCertificate::Credentials credentials(allocated, &gnutls_certificate_free_credentials);
  const gnutls_datum_t certificateBytes = Bytes(certificate);
  const gnutls_datum_t keyBytes = Bytes(key);
  const int result =
      gnutls_certificate_set_x509_key_mem(allocated, &certificateBytes, &keyBytes, GNUTLS_X509_FMT_PEM);
  if (result < 0)
    throw ConfigurationError(fmt::format("cannot use certificate {} with key {}: {}",
                                         files.Certificate.string(), files.Key.string(),
                                         gnutls_strerror(result)));
  return credentials;
}

}  // namespace

TlsCertificate::TlsCertificate(CertificateFiles files) : files_(std::move(files)), current_(Read(files_)) {}

void TlsCertificate::Reload() {
  Credentials fresh = Read(files_);
  const std::lock_guard lock(mutex_);
  current_ = std::move(fresh);
}

TlsCertificate::Credentials TlsCertificate::ShowIn(gnutls_session_int* session) const {
  const std::lock_guard lock(mutex_);
  gnutls_credentials_set(session, GNUTLS_CRD_CERTIFICATE, current_.get());
  return current_;
}

}  // namespace orlune
