#pragma once

#include "platform/secrets.h"

namespace orlune {

class SodiumSecrets : public Secrets {
 public:
  /// Throws std::runtime_error when there is no source of randomness.
  SodiumSecrets();

  std::string MakeSecret() override;
  std::string Digest(std::string_view text) const override;
};

}  // namespace orlune
