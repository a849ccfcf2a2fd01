// Builds an output name from any file name, label and base name. It must stay in its folder, must
// not be empty, and two outputs must not get the same name.

#include "delivery/ExportNaming.h"
#include "transfer/NameReserver.h"

#include <cstdlib>

using namespace corvane;

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

ExportNameParts partsFrom(const QByteArray &bytes, uint8_t switches) {
    const QList<QByteArray> texts = bytes.split('\n');
    const auto text = [&](qsizetype index) { return QString::fromUtf8(texts.value(index)); };
    ExportNameParts parts;
    parts.kind = switches & 1 ? ExportRowKind::subclip : ExportRowKind::wholeClip;
    parts.mode = switches & 2 ? ExportBatch::Mode::accurateTranscode : ExportBatch::Mode::fastCopy;
    parts.originalFilename = text(0);
    parts.subclipLabel = text(1);
    parts.shootDate = text(2);
    parts.options.baseName = text(3);
    parts.options.includeShootDate = switches & 4;
    parts.options.includeOriginalFilename = switches & 8;
    parts.options.includeOriginalFileNumber = switches & 16;
    parts.options.includeSubclipLabel = switches & 32;
    parts.options.includeSelectType = switches & 64;
    parts.options.keepOriginalForWholeVideos = switches & 128;
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const ExportNameParts parts = partsFrom(
        QByteArray(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1)), data[0]);
    const QString name = buildExportName(parts);
    const bool keepsOriginal = parts.kind == ExportRowKind::wholeClip &&
                               parts.mode == ExportBatch::Mode::fastCopy &&
                               parts.options.keepOriginalForWholeVideos;
    require(!name.contains(QLatin1Char('/')) && !name.contains(QChar(u'\0')));
    require(name != QStringLiteral(".") && name != QStringLiteral(".."));
    require(keepsOriginal || !name.isEmpty());
    NameReserver reserver;
    require(reserver.take(name).toLower() != reserver.take(name).toLower());
    return 0;
}
