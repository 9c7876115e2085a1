# find_package(ArgumentParser): the target ArgumentParser::ArgumentParser, and argument_parser_manual().
include(${CMAKE_CURRENT_LIST_DIR}/utf8proc.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/ArgumentParserTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/ArgumentParserManual.cmake)
