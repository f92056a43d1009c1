#pragma once

#include <chrono>
#include <string>

namespace orlune {

/// A moment in the form of HTTP headers, such as "Mon, 15 Mar 2004 10:30:00 GMT".
std::string FormatHttpDate(std::chrono::sys_seconds moment);

}  // namespace orlune
