#pragma once

#include <QAbstractListModel>

namespace corvane {

/// The user guide as a list with one row per block. Main thread only.
class HelpDocument : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QString loadError READ loadError NOTIFY loaded)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY loaded)
    Q_PROPERTY(QString windowTitle READ windowTitle CONSTANT)
    Q_PROPERTY(QString windowId READ windowId CONSTANT)

  public:
    enum Kind { Gap, Heading1, Heading2, Heading3, Bullet, Paragraph };
    Q_ENUM(Kind)

    struct Block {
        Kind kind = Gap;
        QString text; ///< Markdown without the marker of the heading or bullet

        bool operator==(const Block &) const = default;
    };
    /// Makes each line one block, independent of adjacent lines.
    static QList<Block> parse(const QString &content);

    enum Role {
        KindRole = Qt::UserRole + 1, ///< "kind", a `Kind`
        TextRole,                    ///< "text": rich text for paragraphs and bullets, else plain
    };
    /// `path` is a file or a resource (":/...").
    explicit HelpDocument(QString path, QObject *parent = nullptr);

    /// Why the guide could not be read; empty if it was read or not loaded yet.
    const QString &loadError() const { return m_loadError; }
    /// True until the guide was read or failed to load.
    bool isLoading() const { return m_blocks.isEmpty() && m_loadError.isEmpty(); }
    static QString windowTitle() { return QStringLiteral("Corvane Help"); }
    static QString windowId() { return QStringLiteral("help"); }

    /// Reads the guide. No-op after the first call.
    Q_INVOKABLE void load();
    /// Opens a web or mail link in the user's program. Returns false for any other scheme.
    Q_INVOKABLE static bool openLink(const QString &address);
    /// Copies text to the clipboard; no-op if it is empty.
    Q_INVOKABLE static void copy(const QString &text);
    /// Offers selected text for the middle mouse button, if the desktop has that; no-op if empty.
    Q_INVOKABLE static void noteSelection(const QString &text);
    static bool isAllowedLink(const QString &address);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void loaded();

  private:
    QString m_path;
    QString m_loadError;
    QList<Block> m_blocks;
};

} // namespace corvane
