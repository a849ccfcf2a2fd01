#include "import/ImportRowList.h"

#include "import/ImportTexts.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

namespace {

QString nameOf(const ImportPreviewRow &row) {
    return paths::lastComponent(row.source.url);
}

QString proposedNameOf(const ImportPreviewRow &row) {
    return row.proposedName == nameOf(row) ? QString() : row.proposedName;
}

QString sidecarTextOf(const ImportPreviewRow &row) {
    return row.source.sidecarURL ? QStringLiteral("+ sidecar") : QString();
}

QString badgeOf(const ImportPreviewRow &row) {
    switch (row.status) {
    case CollisionStatus::alreadyImported:
        return QStringLiteral("already imported");
    case CollisionStatus::renamed:
        return QStringLiteral("renamed");
    case CollisionStatus::ok:
        break;
    }
    return {};
}

bool canToggle(const ImportPreviewRow &row) {
    return row.status != CollisionStatus::alreadyImported;
}

QString helpTextOf(const ImportPreviewRow &row) {
    const QString proposed = proposedNameOf(row);
    return proposed.isEmpty() ? row.source.url
                              : row.source.url + QStringLiteral("\n\u2192 ") + proposed;
}

QString summaryOf(const ImportPreviewRow &row) {
    QStringList parts;
    if (row.status == CollisionStatus::renamed) {
        parts.append(QStringLiteral("renamed to ") + row.proposedName);
    } else if (!badgeOf(row).isEmpty()) {
        parts.append(badgeOf(row));
    }
    if (row.source.sidecarURL) {
        parts.append(QStringLiteral("with sidecar"));
    }
    parts.append(formattedByteCount(row.source.fileSizeBytes));
    return parts.join(QStringLiteral(", "));
}

} // namespace

bool ImportRowList::hasSameFiles(const QList<ImportPreviewRow> &rows) const {
    return std::ranges::equal(m_rows, rows, {}, &ImportPreviewRow::id, &ImportPreviewRow::id);
}

void ImportRowList::setRows(const QList<ImportPreviewRow> &rows) {
    if (hasSameFiles(rows)) {
        m_rows = rows;
        if (!m_rows.isEmpty()) {
            Q_EMIT dataChanged(index(0), index(count() - 1));
        }
        return;
    }
    beginResetModel();
    m_rows = rows;
    endResetModel();
    Q_EMIT countChanged();
}

void ImportRowList::setRow(int row, const ImportPreviewRow &value) {
    if (row >= 0 && row < count()) {
        m_rows[row] = value;
        Q_EMIT dataChanged(index(row), index(row));
    }
}

QString ImportRowList::idOf(int row) const {
    return row >= 0 && row < count() ? m_rows.at(row).id : QString();
}

int ImportRowList::nextToggleable(int row, int step) const {
    for (int next = row + step; step != 0 && next >= 0 && next < count(); next += step) {
        if (canToggle(m_rows.at(next))) {
            return next;
        }
    }
    return -1;
}

int ImportRowList::toggleableNear(int row) const {
    const int from = std::clamp(row, 0, count());
    const int below = nextToggleable(from - 1, 1);
    return below >= 0 ? below : nextToggleable(from, -1);
}

int ImportRowList::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ImportRowList::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const ImportPreviewRow &row = m_rows.at(index.row());
    switch (role) {
    case IncludedRole:
        return row.included;
    case CanToggleRole:
        return canToggle(row);
    case NameRole:
        return inOneLine(nameOf(row));
    case ProposedNameRole:
        return inOneLine(proposedNameOf(row));
    case SidecarTextRole:
        return sidecarTextOf(row);
    case BadgeRole:
        return badgeOf(row);
    case IsRenamedRole:
        return row.status == CollisionStatus::renamed;
    case SizeTextRole:
        return formattedByteCount(row.source.fileSizeBytes);
    case HelpTextRole:
        return helpTextOf(row);
    case SummaryRole:
        return summaryOf(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> ImportRowList::roleNames() const {
    return {{IncludedRole, "included"},
            {CanToggleRole, "canToggle"},
            {NameRole, "name"},
            {ProposedNameRole, "proposedName"},
            {SidecarTextRole, "sidecarText"},
            {BadgeRole, "badge"},
            {IsRenamedRole, "isRenamed"},
            {SizeTextRole, "sizeText"},
            {HelpTextRole, "helpText"},
            {SummaryRole, "summary"}};
}

} // namespace corvane
