#include "media/ExportSession.h"

namespace corvane::media {

ExportSession::~ExportSession() = default;
ExportSessionFactory::~ExportSessionFactory() = default;

} // namespace corvane::media
