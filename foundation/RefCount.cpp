#include <foundation/RefCount.h>

namespace Quenzo {

IRefCountable::~IRefCountable() = default;

}  // namespace Quenzo
