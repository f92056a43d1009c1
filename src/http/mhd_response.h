#pragma once

#include <memory>
#include <span>
#include <string>

#include <microhttpd.h>

#include "http/http_message.h"

namespace orlune {

using ResponseHandle = std::unique_ptr<MHD_Response, decltype(&MHD_destroy_response)>;

/// Whether the connection goes on after a reply, and the reply has a body.
struct ResponseFrame {
  bool IsLast = false;
  bool IsForHead = false;
};

/// `reply` as libmicrohttpd sends it, with `commonHeaders`, which every reply has.
ResponseHandle MakeResponse(ReplyMessage reply, std::span<const Header> commonHeaders, ResponseFrame frame);

/// `refusal` as a whole HTTP message, for a client that libmicrohttpd cannot answer.
std::string RawRefusal(ReplyMessage refusal, std::span<const Header> commonHeaders);

}  // namespace orlune
