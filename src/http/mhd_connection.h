#pragma once

#include <microhttpd.h>

struct gnutls_session_int;

namespace orlune {

/// The TLS session of a connection, or null.
inline gnutls_session_int* TlsSessionOf(MHD_Connection* connection) {
  const auto* session = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_GNUTLS_SESSION);
  return session == nullptr ? nullptr : static_cast<gnutls_session_int*>(session->tls_session);
}

}  // namespace orlune
