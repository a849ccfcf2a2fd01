#include "shell/ProjectModule.h"

#include "platform/Failure.h"
#include "platform/Paths.h"
#include "shell/OpenProjectScreen.h"

#include <QCoreApplication>
#include <QLibrary>

namespace corvane::projectModule {

namespace {

Entry entry() {
    QLibrary module(
        paths::joined(QCoreApplication::applicationDirPath(), QStringLiteral("corvane-project")));
    const auto resolved = reinterpret_cast<Entry>(module.resolve(kEntryName));
    if (!resolved) {
        throw Failure(
            QStringLiteral("A part of Corvane could not be loaded. %1").arg(module.errorString()));
    }
    return resolved;
}

} // namespace

std::unique_ptr<OpenProjectScreen> makeProjectScreen(CorvaneApp &app) {
    return std::unique_ptr<OpenProjectScreen>(entry()(app));
}

} // namespace corvane::projectModule
