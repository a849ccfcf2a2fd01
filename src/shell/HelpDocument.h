#pragma once

#include <QAbstractListModel>

namespace corvane {

/// The user guide, a row a block. It is read when the help window first shows it. Main thread.
class HelpDocument : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QString loadError READ loadError NOTIFY loaded)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY loaded)
    Q_PROPERTY(QString windowTitle READ windowTitle CONSTANT)
    Q_PROPERTY(QString windowId READ windowId CONSTANT)

  public:
    enum Kind { Gap, Heading1, Heading2, Heading3, Bullet, Paragraph };
    Q_ENUM(Kind)

    /// One line of the guide.
    struct Block {
        Kind kind = Gap;
        QString text; ///< as it was written, without the mark that makes it a heading or a bullet

        bool operator==(const Block &) const = default;
    };
    /// Each line becomes one block, whatever stands around it.
    static QList<Block> parse(const QString &content);

    enum Role {
        KindRole = Qt::UserRole + 1, ///< "kind", a `Kind`
        TextRole,                    ///< "text": of a paragraph or a bullet rich text, else plain
    };
    /// `place` is the guide's file, or its name in the program's resources (":/...").
    explicit HelpDocument(QString place, QObject *parent = nullptr);

    const QString &content() const { return m_content; }
    /// Empty unless the guide couldn't be read.
    const QString &loadError() const { return m_loadError; }
    /// True while there is neither a guide nor a reason why not.
    bool isLoading() const { return m_content.isEmpty() && m_loadError.isEmpty(); }
    static QString windowTitle() { return QStringLiteral("Corvane Help"); }
    static QString windowId() { return QStringLiteral("help"); }

    /// Reads the guide; once is enough.
    Q_INVOKABLE void load();
    /// Opens a link of the guide in the user's browser or mail program; any other kind of address
    /// opens nothing, and false is given.
    Q_INVOKABLE static bool openLink(const QString &address);
    static bool mayOpen(const QString &address);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void loaded();

  private:
    QString m_place;
    QString m_content;
    QString m_loadError;
    QList<Block> m_blocks;
};

} // namespace corvane
