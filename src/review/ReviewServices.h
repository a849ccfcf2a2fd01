#pragma once

#include "review/ReviewScreenState.h"

namespace corvane {

/// What makes the pictures of the review screen out of the media files. A subclip's thumbnail fits
/// in 320 by 180, stands as a player shows it, and may be a tenth of a second off.
ReviewScreenState::Services reviewServices();

} // namespace corvane
