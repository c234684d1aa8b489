#pragma once

#include <Conf/Interfaces/FrameInfo.h>

#include <boost/rational.hpp>

#include <string>

namespace Quenzo::Tools {

/// A size typed as 1920x1080, each side from 1 to 2147483647. Fails with WrongUsage.
FrameSize ParseSize(const std::string& typed);

/// A frame rate typed as 25, as 30000/1001 or as 29.97, from 0 to 1000000. Fails with WrongUsage.
boost::rational<long long> ParseFrameRate(const std::string& typed);

/// A quality, a whole number from 1 to 32. Fails with WrongUsage.
int ParseQuality(const std::string& typed);

/// An angle in degrees, with a fraction or without, of at most a million either way. Fails with WrongUsage.
double ParseDegrees(const std::string& typed);

}  // namespace Quenzo::Tools
