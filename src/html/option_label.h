#pragma once

#include <string_view>

#include "html/html.h"

namespace orlune {

/// The label of an OPTION. All markup is escaped, since an unclosed tag would hide the options that follow.
Html OptionLabel(std::string_view text);

}  // namespace orlune
