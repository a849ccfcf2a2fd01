#include "cli/Command.h"

#include "platform/Paths.h"

namespace corvane {

namespace {

QString absolutePath(const QString &text) {
    if (text.isEmpty()) {
        throw UsageError(QStringLiteral("A path is empty."));
    }
    const QString path = paths::standardized(text);
    if (!path.startsWith(QLatin1Char('/'))) {
        throw Failure(
            QStringLiteral("%1 is a relative path, and the current folder is gone.").arg(text));
    }
    return path;
}

QStringList absolutePaths(const QStringList &texts) {
    QStringList paths;
    for (const QString &text : texts) {
        paths.append(absolutePath(text));
    }
    return paths;
}

} // namespace

CommandCall::CommandCall(const QCommandLineParser &parser, Console &console)
    : m_parser(parser), m_console(console) {}

QString CommandCall::path(int index) const {
    return absolutePath(argument(index));
}

QStringList CommandCall::pathsFrom(int index) const {
    return absolutePaths(arguments().mid(index));
}

QStringList CommandCall::pathValues(const char *option) const {
    return absolutePaths(values(option));
}

std::optional<QString> CommandCall::value(const char *option) const {
    return isSet(option) ? std::optional(m_parser.value(QLatin1String(option))) : std::nullopt;
}

std::optional<QString> CommandCall::pathValue(const char *option) const {
    const auto text = value(option);
    return text ? std::optional(absolutePath(*text)) : std::nullopt;
}

void CommandCall::printLine(const QString &line) const {
    m_console.writeOutput(printable(line).toUtf8() + '\n');
}

void CommandCall::printNotice(const QString &line) const {
    m_console.writeError(printable(line).toUtf8() + '\n');
}

void CommandCall::printResult(const std::function<void(JSONWriter &)> &writeObject,
                              const std::function<void()> &printText) const {
    if (!isJSON()) {
        printText();
        return;
    }
    JSONWriter writer(JSONWriter::Style::Pretty);
    writer.beginObject();
    writeObject(writer);
    writer.endObject();
    m_console.writeOutput(writer.finish() + '\n');
}

QCommandLineOption flagOption(const char *name, const char *description) {
    return {QLatin1String(name), QLatin1String(description)};
}

QCommandLineOption valueOption(const char *name, const char *value, const char *description) {
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value)};
}

} // namespace corvane
