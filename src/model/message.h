#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/civil_time.h"

namespace orlune {

/// A message to be sent; each recipient receives a copy.
struct OutgoingMessage {
  std::string Sender{};
  std::vector<std::string> Recipients;  ///< names of users and groups
  std::string Subject;
  std::string Content;
  std::string Suggestion{};  ///< the number of the sender's copy of a suggested event, or ""
  DateTime SentDate{};
};

/// A recipient's copy of a message.
struct ReceivedMessage {
  int Id = 0;
  std::string Sender;
  std::string Subject;
  std::string Content;
  std::string Suggestion;  ///< as above
  std::optional<DateTime> SentDate;
};

/// A received message as the list of messages shows it.
struct ListedMessage {
  int Id = 0;
  bool IsViewed = false;
  std::string Sender;
  std::string Subject;
  std::optional<DateTime> SentDate;
};

}  // namespace orlune
