#pragma once

#include "review/ReviewScreenState.h"

namespace corvane {

/// The services that read media files. A subclip's thumbnail fits in 320 by 180 pixels and may be
/// up to 0.1 s off.
ReviewScreenState::Services reviewServices();

} // namespace corvane
