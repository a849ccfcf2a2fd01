#include "platform/ProcessLocale.h"

#include <QUtf8StringView>

#include <langinfo.h>

#include <clocale>
#include <cstdlib>
#include <cstring>

namespace corvane {

void useUtf8Locale() {
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) {
        ::setenv("LC_ALL", "C.UTF-8", 1);
    }
}

int firstInvalidArgument(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        if (!QUtf8StringView(argv[i]).isValidUtf8()) {
            return i;
        }
    }
    return 0;
}

} // namespace corvane
