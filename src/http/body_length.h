#pragma once

#include <microhttpd.h>

namespace orlune {

/// Whether everybody who reads the request's headers comes to the same end of its body. Where that is not so,
/// a proxy could take a part of the body for another request.
bool HasClearLength(MHD_Connection* connection);

}  // namespace orlune
