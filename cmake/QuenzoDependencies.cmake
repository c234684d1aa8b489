# What the libraries need. Tests, tools and benchmarks find what only they use in their own folders.

find_package(Boost 1.81 QUIET)
if(NOT Boost_FOUND)
  message(FATAL_ERROR
          "Boost 1.81 or newer is needed, and ${Boost_VERSION_STRING} is what was found (empty: none). In C++20 "
          "the rational number of an older Boost calls itself without end when it is compared with an integer. "
          "On Debian 12: apt-get install libboost1.81-dev, or run scripts/install-deps.")
endif()
find_package(fmt 9 REQUIRED)
find_package(RapidJSON REQUIRED)
if(NOT TARGET rapidjson)
  # Debian's package config names the folder only.
  add_library(rapidjson INTERFACE IMPORTED)
  target_include_directories(rapidjson SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIRS})
endif()
find_package(glog REQUIRED CONFIG)
