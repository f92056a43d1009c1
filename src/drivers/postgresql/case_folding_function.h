#pragma once

#include <string>
#include <string_view>

namespace orlune::postgresql {

/// The function of the database that makes texts comparable whatever their case. Its result is what
/// unicode::FoldCase gives, for every text but one with U+FDD0, which is no character.
constexpr std::string_view kCaseFoldingFunction = "orlune_fold";

/// The statement that creates it, or gives it its current body.
std::string CreateCaseFoldingFunction();

}  // namespace orlune::postgresql
