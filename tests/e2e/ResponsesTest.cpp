#include "e2e/Zelto.h"

namespace zelto {
namespace {

TEST(Responses, AreShownAsTheyCome) {
  Zelto zelto;
  zelto.shell(
      "echo 'if [ -t 1 ]; then zelto \"$@\" 2>&1; else zelto \"$@\" 2>&1 | cat -v; fi; true' >bin/seen; "
      "chmod +x bin/seen");
  support::writeFile(zelto.home / "script.sh", "uptime\n");
  support::writeFile(zelto.home / "blank.sh", " \n\u2003\n");
  for (const support::Case& expected : casesIn("responses.txt")) {
    const auto place = expected.place();
    for (const bool onTerminal : {false, true}) {
      const support::RawServer server(answers(expected));
      zelto.lookAt(server);
      zelto.expect(expected, onTerminal);
      EXPECT_EQ(summary(server.requests()), expected.all(">"));
    }
  }
}

TEST(Responses, OfAProgramInItsBundleNeedNoApplication) {
  for (const bool onTerminal : {false, true}) {
    const Zelto zelto;
    zelto.shell(
        "mkdir -p Zelto.app/Contents/SharedSupport; cp bin/zelto Zelto.app/Contents/SharedSupport/ZeltoCLI");
    zelto.shell("ln -sf ~/Zelto.app/Contents/SharedSupport/ZeltoCLI bin/zelto");
    for (const support::Case& expected : casesIn("bundle.txt")) {
      const auto place = expected.place();
      zelto.expect(expected, onTerminal);
    }
  }
}

}  // namespace
}  // namespace zelto
