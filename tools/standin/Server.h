// The routes of the local API, over HTTP.
#pragma once

#include <string>

#include <boost/json.hpp>
#include <httplib.h>

#include "Store.h"

namespace standin {

/// The first state of the application and its reference texts; `Seed.cpp` shows the shape.
boost::json::object seed();

/// Makes `server` answer every endpoint from `store`, and the unchanging ones from `reference`, to those who
/// send `token`. Both objects have to outlive the server.
void installRoutes(httplib::Server& server, Store& store, const boost::json::object& reference,
                   const std::string& token);

}  // namespace standin
