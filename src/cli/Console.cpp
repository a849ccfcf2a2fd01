#include "cli/Console.h"

#include "platform/ApplicationFolders.h"

#include <unistd.h>

#include <cstdio>

namespace corvane {

Console::~Console() = default;

void SystemConsole::writeOutput(const QByteArray &utf8) {
    std::fwrite(utf8.constData(), 1, size_t(utf8.size()), stdout);
}

void SystemConsole::writeError(const QByteArray &utf8) {
    std::fwrite(utf8.constData(), 1, size_t(utf8.size()), stderr);
}

bool SystemConsole::errorIsTerminal() const {
    return ::isatty(STDERR_FILENO) == 1;
}

QString SystemConsole::dataFolder() const {
    return applicationFolders::applicationSupport();
}

std::unique_ptr<QSettings> SystemConsole::userDefaults() const {
    return applicationFolders::userDefaults();
}

bool SystemConsole::finishOutput() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

QString printable(const QString &text) {
    QString shown = text;
    for (QChar &character : shown) {
        if (character.category() == QChar::Other_Control) {
            character = QChar::ReplacementCharacter;
        }
    }
    return shown;
}

} // namespace corvane
