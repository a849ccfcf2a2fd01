#pragma once

#include "kit/QmlTypes.h"
#include "review/MediaBanners.h"
#include "review/PlayerEngine.h"
#include "review/ReviewScreenState.h"

/// Names the types of the review screen for QML.
namespace corvane::reviewTypes {

CORVANE_QML_TYPE(ReviewScreenState)
CORVANE_QML_TYPE(ReviewSelection)
CORVANE_QML_TYPE(ReviewTransport)
CORVANE_QML_TYPE(ReviewMarking)
CORVANE_QML_TYPE(ReviewPaneState)
CORVANE_QML_TYPE(FilterBar)
CORVANE_QML_TYPE(ReviewListModel)
CORVANE_QML_TYPE(SubclipListModel)
CORVANE_QML_TYPE(FilmstripLoader)
CORVANE_QML_TYPE(ClipInspector)
CORVANE_QML_TYPE(MediaBanners)
CORVANE_QML_TYPE(PlayerEngine)

} // namespace corvane::reviewTypes
