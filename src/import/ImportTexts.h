#pragma once

#include "import/RowImport.h"
#include "import/SourceScan.h"

/// What an import tells its user, in sentences.
namespace corvane {

/// What a scan saw and left out, "Left out: 2 symbolic links"; empty where it left out nothing.
QString leftOutText(const LeftOut &leftOut);

/// That so many of the files found can't be read before the user says so; empty for none.
QString refusedText(int count);

/// What a cancelled run didn't come to: so many of the included files, or only the reading of what
/// their containers say.
QString cancelledText(int notImported);

} // namespace corvane
