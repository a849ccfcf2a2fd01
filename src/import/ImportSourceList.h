#pragma once

#include "import/ImportViewModel.h"
#include "lists/ListModel.h"
#include "platform/FilePanels.h"

namespace corvane {

struct ImportSource {
    QString path;
    bool isFolder = false;

    bool operator==(const ImportSource &) const = default;
};

/// The chosen sources of an import as a list model, and the actions that change them. Paths are
/// standardized; a path that is already in the list is not added again. Actions are no-ops unless
/// the import is at stage `sources`.
class ImportSourceList : public ListModel<ImportSource, &ImportSource::path> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

  public:
    enum Role {
        PathRole = Qt::UserRole,
        SymbolRole,     ///< "folder" or "file"
        RemoveHelpRole, ///< help text of the row's remove button
    };

    /// Both arguments must outlive the list.
    ImportSourceList(ImportViewModel &import, FilePanels &panels, QObject *parent = nullptr);

    /// Why a dropped item was not added; empty otherwise.
    const QString &notice() const { return m_notice; }
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE void chooseFiles();
    void add(const QStringList &paths);
    /// Adds the local files and folders; others only cause a notice.
    Q_INVOKABLE void addDropped(const QList<QUrl> &urls);
    Q_INVOKABLE void remove(int row);

  Q_SIGNALS:
    void noticeChanged();

  private:
    void update();
    QCoro::Task<> checkTypes(QStringList paths);
    void setNotice(const QString &notice);

    ImportViewModel &m_import;
    FilePanels &m_panels;
    QString m_notice;
};

} // namespace corvane
