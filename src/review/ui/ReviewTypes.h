#pragma once

#include "review/MediaBanners.h"
#include "review/ReviewScreenState.h"

#include <QtQml/qqml.h>

/// Names the types of the review screen's state for QML.
namespace corvane::reviewTypes {

struct ReviewScreenStateType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewScreenState)
    QML_NAMED_ELEMENT(ReviewScreenState)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ReviewSelectionType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewSelection)
    QML_NAMED_ELEMENT(ReviewSelection)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ReviewTransportType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewTransport)
    QML_NAMED_ELEMENT(ReviewTransport)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ReviewMarkingType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewMarking)
    QML_NAMED_ELEMENT(ReviewMarking)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ReviewPaneStateType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewPaneState)
    QML_NAMED_ELEMENT(ReviewPaneState)
    QML_UNCREATABLE("Comes with the review screen")
};

struct FilterBarType {
    Q_GADGET
    QML_FOREIGN(corvane::FilterBar)
    QML_NAMED_ELEMENT(FilterBar)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ReviewListModelType {
    Q_GADGET
    QML_FOREIGN(corvane::ReviewListModel)
    QML_NAMED_ELEMENT(ReviewListModel)
    QML_UNCREATABLE("Comes with the review screen")
};

struct SubclipListModelType {
    Q_GADGET
    QML_FOREIGN(corvane::SubclipListModel)
    QML_NAMED_ELEMENT(SubclipListModel)
    QML_UNCREATABLE("Comes with the review screen")
};

struct FilmstripLoaderType {
    Q_GADGET
    QML_FOREIGN(corvane::FilmstripLoader)
    QML_NAMED_ELEMENT(FilmstripLoader)
    QML_UNCREATABLE("Comes with the review screen")
};

struct ClipInspectorType {
    Q_GADGET
    QML_FOREIGN(corvane::ClipInspector)
    QML_NAMED_ELEMENT(ClipInspector)
    QML_UNCREATABLE("Comes with the review screen")
};

struct MediaBannersType {
    Q_GADGET
    QML_FOREIGN(corvane::MediaBanners)
    QML_NAMED_ELEMENT(MediaBanners)
    QML_UNCREATABLE("Comes with the review screen")
};

} // namespace corvane::reviewTypes
