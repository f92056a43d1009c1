#include "support/http_client.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orlune::testing {

HttpClient::HttpClient(std::string_view address) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in server{};
  server.sin_family = AF_INET;
  server.sin_port =
      htons(static_cast<in_port_t>(std::stoi(std::string(address.substr(address.rfind(':') + 1)))));
  server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(socket_, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0)
    throw std::runtime_error("cannot connect to " + std::string(address));
}

HttpClient::~HttpClient() {
  close(socket_);
}

void HttpClient::Send(std::string_view text) {
  while (!text.empty()) {
    const ssize_t sent = send(socket_, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
}

void HttpClient::EndSending() {
  shutdown(socket_, SHUT_WR);
}

std::string HttpClient::ReadSome() {
  std::array<char, 16384> piece;
  const ssize_t size = recv(socket_, piece.data(), piece.size(), 0);
  return {piece.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

std::string HttpClient::ReadAll() {
  std::string all;
  for (std::string piece = ReadSome(); !piece.empty(); piece = ReadSome()) all += piece;
  return all;
}

std::string HttpAnswer::Header(std::string_view name) const {
  const std::string line = "\r\n" + std::string(name) + ": ";
  const std::size_t begin = Head.find(line);
  if (begin == std::string::npos) return {};
  const std::size_t value = begin + line.size();
  return Head.substr(value, Head.find("\r\n", value) - value);
}

std::string HttpAnswer::CookieLine() const {
  constexpr std::string_view kLine = "\r\nSet-Cookie: ";
  std::string line = "Cookie: ";
  for (std::size_t i = Head.find(kLine); i != std::string::npos; i = Head.find(kLine, i + 1)) {
    const std::size_t begin = i + kLine.size();
    line.append(Head.substr(begin, Head.find(';', begin) - begin)).append("; ");
  }
  return line + "\r\n";
}

HttpAnswer Post(std::string_view address, std::string_view target, std::string_view form,
                std::string_view headers) {
  std::string lines(headers);
  lines.append("Content-Type: application/x-www-form-urlencoded\r\n");
  return Fetch(address, "POST " + std::string(target), lines, form);
}

HttpAnswer Fetch(std::string_view address, std::string_view methodAndTarget, std::string_view headers,
                 std::string_view body) {
  std::string request(methodAndTarget);
  request.append(" HTTP/1.1\r\nHost: ").append(address).append("\r\nConnection: close\r\n").append(headers);
  if (!body.empty()) request.append("Content-Length: ").append(std::to_string(body.size())).append("\r\n");
  request.append("\r\n").append(body);
  HttpClient client(address);
  client.Send(request);
  const std::string text = client.ReadAll();
  const std::size_t end = text.find("\r\n\r\n");
  if (end == std::string::npos) return {};
  return {std::stoi(text.substr(text.find(' ') + 1)), text.substr(0, end + 2), text.substr(end + 4)};
}

}  // namespace orlune::testing
