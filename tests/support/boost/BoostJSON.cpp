// All of Boost.JSON, for what reads JSON with other eyes than ours. An object file of its own: it defines
// what the program's own part of the library (src/json/BoostJSON.cpp) defines, which then stays out.
#include <boost/json/src.hpp>
