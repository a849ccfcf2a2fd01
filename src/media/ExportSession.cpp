#include "media/ExportSession.h"

namespace corvane::media {

ExportSession::~ExportSession() = default;
ExportSessionFactory::~ExportSessionFactory() = default;

std::unique_ptr<ExportSession> NoExportSessions::create(const QString &, ExportPreset) {
    return nullptr;
}

} // namespace corvane::media
