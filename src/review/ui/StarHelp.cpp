#include "review/ui/StarHelp.h"

#include "review/ClipInspector.h"

namespace corvane {

QStringList StarHelp::stars() {
    QStringList texts;
    for (int star = 1; star <= 5; ++star) {
        texts.append(ClipInspector::starHelp(star));
    }
    return texts;
}

} // namespace corvane
