#include "import/ImportSourceList.h"

#include "import/ImportTexts.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

namespace {

bool isFolderPath(const QString &path) {
    const auto status = fileSystem().targetStatus(path);
    return status && status->type == FileType::Directory;
}

} // namespace

void ImportSourceList::setPaths(const QStringList &paths) {
    const auto sameBegin = std::ranges::mismatch(m_rows, paths, {}, &Row::path);
    const auto first = int(sameBegin.in1 - m_rows.begin());
    qsizetype oldEnd = m_rows.size();
    qsizetype newEnd = paths.size();
    while (oldEnd > first && newEnd > first && m_rows.at(oldEnd - 1).path == paths.at(newEnd - 1)) {
        --oldEnd;
        --newEnd;
    }
    const qsizetype before = m_rows.size();
    if (oldEnd > first) {
        beginRemoveRows({}, first, int(oldEnd) - 1);
        m_rows.remove(first, oldEnd - first);
        endRemoveRows();
    }
    if (newEnd > first) {
        beginInsertRows({}, first, int(newEnd) - 1);
        for (qsizetype row = first; row < newEnd; ++row) {
            m_rows.insert(row, {paths.at(row), isFolderPath(paths.at(row))});
        }
        endInsertRows();
    }
    if (m_rows.size() != before) {
        Q_EMIT countChanged();
    }
}

int ImportSourceList::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ImportSourceList::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case PathRole:
        return inOneLine(row.path);
    case SymbolRole:
        return row.isFolder ? QStringLiteral("folder") : QStringLiteral("file");
    case RemoveHelpRole:
        return inOneLine(QStringLiteral("Remove ") + paths::lastComponent(row.path));
    default:
        return {};
    }
}

QHash<int, QByteArray> ImportSourceList::roleNames() const {
    return {{PathRole, "path"}, {SymbolRole, "symbol"}, {RemoveHelpRole, "removeHelp"}};
}

} // namespace corvane
