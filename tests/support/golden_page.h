#pragma once

#include <string_view>

#include <gtest/gtest.h>

namespace orlune::testing {

/// Whether `page` is, byte for byte, tests/pages/<folder>/golden/<name>.html; `place` is "<folder>/<name>". A
/// failure shows the first line that differs. With ORLUNE_UPDATE_GOLDEN=1 the page becomes the file instead.
::testing::AssertionResult IsGoldenPage(std::string_view place, std::string_view page);

}  // namespace orlune::testing
