#pragma once

#include <string_view>

#include "html/html.h"

namespace orlune {

/// What a choice of a list is called. A browser takes no markup there: a tag left open would swallow the
/// choices that follow.
Html OptionLabel(std::string_view text);

}  // namespace orlune
