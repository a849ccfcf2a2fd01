#include "shell/HelpDocument.h"

#include "platform/FileSystem.h"
#include "shell/InlineMarkdown.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QUrl>

namespace corvane {

namespace {

QString trimBlanks(const QString &line) {
    const auto isBlank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    qsizetype from = 0;
    qsizetype to = line.size();
    while (from < to && isBlank(line.at(from))) {
        ++from;
    }
    while (to > from && isBlank(line.at(to - 1))) {
        --to;
    }
    return line.sliced(from, to - from);
}

HelpDocument::Block parseLine(const QString &line) {
    const QString text = trimBlanks(line);
    if (text.isEmpty()) {
        return {};
    }
    const std::pair<QLatin1String, HelpDocument::Kind> markers[] = {
        {QLatin1String("### "), HelpDocument::Heading3},
        {QLatin1String("## "), HelpDocument::Heading2},
        {QLatin1String("# "), HelpDocument::Heading1},
        {QLatin1String("- "), HelpDocument::Bullet},
    };
    for (const auto &[marker, kind] : markers) {
        if (text.startsWith(marker)) {
            return {.kind = kind, .text = text.sliced(marker.size())};
        }
    }
    return {.kind = HelpDocument::Paragraph, .text = text};
}

} // namespace

QList<HelpDocument::Block> HelpDocument::parse(const QString &content) {
    QList<Block> blocks;
    for (const QString &line : content.split(QLatin1Char('\n'))) {
        blocks.append(parseLine(line));
    }
    return blocks;
}

HelpDocument::HelpDocument(QString path, QObject *parent)
    : QAbstractListModel(parent), m_path(std::move(path)) {}

void HelpDocument::load() {
    if (!isLoading()) {
        return;
    }
    beginResetModel();
    QFile guide(m_path);
    if (!guide.exists()) {
        m_loadError = QStringLiteral("UserGuide.md not found in bundle.");
    } else if (!guide.open(QIODevice::ReadOnly)) {
        m_loadError = QStringLiteral("Could not read UserGuide.md: %1").arg(guide.errorString());
    } else {
        const QByteArray bytes = guide.readAll();
        if (guide.error() != QFileDevice::NoError) {
            m_loadError =
                QStringLiteral("Could not read UserGuide.md: %1").arg(guide.errorString());
        } else if (!QUtf8StringView(bytes).isValidUtf8()) {
            m_loadError = QStringLiteral("Could not read UserGuide.md: it is not UTF-8 text");
        } else {
            m_blocks = parse(QString::fromUtf8(bytes));
        }
    }
    endResetModel();
    Q_EMIT loaded();
}

bool HelpDocument::isAllowedLink(const QString &address) {
    const QString scheme = QUrl(address, QUrl::StrictMode).scheme();
    return scheme == QStringLiteral("https") || scheme == QStringLiteral("http") ||
           scheme == QStringLiteral("mailto");
}

bool HelpDocument::openLink(const QString &address) {
    return isAllowedLink(address) && QDesktopServices::openUrl(QUrl(address, QUrl::StrictMode));
}

void HelpDocument::copy(const QString &text) {
    if (!text.isEmpty()) {
        QGuiApplication::clipboard()->setText(text);
    }
}

void HelpDocument::noteSelection(const QString &text) {
    QClipboard *const clipboard = QGuiApplication::clipboard();
    if (!text.isEmpty() && clipboard->supportsSelection()) {
        clipboard->setText(text, QClipboard::Selection);
    }
}

int HelpDocument::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_blocks.size());
}

QVariant HelpDocument::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Block &block = m_blocks.at(index.row());
    if (role == KindRole) {
        return block.kind;
    }
    if (role != TextRole) {
        return {};
    }
    const bool isRich = block.kind == HelpDocument::Bullet || block.kind == HelpDocument::Paragraph;
    return isRich ? richTextOfInlineMarkdown(block.text) : block.text;
}

QHash<int, QByteArray> HelpDocument::roleNames() const {
    return {{KindRole, "kind"}, {TextRole, "text"}};
}

} // namespace corvane
