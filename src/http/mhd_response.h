#pragma once

#include <memory>
#include <span>
#include <string>

#include <microhttpd.h>

#include "http/http_message.h"

namespace orlune {

using ResponseHandle = std::unique_ptr<MHD_Response, decltype(&MHD_destroy_response)>;

/// `reply` as libmicrohttpd sends it, with `commonHeaders`, which every reply has. `isLast` tells the client
/// that the connection is closed after it.
ResponseHandle MakeResponse(ReplyMessage reply, std::span<const Header> commonHeaders, bool isLast);

/// `refusal` as a whole HTTP message, for a client that libmicrohttpd cannot answer.
std::string RawRefusal(ReplyMessage refusal, std::span<const Header> commonHeaders);

}  // namespace orlune
