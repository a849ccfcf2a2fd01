#pragma once

#include "platform/FilePanels.h"

#include <QObject>
#include <QUrl>

namespace corvane {

/// The panels as dialogs of the screen: it shows a dialog for what is asked here, and hands back
/// what its user chose.
class DialogFilePanels : public QObject, public FilePanels {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY asked)
    Q_PROPERTY(QString acceptLabel READ acceptLabel NOTIFY asked)
    Q_PROPERTY(Kind kind READ kind NOTIFY asked)
    Q_PROPERTY(QUrl folder READ folder NOTIFY asked)
    Q_PROPERTY(QUrl proposedFile READ proposedFile NOTIFY asked)
    Q_PROPERTY(QStringList nameFilters READ nameFilters NOTIFY asked)
    Q_PROPERTY(QString defaultSuffix READ defaultSuffix NOTIFY asked)

  public:
    enum class Kind { OpenFile, OpenFiles, SaveFile, OpenFolder };
    Q_ENUM(Kind)

    using QObject::QObject;

    void openProjectFile(Chosen chosen) override;
    void save(const SavePanel &panel, Chosen chosen) override;
    void chooseFolder(const ChoosePanel &panel, Chosen chosen) override;
    void chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) override;

    const QString &title() const { return m_panel.message; }
    const QString &acceptLabel() const { return m_acceptLabel; }
    Kind kind() const { return m_kind; }
    /// Where the panel begins: the folder of what was chosen last in this session, else the user's.
    QUrl folder() const;
    /// The proposed name in that folder; empty for an open panel.
    QUrl proposedFile() const;
    QStringList nameFilters() const;
    QString defaultSuffix() const;

    /// The user's answer. What isn't a file of this machine counts as no answer.
    Q_INVOKABLE void accept(const QList<QUrl> &urls);
    Q_INVOKABLE void reject();

  Q_SIGNALS:
    /// A dialog is to be shown; the properties say which.
    void asked();

  private:
    void ask(Kind kind, SavePanel panel, const QString &acceptLabel, ChosenFiles chosen);

    Kind m_kind = Kind::OpenFile;
    SavePanel m_panel;
    QString m_acceptLabel;
    ChosenFiles m_chosen; ///< while a panel is up
    QString m_folder;
};

} // namespace corvane
