#pragma once

#include "platform/FilePanels.h"

#include <QCoroTask>
#include <QObject>

namespace corvane {

/// File panels as dialogs in QML: a request sets the properties and emits `dialogRequested`, the
/// dialog calls `accept` or `reject`. Main thread only.
class DialogFilePanels : public QObject, public FilePanels {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY dialogRequested)
    Q_PROPERTY(QString acceptLabel READ acceptLabel NOTIFY dialogRequested)
    Q_PROPERTY(Kind kind READ kind NOTIFY dialogRequested)
    Q_PROPERTY(QUrl folder READ folder NOTIFY dialogRequested)
    Q_PROPERTY(QUrl proposedFile READ proposedFile NOTIFY dialogRequested)
    Q_PROPERTY(QStringList nameFilters READ nameFilters NOTIFY dialogRequested)
    Q_PROPERTY(QString defaultSuffix READ defaultSuffix NOTIFY dialogRequested)

  public:
    enum class Kind { OpenFile, OpenFiles, SaveFile, OpenFolder };
    Q_ENUM(Kind)

    explicit DialogFilePanels(QObject *parent = nullptr);

    void openProjectFile(Chosen chosen) override;
    void save(const SavePanel &panel, Chosen chosen) override;
    void chooseFolder(const ChoosePanel &panel, Chosen chosen) override;
    void chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) override;

    const QString &title() const { return m_panel.message; }
    const QString &acceptLabel() const { return m_acceptLabel; }
    Kind kind() const { return m_kind; }
    /// The initial folder: that of the latest choice in this session, else the user's documents or,
    /// without such a folder, home.
    QUrl folder() const;
    /// The proposed file in that folder; empty for panels that open files.
    QUrl proposedFile() const;
    QStringList nameFilters() const;
    QString defaultSuffix() const;

    /// Delivers the user's choice. URLs that are not local files are ignored.
    Q_INVOKABLE void accept(const QList<QUrl> &urls);
    Q_INVOKABLE void reject();

  Q_SIGNALS:
    /// The dialog that the properties describe must be shown.
    void dialogRequested();

  private:
    QCoro::Task<> findDocuments();
    void request(Kind kind, SavePanel panel, const QString &acceptLabel, ChosenFiles chosen);

    Kind m_kind = Kind::OpenFile;
    SavePanel m_panel;
    QString m_acceptLabel;
    ChosenFiles m_chosen; ///< empty unless a panel is open
    QString m_folder;
    QString m_documents; ///< empty unless the folder exists
};

} // namespace corvane
