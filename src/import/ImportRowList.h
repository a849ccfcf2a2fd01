#pragma once

#include "import/ImportPreview.h"
#include "lists/ListModel.h"

namespace corvane {

/// The rows of the preview as a list model.
class ImportRowList : public ListModel<ImportPreviewRow> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        IncludedRole = Qt::UserRole,
        CanToggleRole,
        NameRole,         ///< file name of the source
        ProposedNameRole, ///< empty if it equals the name
        SidecarTextRole,  ///< "+ sidecar" or empty
        BadgeRole,        ///< "already imported", "renamed" or empty
        IsRenamedRole,
        SizeTextRole,
        HelpTextRole, ///< full path and proposed name
        SummaryRole,  ///< accessible description: all texts of the row but its name
    };

    explicit ImportRowList(QObject *parent = nullptr);

    /// Index of the nearest row below (`step` 1) or above (-1) the given one that can be included
    /// or excluded; -1 if there is no such row.
    Q_INVOKABLE int nextToggleable(int index, int step) const;
    /// Index of the nearest such row, starting with the given one, then below it, then above it; -1
    /// if there is no such row.
    Q_INVOKABLE int toggleableNear(int index) const;
};

} // namespace corvane
