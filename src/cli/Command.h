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

/// The command line asks for something that the command doesn't have. Told with a hint at its help.
class UsageError : public Failure {
  public:
    using Failure::Failure;
};

/// One call of a command: its arguments and where its answer goes.
class Invocation {
  public:
    Invocation(const QCommandLineParser &parser, Console &console);

    Console &console() const { return m_console; }
    bool wantsJSON() const { return isSet("json"); }

    QStringList arguments() const { return m_parser.positionalArguments(); }
    QString argument(int index) const { return arguments().at(index); }
    /// Positional arguments as absolute paths, dots resolved. An empty one throws `UsageError`.
    QString path(int index) const;
    QStringList pathsFrom(int index) const;

    bool isSet(const char *option) const { return m_parser.isSet(QLatin1String(option)); }
    /// The option's value; the last one where it was given more than once.
    std::optional<QString> value(const char *option) const;
    QStringList values(const char *option) const { return m_parser.values(QLatin1String(option)); }
    /// The option's value as an absolute path.
    std::optional<QString> pathValue(const char *option) const;

    /// A line of text for people.
    void printLine(const QString &line) const;
    /// A line on the error stream that isn't the command's answer.
    void printNotice(const QString &line) const;
    /// The command's whole answer.
    void printJSON(const std::function<void(JSONWriter &)> &write) const;

  private:
    const QCommandLineParser &m_parser;
    Console &m_console;
};

/// What the program can be told to do. `run` gives the exit status; a `UsageError` or any other
/// `Failure` that it throws becomes one, and a message.
struct Command {
    QString name;
    QString synopsis; ///< what follows the name, "PROJECT CLIP..."
    QString summary;
    QList<QCommandLineOption> options;
    int fewestArguments = 0;
    int mostArguments = 0; ///< -1 for any number
    int (*run)(const Invocation &call) = nullptr;
};

/// An option without a value, and one with.
QCommandLineOption flagOption(const char *name, const char *description);
QCommandLineOption valueOption(const char *name, const char *value, const char *description);

Command createCommand();
Command infoCommand();
Command scanCommand();
Command importCommand();
Command listCommand();
Command markCommand();
Command subclipCommand();
Command exportCommand();
Command handoffCommand();
Command mediaCommand();
Command anchorCommand();
Command verifyCommand();

} // namespace corvane
