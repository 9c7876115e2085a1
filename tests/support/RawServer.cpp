#include "support/RawServer.h"

#include <algorithm>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/Connection.h"

namespace support {
namespace {

std::string readRequest(int connection) {
  std::string request;
  char buffer[65536];
  for (;;) {
    const std::size_t head = request.find("\r\n\r\n");
    if (head != std::string::npos) {
      const std::size_t field = request.find("Content-Length: ");
      const std::size_t length = field < head ? std::stoul(request.substr(field + 16)) : 0;
      if (request.size() >= head + 4 + length) return request;
    }
    const auto count = ::read(connection, buffer, sizeof buffer);
    if (count <= 0) return request;
    request.append(buffer, static_cast<std::size_t>(count));
  }
}

}  // namespace

std::string response(const std::string& body, int status) {
  return "HTTP/1.1 " + std::to_string(status) + " X\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

void sendBytes(int connection, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const auto count = platform::sendSome(connection, std::string_view(bytes).substr(sent));
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

RawServer::RawServer(Handler handler) {
  listening = ::socket(AF_INET, SOCK_STREAM, 0);
  platform::secureSocket(listening);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (::bind(listening, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listening, 64) != 0) {
    throw std::runtime_error("cannot listen");
  }
  ::getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
  port = ntohs(address.sin_port);
  thread = std::thread([this, handler] { run(handler); });
}

RawServer::RawServer(const std::vector<std::string>& responses)
    : RawServer([responses, next = std::size_t{0}](int connection, const std::string&) mutable {
        sendBytes(connection, responses.at(std::min(next++, responses.size() - 1)));
      }) {}

RawServer::~RawServer() {
  // One more connection wakes the thread; on macOS, shutting the socket down does not.
  isOver = true;
  const platform::Connection last("127.0.0.1", port, 0);
  thread.join();
  ::close(listening);
}

void RawServer::run(const Handler& handler) {
  for (int connection; (connection = ::accept(listening, nullptr, nullptr)) >= 0; ::close(connection)) {
    if (isOver) break;
    platform::secureSocket(connection);
    const std::string request = readRequest(connection);
    {
      const std::lock_guard lock(mutex);
      received.push_back(request);
    }
    handler(connection, request);
  }
}

std::vector<std::string> RawServer::requests() const {
  const std::lock_guard lock(mutex);
  return received;
}

std::string RawServer::controlFile() const {
  return R"({"host":"127.0.0.1","port":)" + std::to_string(port) + R"(,"token":"secret-token"})";
}

}  // namespace support
