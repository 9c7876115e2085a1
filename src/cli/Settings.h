// The settings of the process.
#pragma once

#include "client/Timeouts.h"

namespace zelto {

/// What the shared options of a command decide for the whole process.
struct Settings {
  bool jsonMode = false;                    ///< commands print the API's JSON in place of their text form
  bool allowsColour = true;                 ///< false once `--no-color` has been given
  double requestTimeout = timeouts::usual;  ///< seconds that a call waits, unless it says otherwise

  /// Whether text is styled: standard output is a terminal, no variable NO_COLOR is set, be it empty, and the
  /// command line allows it.
  bool colourEnabled() const;
};

/// The one value of the process, which the `apply` of a command's options fills before anything else happens.
extern Settings settings;

}  // namespace zelto
