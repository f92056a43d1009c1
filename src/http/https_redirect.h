#pragma once

#include <span>
#include <string>
#include <string_view>

#include "http/http_message.h"

namespace orlune {

/// Leads a request over HTTP to the same address over HTTPS, at `port`. 400 when it does not name its host,
/// 421 when that is none of `allowedHosts`.
ReplyMessage RedirectToHttps(const RequestMessage& request, std::string_view port,
                             std::span<const std::string> allowedHosts = {});

}  // namespace orlune
