#include "support/Command.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace corvane::test {

namespace {

QByteArray quotedLine(const QStringList &command) {
    QStringList words;
    for (QString word : command) {
        words.append(QLatin1Char('\'') + word.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
                     QLatin1Char('\''));
    }
    return words.join(QLatin1Char(' ')).toUtf8();
}

} // namespace

CommandResult runCommand(const QStringList &command, const QByteArray &input) {
    CommandResult result;
    const QByteArray line = quotedLine(command) + (input.isEmpty() ? "</dev/null" : "");
    FILE *pipe = ::popen(line.constData(), input.isEmpty() ? "r" : "w");
    if (!pipe) {
        return result;
    }
    if (input.isEmpty()) {
        std::array<char, 65536> block;
        while (const size_t count = std::fread(block.data(), 1, block.size(), pipe)) {
            result.output.append(block.data(), qsizetype(count));
        }
    } else {
        std::fwrite(input.constData(), 1, size_t(input.size()), pipe);
    }
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

} // namespace corvane::test
