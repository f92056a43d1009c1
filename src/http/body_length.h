#pragma once

#include <microhttpd.h>

namespace orlune {

/// Whether all servers find the same end of the request's body. Where they do not, an attacker could make a
/// proxy take a part of the body for another request (request smuggling).
bool HasUnambiguousLength(MHD_Connection* connection);

}  // namespace orlune
