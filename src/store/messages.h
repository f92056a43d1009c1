#pragma once

#include <string_view>

#include "store/query.h"

namespace orlune {

// The table Messages.

/// How many messages of `loginName` are not read yet.
Query<int> UnreadMessageCount(std::string_view loginName);

}  // namespace orlune
