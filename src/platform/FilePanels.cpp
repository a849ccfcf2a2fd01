#include "platform/FilePanels.h"

namespace corvane {

FilePanels::~FilePanels() = default;

} // namespace corvane
