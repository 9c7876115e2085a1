#include "commands/Feeds.h"

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "cli/Out.h"
#include "cli/Settings.h"
#include "client/Timeouts.h"
#include "client/Wire.h"
#include "commands/FeedRows.h"

namespace zelto {
namespace {

using ArgumentParser::command;

constexpr std::int64_t watchedTail = 10;

/// A long poll for what is newer than `since`. Its time-out follows the wait, whatever `--timeout` says.
JSONDocument feedPoll(const FeedKind& kind, std::int64_t since, double wait) {
  return expectObject(cliCall({.method = "GET",
                               .path = kind.path,
                               .query = {{"since", since}, {"wait", wait}},
                               .timeout = wait + timeouts::pollMargin}));
}

void followFeed(const FeedKind& kind, std::int64_t count, bool follow, std::optional<std::int64_t> since,
                bool verbose) {
  const Query query = since ? Query{{"since", *since}} : Query{{"limit", count}};
  JSONDocument response = expectObject(cliCall({"GET", kind.path, query}));
  if (settings.jsonMode && !follow) return Out::json(response);
  printFeedBatch(kind, response, verbose);
  if (!follow) return;
  for (;;) {
    response = feedPoll(kind, integerIn(response, "lastSeq"), timeouts::poll);
    printFeedBatch(kind, response, verbose);
  }
}

void followBothFeeds(bool verbose) {
  struct Feed {
    const FeedKind& kind;
    std::int64_t last = 0;
  };
  Feed feeds[] = {{FeedKind::events}, {FeedKind::actions}};
  const auto take = [&](Feed& feed, const JSONDocument& response) {
    printFeedBatch(feed.kind, response, verbose);
    feed.last = integerIn(response, "lastSeq");
  };
  for (Feed& feed : feeds) {
    take(feed, expectObject(cliCall({"GET", feed.kind.path, {{"limit", watchedTail}}})));
  }
  for (;;) {
    for (Feed& feed : feeds) take(feed, feedPoll(feed.kind, feed.last, timeouts::alternatingPoll));
  }
}

template <class Feed>
void declareTail(ArgumentParser::Arguments<Feed>& it) {
  it.option(&Feed::count, "count",
            {.help = "How many to show", .name = ArgumentParser::shortAndLong, .defaultValue = 20});
  it.flag(&Feed::follow, "follow",
          {.help = "Keep printing as they arrive", .name = ArgumentParser::shortAndLong});
  it.option(&Feed::since, "since", {.help = "Only entries after this sequence number"});
}

template <class Feed>
void declareVerbose(ArgumentParser::Arguments<Feed>& it) {
  it.flag(&Feed::verbose, "verbose",
          {.help = "Also print stdout and stderr", .name = ArgumentParser::shortAndLong});
}

}  // namespace

ArgumentParser::Declaration Events::declaration() {
  return command<Events>({.abstract = "Trigger events, newest last"}, [](auto& it) {
    declareTail(it);
    it.group(&Events::options, "options");
  });
}

void Events::run() const {
  options.apply();
  followFeed(FeedKind::events, count, follow, since, false);
}

ArgumentParser::Declaration History::declaration() {
  return command<History>({.abstract = "Actions Zelto has run"}, [](auto& it) {
    declareTail(it);
    declareVerbose(it);
    it.group(&History::options, "options");
  });
}

void History::run() const {
  options.apply();
  followFeed(FeedKind::actions, count, follow, since, verbose);
}

ArgumentParser::Declaration Watch::declaration() {
  return command<Watch>({.abstract = "Follow events and actions together", .discussion = "Ctrl-C to stop."},
                        [](auto& it) {
                          it.option(&Watch::only, "only", {.help = "events or actions, to follow only one"});
                          declareVerbose(it);
                          it.group(&Watch::options, "options");
                        });
}

void Watch::run() const {
  options.apply();
  if (!only) return followBothFeeds(verbose);
  if (*only == "events") return followFeed(FeedKind::events, watchedTail, true, std::nullopt, verbose);
  if (*only == "actions") return followFeed(FeedKind::actions, watchedTail, true, std::nullopt, verbose);
  throw CLIError("--only takes events or actions");
}

}  // namespace zelto
