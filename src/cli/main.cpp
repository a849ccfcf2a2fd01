#include "cli/CommandLine.h"

#include <QCoreApplication>
#include <QUtf8StringView>

#include <langinfo.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

/// Paths are UTF-8 whatever the user's locale says; Qt would warn on the error stream.
static void useUtf8Locale() {
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) {
        ::setenv("LC_ALL", "C.UTF-8", 1);
    }
}

int main(int argc, char **argv) {
    useUtf8Locale();
    // A reader that went away must not end an export before it is on record.
    std::signal(SIGPIPE, SIG_IGN);
    for (int i = 1; i < argc; ++i) {
        if (!QUtf8StringView(argv[i]).isValidUtf8()) {
            std::fprintf(stderr, "Argument %d is not valid UTF-8, so no path can be made of it.\n",
                         i);
            return corvane::kWrongUsage;
        }
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
