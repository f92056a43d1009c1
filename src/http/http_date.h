#pragma once

#include <chrono>
#include <string>

namespace orlune {

/// A moment as headers write it, such as "Mon, 15 Mar 2004 10:30:00 GMT".
std::string FormatHttpDate(std::chrono::sys_seconds moment);

}  // namespace orlune
