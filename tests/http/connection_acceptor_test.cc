#include "http/connection_acceptor.h"

#include <cerrno>
#include <future>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <spdlog/sinks/base_sink.h>
#include <unistd.h>

#include "support/http_client.h"

namespace orlune::testing {
namespace {

/// A log that tells of its first line.
class Signal : public spdlog::sinks::base_sink<std::mutex> {
 public:
  std::promise<std::string> Line;

 private:
  void sink_it_(const spdlog::details::log_msg& line) override {
    Line.set_value(std::string(line.payload.data(), line.payload.size()));
  }
  void flush_() override {}
};

TEST(ConnectionAcceptor, SaysThatDescriptorsAreMissingAndWaitsForThem) {
  ListeningSocket socket("127.0.0.1:0");
  const std::string address = socket.Address();
  const auto sink = std::make_shared<Signal>();
  spdlog::logger log("test", sink);
  std::promise<void> received;
  int calls = 0;
  const auto receive = [&](const AcceptedConnection& connection) {
    close(connection.Socket);
    received.set_value();
  };
  const auto accept = [&](int listening, sockaddr* peer, socklen_t* size) {
    errno = EMFILE;
    return ++calls == 1 ? -1 : accept4(listening, peer, size, SOCK_CLOEXEC);
  };
  ConnectionAcceptor acceptor(std::move(socket), log, receive, accept);
  HttpClient client(address);
  EXPECT_EQ(sink->Line.get_future().get().substr(0, 19), "no file descriptors");
  received.get_future().wait();
  EXPECT_EQ(client.ReadAll(), "");
}

}  // namespace
}  // namespace orlune::testing
