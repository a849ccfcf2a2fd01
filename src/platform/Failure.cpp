#include "platform/Failure.h"

namespace corvane {

QString describe(const std::exception &error) {
    if (const auto *failure = dynamic_cast<const Failure *>(&error)) {
        return failure->description();
    }
    return QString::fromUtf8(error.what());
}

QString describe(const std::exception_ptr &error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &known) {
        return describe(known);
    } catch (...) {
        return QStringLiteral("Unknown error");
    }
}

} // namespace corvane
