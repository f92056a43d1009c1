#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

#include "file_descriptor.h"

namespace orlune::bench {

/// Simulates network latency: forwards everything to and from a server after a fixed delay, with unlimited
/// bandwidth. Listens on a free port of the loopback address, in a thread of its own, until it is destroyed.
class DelayingProxy {
 public:
  /// Delays each direction by half of `roundTrip`. Throws std::system_error.
  DelayingProxy(std::uint16_t serverPort, std::chrono::nanoseconds roundTrip);
  ~DelayingProxy();
  DelayingProxy(const DelayingProxy&) = delete;
  DelayingProxy& operator=(const DelayingProxy&) = delete;

  std::uint16_t Port() const { return port_; }
  /// How often a client sent something after it had received something from the server.
  std::uint64_t RoundTrips() const { return roundTrips_; }

 private:
  void Run();

  const std::uint16_t serverPort_;
  const std::chrono::nanoseconds delay_;
  FileDescriptor listener_;
  FileDescriptor end_;
  std::uint16_t port_ = 0;
  std::atomic<std::uint64_t> roundTrips_ = 0;
  std::thread thread_;
};

}  // namespace orlune::bench
