// A stand-in for the application that is fast and does nothing else: `bench_server DIRECTORY rules COUNT`
// lists so many rules, `bench_server DIRECTORY string BYTES` one with a name so long, `bench_server
// DIRECTORY feed ENTRIES` hands out so many events, 1,000 a poll, and then fails. It writes
// DIRECTORY/control.json and serves until it is killed.
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include "support/RawServer.h"

namespace {

std::string ruleList(long count) {
  std::string list = "[";
  for (long i = 0; i < count; ++i) {
    const std::string number = std::to_string(1'000'000 + i);
    list +=
        (i == 0 ? "" : ",") + std::string(R"({"id":"3f2a9c10-7d41-4e0b-9a6e-00000)") + number +
        R"(","name":"Rule number )" + number + R"( of a long list","group":"Group )" + number.substr(5) +
        R"(","enabled":true,"triggerType":"cron","subEvent":"cronTick","action":"shellScript",)" +
        R"("reverseAction":"none","profiles":["Default","Focus"],"triggerConfig":{"cronExpression":)" +
        R"("*/5 9-17 * * 1-5","timezone":"local"},"actionConfig":{"shellScript":"echo )" + number +
        R"( | tee -a ~/Library/Logs/rules.log","scriptRunner":"/bin/zsh","scriptTimeout":30},)" +
        R"("condition":null,"rateLimit":{"mode":"throttle","seconds":60.5},"availableValues":["date","time"]})";
  }
  return list + "]";
}

std::string feedBatch(long since, long end) {
  std::string batch;
  const long last = std::min(since + 1000, end);
  for (long i = since; i < last; ++i) {
    batch += (batch.empty() ? "" : ",") +
             std::string(
                 R"({"timestamp":"2026-03-01T10:15:30.250Z","source":"cron","kind":"cronTick","isDryRun":)") +
             R"(false,"triggeredAction":"notification","values":{"count":)" + std::to_string(i) + "}}";
  }
  return R"({"events":[)" + batch + R"(],"lastSeq":)" + std::to_string(last) + "}";
}

void sendRules(int connection, long count) {
  static const std::string list = support::response(ruleList(count));
  support::sendBytes(connection, list);
}

void sendString(int connection, long bytes) {
  static const std::string begin = R"([{"name":")";
  static const std::string end = R"("}])";
  // Piece by piece: what this process takes for itself, the client would lack.
  static const std::string piece(1'000'000, 'a');
  const std::size_t size = static_cast<std::size_t>(bytes) + begin.size() + end.size();
  support::sendBytes(connection,
                     "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(size) + "\r\n\r\n" + begin);
  for (long left = bytes; left > 0; left -= static_cast<long>(piece.size())) {
    support::sendBytes(connection, piece.substr(0, static_cast<std::size_t>(left)));
  }
  support::sendBytes(connection, end);
}

void sendFeed(int connection, const std::string& request, long end) {
  const std::size_t at = request.find("since=");
  const long since = at != std::string::npos ? std::atol(request.c_str() + at + 6) : 0;
  const bool isOver = since >= end;
  support::sendBytes(connection,
                     support::response(isOver ? "{}" : feedBatch(since, end), isOver ? 500 : 200));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 64;
  const std::string kind = argv[2];
  const long amount = std::atol(argv[3]);
  const support::RawServer server([&](int connection, const std::string& request) {
    if (kind == "rules") return sendRules(connection, amount);
    if (kind == "string") return sendString(connection, amount);
    sendFeed(connection, request, amount);
  });
  support::writeFile(std::string(argv[1]) + "/control.json", server.controlFile());
  for (;;) ::pause();
}
