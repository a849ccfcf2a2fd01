#pragma once

#include "import/ImportPreview.h"

#include <QAbstractListModel>

namespace corvane {

/// The preview's rows as a screen lists them. Rows keep their places while they stand for the same
/// files, so a changed row or another mode never resets the list. Main thread.
class ImportRowList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        IncludedRole = Qt::UserRole, ///< "included"
        CanToggleRole,               ///< "canToggle"
        NameRole,                    ///< "name": the source's
        ProposedNameRole,            ///< "proposedName": empty where it is the name
        SidecarTextRole,             ///< "sidecarText": "+ sidecar" or empty
        BadgeRole,                   ///< "badge": "already imported", "renamed" or empty
        IsRenamedRole,               ///< "isRenamed"
        SizeTextRole,                ///< "sizeText"
        HelpTextRole,                ///< "helpText": the whole names
        SummaryRole,                 ///< "summary": what stands beside the name, for a reader
    };

    using QAbstractListModel::QAbstractListModel;

    int count() const { return int(m_rows.size()); }
    void setRows(const QList<ImportPreviewRow> &rows);
    /// One row shows something else.
    void setRow(int row, const ImportPreviewRow &value);
    /// Empty for a row that isn't there.
    QString idOf(int row) const;

    /// The nearest row from there that can be included or left out, looking down with the step 1
    /// and up with -1; the row itself isn't meant. -1 where there is none.
    Q_INVOKABLE int nextToggleable(int row, int step) const;
    /// Such a row at that place, else below it, else above it; -1 where there is none.
    Q_INVOKABLE int toggleableNear(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    bool hasSameFiles(const QList<ImportPreviewRow> &rows) const;

    QList<ImportPreviewRow> m_rows;
};

} // namespace corvane
