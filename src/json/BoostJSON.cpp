// The sources of Boost.JSON that its parser needs. The library's own archive is one object file with all of
// them, which brings the standard streams and locales along, and every start would have to initialise those.
#include <boost/json/basic_parser.hpp>
#include <boost/json/detail/impl/default_resource.ipp>
#include <boost/json/detail/impl/shared_resource.ipp>
#include <boost/json/detail/impl/stack.ipp>
#include <boost/json/impl/error.ipp>
