// A server on a plain local socket that answers with exactly the bytes a test wants and keeps what it was
// sent.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support/Surroundings.h"

namespace support {

/// The usual response: the status, a Content-Length and the body.
std::string response(const std::string& body, int status = 200);

/// Listens on 127.0.0.1 as long as it lives and handles one connection after the other: reads a request, head
/// and body, then calls the handler.
class RawServer {
 public:
  /// Gets a connected socket, closed after it returns, and the request as received.
  using Handler = std::function<void(int connection, const std::string& request)>;

  explicit RawServer(Handler handler);
  /// Answers the requests with these, in order; the last one serves all further requests.
  explicit RawServer(const std::vector<std::string>& responses);
  RawServer(const RawServer&) = delete;
  ~RawServer();

  /// All requests so far, in order.
  std::vector<std::string> requests() const;
  /// The text of a control file that leads here, its token "secret-token".
  std::string controlFile() const;

  int port = 0;

 private:
  void run(const Handler& handler);

  int listening = -1;
  std::atomic<bool> isOver = false;
  mutable std::mutex mutex;
  std::vector<std::string> received;
  std::thread thread;
};

/// Sends all of `bytes`; a peer that is gone is no error.
void sendBytes(int connection, const std::string& bytes);

/// A server together with the control file that leads this process to it.
struct ServedAPI {
  explicit ServedAPI(const RawServer::Handler& handler) : server(handler) { announce(); }
  explicit ServedAPI(const std::vector<std::string>& responses) : server(responses) { announce(); }
  void announce() { writeFile(directory / "control.json", server.controlFile()); }

  TemporaryDirectory directory;
  RawServer server;
  ScopedVariable variable{"ZELTO_CONTROL_FILE", directory / "control.json"};
};

}  // namespace support
