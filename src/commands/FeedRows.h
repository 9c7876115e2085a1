// How the entries of the two feeds read on the screen.
#pragma once

#include "cli/Out.h"
#include "client/APICall.h"
#include "client/Wire.h"

namespace zelto {

/// One of the two feeds: its path, the key of its list in a response, and how its rows are printed.
struct FeedKind {
  const char* path;
  const char* listKey;
  void (*printRows)(const json::JSONElements& list, bool verbose);

  static const FeedKind events, actions;
};

/// Prints the entries of a response, as rows or as one JSON array, and writes them out at once. Prints
/// nothing if there are none.
void printFeedBatch(const FeedKind& kind, JSONView response, bool verbose);

}  // namespace zelto
