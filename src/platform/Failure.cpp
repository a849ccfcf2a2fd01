#include "platform/Failure.h"

namespace corvane {

QString describe(const std::exception &error) {
    if (const auto *failure = dynamic_cast<const Failure *>(&error)) {
        return failure->description();
    }
    return QString::fromUtf8(error.what());
}

} // namespace corvane
