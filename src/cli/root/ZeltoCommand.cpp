#include "cli/root/ZeltoCommand.h"

#include "cli/Health.h"
#include "client/Version.h"
#include "commands/Api.h"
#include "commands/Feeds.h"
#include "commands/Groups.h"
#include "commands/Profiles.h"
#include "commands/Reference.h"
#include "commands/Rules.h"
#include "commands/Schema.h"
#include "commands/Script.h"
#include "commands/Shortcuts.h"
#include "install/Mcp.h"

namespace zelto {

using ArgumentParser::type;

ArgumentParser::Declaration ZeltoCommand::declaration() {
  return ArgumentParser::command<ZeltoCommand>(
      {.commandName = "zelto",
       .abstract = "Control Zelto from the terminal",
       .discussion = "Starts Zelto and its local API on demand. `zelto api stop` shuts the API down again.",
       .version = &versionText,
       .subcommands = {type<Health>(), type<Rules>(), type<Groups>(), type<Profiles>(), type<Events>(),
                       type<History>(), type<Watch>(), type<Script>(), type<Runners>(), type<Shortcuts>(),
                       type<Schema>(), type<Docs>(), type<Prompt>(), type<Api>(), type<Mcp>()},
       .defaultSubcommand = type<Health>()});
}

}  // namespace zelto
