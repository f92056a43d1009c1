#pragma once

#include <string>
#include <string_view>

namespace orlune::testing {

/// A blocking connection to a server on this machine.
class HttpClient {
 public:
  /// `address` is "127.0.0.1:PORT".
  explicit HttpClient(std::string_view address);
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;
  ~HttpClient();

  int Socket() const { return socket_; }
  void Send(std::string_view text);
  /// Closes the direction to the server only.
  void EndSending();
  /// What comes next; nothing when the server has closed.
  std::string ReadSome();
  /// Everything that comes until the server closes.
  std::string ReadAll();

 private:
  int socket_;
};

/// A parsed response.
struct HttpAnswer {
  int Status = 0;
  std::string Head;
  std::string Body;

  /// The first header of that name, or "".
  std::string Header(std::string_view name) const;
  /// The header line with which a browser returns the cookies of the response.
  std::string CookieLine() const;
};

/// Sends "METHOD TARGET" with header lines (each ending in "\r\n") and a body, and reads the response.
HttpAnswer Fetch(std::string_view address, std::string_view methodAndTarget, std::string_view headers = "",
                 std::string_view body = "");
/// Posts an encoded form.
HttpAnswer Post(std::string_view address, std::string_view target, std::string_view form,
                std::string_view headers = "");

}  // namespace orlune::testing
