#include "import/ImportRowList.h"

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

bool isRenamed(const ImportPreviewRow &row) {
    return row.status == CollisionStatus::renamed;
}

QString sizeTextOf(const ImportPreviewRow &row) {
    return formattedByteCount(row.source.fileSizeBytes);
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
    if (isRenamed(row)) {
        parts.append(QStringLiteral("renamed to ") + row.proposedName);
    } else if (!badgeOf(row).isEmpty()) {
        parts.append(badgeOf(row));
    }
    if (row.source.sidecarURL) {
        parts.append(QStringLiteral("with sidecar"));
    }
    parts.append(sizeTextOf(row));
    return parts.join(QStringLiteral(", "));
}

} // namespace

ImportRowList::ImportRowList(QObject *parent)
    : ListModel({{IncludedRole, "included", &ImportPreviewRow::included},
                 {CanToggleRole, "canToggle", canToggle},
                 {NameRole, "name", [](const auto &row) { return inOneLine(nameOf(row)); }},
                 {ProposedNameRole, "proposedName",
                  [](const auto &row) { return inOneLine(proposedNameOf(row)); }},
                 {SidecarTextRole, "sidecarText", sidecarTextOf},
                 {BadgeRole, "badge", badgeOf},
                 {IsRenamedRole, "isRenamed", isRenamed},
                 {SizeTextRole, "sizeText", sizeTextOf},
                 {HelpTextRole, "helpText", helpTextOf},
                 {SummaryRole, "summary", summaryOf}},
                parent) {}

int ImportRowList::nextToggleable(int index, int step) const {
    for (int next = index + step; step != 0 && next >= 0 && next < count(); next += step) {
        if (canToggle(row(next))) {
            return next;
        }
    }
    return -1;
}

int ImportRowList::toggleableNear(int index) const {
    const int from = std::clamp(index, 0, count());
    const int below = nextToggleable(from - 1, 1);
    return below >= 0 ? below : nextToggleable(from, -1);
}

} // namespace corvane
