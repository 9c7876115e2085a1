// Tables as no command prints them today; the end-to-end tests show the rest.
#include <gmock/gmock.h>

#include "cli/Options.h"
#include "cli/Out.h"
#include "platform/Streams.h"

namespace zelto {
namespace {

std::string printed(const std::vector<Out::Column>& columns) {
  OutputOptions{.noColor = true}.apply();
  testing::internal::CaptureStdout();
  Out::table(columns);
  platform::flushOutput();
  return testing::internal::GetCapturedStdout();
}

TEST(Out, FillsShortColumnsOfATable) {
  EXPECT_EQ(printed({{"A", {}, {"⚙︎x", "b", "e\u0301e\u0301e\u0301"}},
                     {"LONG", Out::Style::cyan, {"1"}},
                     {"Z", {}, {"x", "漢字 "}}}),
            "A    LONG  Z\n⚙︎x   1     x\nb          漢字 \ne\u0301e\u0301e\u0301        \n");
  EXPECT_EQ(printed({{"ID"}, {"NAME"}}), "");
  EXPECT_EQ(printed({}), "");
}

}  // namespace
}  // namespace zelto
