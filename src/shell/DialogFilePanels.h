#pragma once

#include "shell/FilePanels.h"

#include <QObject>
#include <QUrl>

namespace corvane {

/// The panels as dialogs of the screen: it shows a dialog for what is asked here, and hands back
/// what its user chose.
class DialogFilePanels : public QObject, public FilePanels {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY asked)
    Q_PROPERTY(QString acceptLabel READ acceptLabel NOTIFY asked)
    Q_PROPERTY(QString nameFieldLabel READ nameFieldLabel NOTIFY asked)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY asked)
    Q_PROPERTY(QUrl folder READ folder NOTIFY asked)
    Q_PROPERTY(QUrl proposedFile READ proposedFile NOTIFY asked)
    Q_PROPERTY(QStringList nameFilters READ nameFilters NOTIFY asked)
    Q_PROPERTY(QString defaultSuffix READ defaultSuffix NOTIFY asked)

  public:
    using QObject::QObject;

    void openProjectFile(Chosen chosen) override;
    void save(const SavePanel &panel, Chosen chosen) override;

    QString title() const;
    QString acceptLabel() const;
    const QString &nameFieldLabel() const { return m_panel.nameFieldLabel; }
    bool isSaving() const { return m_isSaving; }
    /// Where the panel begins: the folder of what was chosen last in this session, else the user's.
    QUrl folder() const;
    /// The proposed name in that folder; empty for an open panel.
    QUrl proposedFile() const;
    QStringList nameFilters() const;
    QString defaultSuffix() const;

    /// The user's answer. What isn't a file of this machine counts as no answer.
    Q_INVOKABLE void accept(const QUrl &url);
    Q_INVOKABLE void reject();

  Q_SIGNALS:
    /// A dialog is to be shown; the properties say which.
    void asked();

  private:
    void ask(bool isSaving, SavePanel panel, Chosen chosen);

    bool m_isSaving = false;
    SavePanel m_panel;
    Chosen m_chosen; ///< while a panel is up
    QString m_folder;
};

} // namespace corvane
