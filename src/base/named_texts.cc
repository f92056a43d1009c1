#include "base/named_texts.h"

namespace orlune {

void NamedTexts::Add(std::string_view name, std::string_view value) {
  const auto found = texts_.find(name);
  if (found == texts_.end()) {
    texts_.emplace(name, value);
  } else {
    found->second.append(", ").append(value);
  }
}

void NamedTexts::Set(std::string_view name, std::string_view value) {
  texts_.insert_or_assign(std::string(name), std::string(value));
}

std::string_view NamedTexts::Find(std::string_view name) const {
  const auto found = texts_.find(name);
  return found == texts_.end() ? std::string_view() : found->second;
}

void NamedTexts::Remove(std::string_view name) {
  const auto found = texts_.find(name);
  if (found != texts_.end()) texts_.erase(found);
}

}  // namespace orlune
