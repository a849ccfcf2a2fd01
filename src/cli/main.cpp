#include "cli/CommandLine.h"
#include "platform/ProcessLocale.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

int main(int argc, char **argv) {
    corvane::useUtf8Locale();
    // A closed pipe must not kill an export before its results are recorded.
    std::signal(SIGPIPE, SIG_IGN);
    if (const int invalid = corvane::firstInvalidArgument(argc, argv)) {
        std::fprintf(stderr, "Argument %d is not valid UTF-8, so no path can be made of it.\n",
                     invalid);
        return corvane::kWrongUsage;
    }
    const QCoreApplication application(argc, argv);
    corvane::SystemConsole console;
    const int status = corvane::runCli(QCoreApplication::arguments(), console);
    if (!console.finishOutput()) {
        std::fputs("Cannot write to standard output.\n", stderr);
        return corvane::kRefused;
    }
    return status;
}
