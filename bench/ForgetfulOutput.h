#pragma once

#include <foundation/DataStream.h>
#include <foundation/RefCount.h>

namespace Quenzo::Bench {

/// An output that forgets what is written. Nobody sees its class, so that every byte costs its virtual call.
SP<Core::IDataOutput> MakeForgetfulOutput();

}  // namespace Quenzo::Bench
