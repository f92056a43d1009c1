#pragma once

#include <string>
#include <vector>

namespace orlune {

/// The message to be written, or the numbers of messages, in a request.
struct MessageState {
  std::string Msg{};                    ///< the number of a message, or several joined with ", "
  std::vector<std::string> Recipients;  ///< names of users and groups
  std::string Subject;
  std::string Content;
};

}  // namespace orlune
