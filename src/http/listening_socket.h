#pragma once

#include <string>
#include <utility>

namespace orlune {

/// A listening TCP socket; closed with the object.
class ListeningSocket {
 public:
  /// `address` is numeric, such as "127.0.0.1:8080" or "[::1]:8080"; port 0 chooses a free one.
  /// Throws ConfigurationError for any other address, std::runtime_error when it cannot listen there.
  explicit ListeningSocket(const std::string& address);
  ~ListeningSocket();
  ListeningSocket(ListeningSocket&& other) noexcept
      : address_(std::move(other.address_)), descriptor_(std::exchange(other.descriptor_, -1)) {}
  ListeningSocket& operator=(ListeningSocket&&) = delete;
  ListeningSocket(const ListeningSocket&) = delete;
  ListeningSocket& operator=(const ListeningSocket&) = delete;

  /// The address with the port that is listened at.
  const std::string& Address() const { return address_; }
  int Descriptor() const { return descriptor_; }

 private:
  std::string address_;
  int descriptor_ = -1;
};

/// Throws ConfigurationError when `address` is not a numeric address with a port.
void CheckListenAddress(const std::string& address);

}  // namespace orlune
