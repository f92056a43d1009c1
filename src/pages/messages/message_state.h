#pragma once

#include <string>
#include <vector>

namespace orlune {

/// The message that a request writes, or the ones that it names.
struct MessageState {
  std::string Msg{};                    ///< the number of a message, or several joined with ", "
  std::vector<std::string> Recipients;  ///< names of users and groups
  std::string Subject;
  std::string Content;
};

}  // namespace orlune
