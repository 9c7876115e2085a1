// Following the feeds while something happens.
#include <csignal>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

using support::Running;

TEST(Follow, ShowsRowsAsAnotherProcessFiresRules) {
  const Zelto zelto;
  ASSERT_EQ(zelto.shell("zelto api start").status, 0);
  Running events(zelto, "zelto events -f --since 5"), history(zelto, "zelto history -c 1 -fv"),
      watch(zelto, "zelto watch --verbose"), json(zelto, "zelto events --json --follow -c 1"),
      actions(zelto, "zelto watch --only actions --json");
  // What was there before shows first.
  ASSERT_TRUE(history.shows("Desk mode"));
  ASSERT_TRUE(watch.shows("Desk mode"));
  ASSERT_TRUE(actions.shows("\"Desk mode\""));
  ASSERT_TRUE(json.shows("\n]\n"));
  EXPECT_EQ(zelto.shell("zelto rules fire 'Sort downloads'").status, 0);
  EXPECT_TRUE(events.shows("  fileWatcher  fileCreated  -> shellScript\n          fileName=report.pdf "));
  EXPECT_TRUE(history.shows("  ok   Sort downloads  shellScript  "));
  EXPECT_TRUE(history.shows("      out  filed report.pdf\n"));
  EXPECT_TRUE(watch.shows("          fileName=report.pdf fileSize=20480 path=~/Downloads\n"));
  EXPECT_TRUE(watch.shows("      out  filed report.pdf\n"));
  EXPECT_TRUE(json.shows("      \"fileName\": \"report.pdf\",\n"));
  EXPECT_TRUE(json.shows("\n]\n[\n"));
  EXPECT_TRUE(actions.shows("\"stdout\": \"filed report.pdf\\n\""));
  EXPECT_EQ(zelto.shell("zelto rules fire 'Lock up'").status, 0);
  EXPECT_TRUE(events.shows("  screenLocked  screenLocked  -> shortcuts\n"));
  EXPECT_TRUE(history.shows("ran shortcut ⚙︎toggleBluetooth\n"));
  for (Running* each : {&events, &history, &watch, &actions}) {
    const auto outcome = each->end(SIGINT);
    EXPECT_EQ(outcome.status, 128 + SIGINT);
    EXPECT_EQ(outcome.error, "");
  }
}

}  // namespace
}  // namespace zelto
