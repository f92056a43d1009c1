#pragma once

#include <string>
#include <string_view>

namespace orlune::testing {

/// A blocking connection to a server on this machine, as a browser without any cleverness would use it.
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

/// An answer, taken apart.
struct HttpAnswer {
  int Status = 0;
  std::string Head;
  std::string Body;

  /// The first header of that name, or "".
  std::string Header(std::string_view name) const;
  /// The header line with which a browser sends the cookie of the answer back.
  std::string CookieLine() const;
};

/// Sends "METHOD TARGET" with header lines (each ended with "\r\n") and a body, and reads the answer.
HttpAnswer Fetch(std::string_view address, std::string_view methodAndTarget, std::string_view headers = "",
                 std::string_view body = "");
/// Posts an encoded form.
HttpAnswer Post(std::string_view address, std::string_view target, std::string_view form,
                std::string_view headers = "");

}  // namespace orlune::testing
