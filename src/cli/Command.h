#pragma once

#include "cli/Console.h"
#include "platform/Failure.h"
#include "platform/JSONRecord.h"

#include <QCommandLineParser>
#include <QStringList>

#include <functional>

namespace corvane {

enum ExitStatus {
    kAllDone = 0,
    kRefused = 1, ///< refused, or some row failed
    kWrongUsage = 2,
};

/// Invalid usage of a command. Reported with a hint to its help.
class UsageError : public Failure {
  public:
    using Failure::Failure;
};

/// A call of a command: its arguments and its output.
class CommandCall {
  public:
    CommandCall(const QCommandLineParser &parser, Console &console);

    Console &console() const { return m_console; }
    bool isJSON() const { return isSet("json"); }

    QStringList arguments() const { return m_parser.positionalArguments(); }
    QString argument(int index) const { return arguments().at(index); }
    /// Positional arguments as absolute paths without "." and "..". Throw `UsageError` if empty.
    QString path(int index) const;
    QStringList pathsFrom(int index) const;

    bool isSet(const char *option) const { return m_parser.isSet(QLatin1String(option)); }
    /// The option's value, or the last one if it is repeated.
    std::optional<QString> value(const char *option) const;
    QStringList values(const char *option) const { return m_parser.values(QLatin1String(option)); }
    /// The option's value as an absolute path.
    std::optional<QString> pathValue(const char *option) const;
    /// The values of a repeated option as absolute paths.
    QStringList pathValues(const char *option) const;

    /// Prints a line of the text output.
    void printLine(const QString &line) const;
    /// Prints a line to the error stream.
    void printNotice(const QString &line) const;
    /// Prints the result: with "--json" one object, whose members `writeObject` writes, otherwise
    /// the text that `printText` prints. Called once.
    void printResult(const std::function<void(JSONWriter &)> &writeObject,
                     const std::function<void()> &printText) const;

  private:
    const QCommandLineParser &m_parser;
    Console &m_console;
};

/// A command of the program. `run` returns the exit status, or throws a `UsageError` or another
/// `Failure`, which sets the exit status and prints a message.
struct CliCommand {
    QString name;
    /// Positional arguments, "PROJECT CLIP...", then required options. The dots allow any further
    /// number of the last argument.
    QString synopsis;
    QString summary;
    QList<QCommandLineOption> options;
    int (*run)(const CommandCall &call) = nullptr;
};

/// Make an option without and with a value.
QCommandLineOption flagOption(const char *name, const char *description);
QCommandLineOption valueOption(const char *name, const char *value, const char *description);

CliCommand createCommand();
CliCommand infoCommand();
CliCommand scanCommand();
CliCommand importCommand();
CliCommand listCommand();
CliCommand markCommand();
CliCommand subclipCommand();
CliCommand exportCommand();
CliCommand handoffCommand();
CliCommand mediaCommand();
CliCommand grantsCommand();
CliCommand anchorCommand();
CliCommand verifyCommand();

} // namespace corvane
