#include "delivery/handoff/CacheMaker.h"

namespace corvane {

CacheMaker::~CacheMaker() = default;

} // namespace corvane
