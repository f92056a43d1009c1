#pragma once

#include <memory>
#include <string_view>

#include "platform/date_languages.h"
#include "platform/localiser.h"

namespace orlune::testing {

class NoLanguagePacks : public LocaliserFactory {
 public:
  std::shared_ptr<const Localiser> Create(std::string_view /*programmaticName*/) override { return nullptr; }
  std::shared_ptr<const Localiser> CreatePreferred(std::string_view /*acceptLanguage*/) override {
    return nullptr;
  }
};

class OneLanguage : public DateLanguages {
 public:
  explicit OneLanguage(const RegionalSettings& regional) : regional_(regional) {}
  const RegionalSettings& In(std::string_view /*tag*/) override { return regional_; }

 private:
  const RegionalSettings& regional_;
};

}  // namespace orlune::testing
