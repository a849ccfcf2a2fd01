#include "import/SidecarIndex.h"

#include "platform/Paths.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

struct SidecarKind {
    QLatin1String extension;
    SidecarType type;
};

constexpr std::array<SidecarKind, 3> kSidecarKinds{{
    {QLatin1String("xml"), SidecarType::xml},
    {QLatin1String("xmp"), SidecarType::xmp},
    {QLatin1String("json"), SidecarType::json},
}};

/// Length of a suffix such as "M01".
constexpr qsizetype kClipNumberSize = 3;

/// Index of the name's kind in `kSidecarKinds`, or the size of the table.
size_t kindOf(const QString &name) {
    const QString extension = paths::extension(name).toLower();
    const auto found = std::ranges::find(kSidecarKinds, extension, &SidecarKind::extension);
    return size_t(found - kSidecarKinds.begin());
}

bool endsInClipNumber(const QString &stem) {
    if (stem.size() < kClipNumberSize) {
        return false;
    }
    const auto number = QStringView(stem).last(kClipNumberSize);
    return number.at(0).toLower() == QLatin1Char('m') && number.at(1).isNumber() &&
           number.at(2).isNumber();
}

void insertFirst(QHash<QString, QString> &byStem, const QString &stem, const QString &name) {
    if (!byStem.contains(stem)) {
        byStem.insert(stem, name);
    }
}

} // namespace

bool SidecarIndex::isSidecarName(const QString &name) {
    return kindOf(name) < kSidecarKinds.size();
}

void SidecarIndex::add(const QString &name) {
    const size_t kind = kindOf(name);
    if (kind == kSidecarKinds.size()) {
        return;
    }
    const QString stem = paths::split(name).stem;
    insertFirst(m_byStem.at(kind), stem, name);
    if (endsInClipNumber(stem)) {
        insertFirst(m_byStem.at(kind), stem.chopped(kClipNumberSize), name);
    }
}

std::optional<SidecarIndex::Sidecar> SidecarIndex::find(const QString &videoStem) const {
    for (size_t kind = 0; kind < kSidecarKinds.size(); ++kind) {
        const auto found = m_byStem.at(kind).constFind(videoStem);
        if (found != m_byStem.at(kind).cend()) {
            return Sidecar{*found, kSidecarKinds.at(kind).type};
        }
    }
    return std::nullopt;
}

} // namespace corvane
