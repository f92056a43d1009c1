#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// A kind of fault, printed as "What; Remedy."; both outlive the findings.
struct FindingKind {
  std::string_view What;
  std::string_view Remedy;
  bool IsNote = false;  ///< a leftover of daily use, and no fault
};

/// The results of a check. Keeps the first places of each kind and counts the others.
class Findings {
 public:
  /// `place` is such as "event 17".
  void Add(const FindingKind& kind, std::string_view place);

  /// Whether there are no findings but notes.
  bool IsSound() const;
  void Print(std::ostream& output) const;

 private:
  struct Group {
    FindingKind Kind;
    std::int64_t Count = 0;
    std::vector<std::string> Places;
  };

  std::vector<Group> groups_;
};

}  // namespace orlune
